import QtQuick
import Nimbrel.Shell

// The top of a screen: a bar with its buttons, and under it a large title that folds away as the
// content scrolls (the bar's own small title shows when the screen says so).
Item {
    id: root
    property real collapse: 0            // 0 open, 1 folded
    property real largeHeight: 72
    property alias bar: barItem
    property alias large: largeItem
    property string smallTitle: ""
    property bool smallTitleVisible: false
    property real largeOpacity: 1
    implicitHeight: Theme.barHeight + largeHeight * (1 - collapse)
    clip: true

    Rectangle { anchors.fill: parent; color: Theme.background }
    Item {
        id: barItem
        width: parent.width
        height: Theme.barHeight
        z: 2
        Text {
            anchors.centerIn: parent
            width: parent.width - 160
            horizontalAlignment: Text.AlignHCenter
            text: root.smallTitle
            visible: root.smallTitleVisible || root.collapse > 0.85
            opacity: root.smallTitleVisible ? 1 : Math.max(0, (root.collapse - 0.85) / 0.15)
            font.pixelSize: 17; font.bold: true
            color: Theme.text
            elide: Text.ElideRight
        }
    }
    Item {
        id: largeItem
        y: Theme.barHeight - root.largeHeight * root.collapse * 0.5
        width: parent.width
        height: root.largeHeight
        opacity: Math.max(0, 1 - root.collapse * 1.4) * root.largeOpacity
    }
    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width; height: 1
        color: Theme.separator
        opacity: root.collapse
    }
}
