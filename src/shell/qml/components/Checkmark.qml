import QtQuick
import Nimbrel.Shell
import QtQuick.Shapes

// The selection mark, painted from the mark's own drawing: a disc with a soft shadow, its outline
// and the check, stroked in the same colour.
Item {
    id: root
    property var mark: ({})          // snapshot of a CheckmarkView
    readonly property var d: mark && mark.drawing ? mark.drawing : null
    readonly property real sx: d && d.width > 0 ? width / d.width : 1
    readonly property real sy: d && d.height > 0 ? height / d.height : 1
    visible: d !== null && !mark.hidden
    implicitWidth: 24
    implicitHeight: 24

    Rectangle {   // shadow
        visible: root.d !== null
        x: root.d ? (root.d.oval.x + root.d.shadowX) * root.sx : 0
        y: root.d ? (root.d.oval.y - root.d.shadowY + 0.8) * root.sy : 0
        width: root.d ? root.d.oval.width * root.sx : 0
        height: root.d ? root.d.oval.height * root.sy : 0
        radius: width / 2
        color: root.d ? root.d.shadow : "transparent"
        opacity: 0.45
    }
    Rectangle {   // disc and outline
        visible: root.d !== null
        x: root.d ? root.d.oval.x * root.sx : 0
        y: root.d ? root.d.oval.y * root.sy : 0
        width: root.d ? root.d.oval.width * root.sx : 0
        height: root.d ? root.d.oval.height * root.sy : 0
        radius: width / 2
        color: root.d ? root.d.fill : "transparent"
        border.width: root.d ? root.d.lineWidth : 0
        border.color: root.d ? root.d.stroke : "transparent"
    }
    Shape {
        anchors.fill: parent
        visible: root.d !== null && root.d.check.length === 3
        ShapePath {
            strokeColor: root.d ? root.d.stroke : "transparent"
            strokeWidth: root.d ? root.d.lineWidth * 1.6 : 0
            fillColor: "transparent"
            capStyle: ShapePath.RoundCap
            joinStyle: ShapePath.RoundJoin
            startX: root.d && root.d.check.length === 3 ? root.d.check[0].x * root.sx : 0
            startY: root.d && root.d.check.length === 3 ? root.d.check[0].y * root.sy : 0
            PathLine { x: root.d && root.d.check.length === 3 ? root.d.check[1].x * root.sx : 0; y: root.d && root.d.check.length === 3 ? root.d.check[1].y * root.sy : 0 }
            PathLine { x: root.d && root.d.check.length === 3 ? root.d.check[2].x * root.sx : 0; y: root.d && root.d.check.length === 3 ? root.d.check[2].y * root.sy : 0 }
        }
    }
}
