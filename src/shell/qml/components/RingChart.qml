import QtQuick
import Nimbrel.Shell
import QtQuick.Shapes

// The ring chart: one arc per sector in the sector's colour, sized by the last scale values and
// moving to new ones over the duration the chart was asked for.
Item {
    id: root
    property var chart: ({})           // snapshot of a DYPieChartView
    readonly property var colors: chart.sectorColors || []
    readonly property var target: chart.scaleValues || []
    property var from: []
    property var shown: []
    property real t: 1
    readonly property real ring: Math.max(4, (chart.lineWidth || 10) * 2.2)

    function valueAt(list, i) { return i < list.length ? list[i] : 0 }
    function restart() {
        var now = []
        for (var i = 0; i < target.length; ++i) now.push(valueAt(shown, i))
        from = now
        anim.stop()
        t = 0
        anim.duration = Math.max(1, (chart.duration || 0) * 1000)
        anim.start()
    }
    onTargetChanged: restart()
    onTChanged: {
        var next = []
        for (var i = 0; i < target.length; ++i) next.push(valueAt(from, i) + (target[i] - valueAt(from, i)) * t)
        shown = next
    }
    NumberAnimation { id: anim; target: root; property: "t"; from: 0; to: 1; easing.type: Easing.InOutCubic }

    // The empty track under the sectors.
    Rectangle {
        anchors.centerIn: parent
        width: Math.min(root.width, root.height) - root.ring
        height: width
        radius: width / 2
        color: "transparent"
        border.width: root.ring
        border.color: "#ececf0"
    }
    Repeater {
        model: root.shown.length
        Shape {
            id: arcShape
            required property int index
            anchors.fill: parent
            readonly property real start: {
                var s = 0
                for (var i = 0; i < index; ++i) s += root.shown[i]
                return s
            }
            readonly property real radius: (Math.min(root.width, root.height) - root.ring) / 2
            readonly property real direction: root.chart.clockwise === false ? -1 : 1
            ShapePath {
                strokeColor: arcShape.index < root.colors.length ? root.colors[arcShape.index] : "#c1c1c1"
                strokeWidth: root.ring
                fillColor: "transparent"
                capStyle: ShapePath.FlatCap
                PathAngleArc {
                    centerX: root.width / 2
                    centerY: root.height / 2
                    radiusX: arcShape.radius
                    radiusY: arcShape.radius
                    startAngle: (root.chart.startAngle || 0) * 180 / Math.PI + arcShape.direction * arcShape.start * 360
                    sweepAngle: arcShape.direction * Math.max(0, root.shown[arcShape.index] * 360 - 1.2)
                }
            }
        }
    }
}
