import QtQuick
import Nimbrel.Shell

// The drop-down where the screen put it; a touch outside closes it.
Item {
    id: root
    anchors.fill: parent
    visible: AppBridge.menuEntries.length > 0
    MouseArea { anchors.fill: parent; onClicked: AppBridge.dismissMenu() }
    Rectangle {
        id: menu
        readonly property rect r: AppBridge.menuRect
        width: Math.max(r.width + 36, 150)
        height: r.height
        x: Math.max(8, Math.min(r.x + r.width - width, root.width - width - 8))
        y: Math.max(8, Math.min(r.y, root.height - height - 8))
        radius: 15
        color: "white"
        border.color: "#1f000000"
        Rectangle { anchors.fill: parent; anchors.topMargin: 4; z: -1; radius: 15; color: "#14000000" }
        Column {
            anchors.fill: parent
            Repeater {
                model: AppBridge.menuEntries
                Item {
                    required property string modelData
                    required property int index
                    width: menu.width; height: menu.height / Math.max(1, AppBridge.menuEntries.length)
                    Rectangle { anchors.fill: parent; anchors.margins: 4; radius: 10; color: Theme.pressed; visible: area.pressed }
                    Rectangle { visible: index > 0; width: parent.width - 24; x: 12; height: 1; color: Theme.separator }
                    Text {
                        anchors.verticalCenter: parent.verticalCenter
                        x: 16; width: parent.width - 24
                        text: modelData.trim()
                        font.pixelSize: 15; color: Theme.text
                        elide: Text.ElideRight
                    }
                    MouseArea { id: area; anchors.fill: parent; onClicked: AppBridge.pressMenuEntry(index) }
                }
            }
        }
    }
}
