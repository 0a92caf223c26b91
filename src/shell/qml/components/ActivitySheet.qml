import QtQuick
import Nimbrel.Shell

// The share sheet: the items handed to it, the platform's activities for them, a way to close it.
Item {
    id: root
    anchors.fill: parent
    visible: AppBridge.sheetVisible
    Rectangle { anchors.fill: parent; color: "#59000000" }
    MouseArea { anchors.fill: parent; onClicked: AppBridge.closeSheet() }
    Rectangle {
        id: panel
        width: Math.min(parent.width, 520)
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        height: column.implicitHeight + 24
        radius: 18
        color: "#f7f7f9"
        MouseArea { anchors.fill: parent }
        Column {
            id: column
            width: parent.width - 32
            x: 16; y: 16
            spacing: 10
            Item {
                width: parent.width; height: 30
                Text { anchors.verticalCenter: parent.verticalCenter; text: "Share"; font.pixelSize: 18; font.bold: true; color: Theme.text }
                Rectangle {
                    anchors.right: parent.right; anchors.verticalCenter: parent.verticalCenter
                    width: 30; height: 30; radius: 15; color: "#e5e5ea"
                    Image { anchors.centerIn: parent; width: 14; height: 14; source: "image://nimbrel/asset/ic_close"; sourceSize: Qt.size(28, 28) }
                    MouseArea { anchors.fill: parent; onClicked: AppBridge.closeSheet() }
                }
            }
            Text { text: AppBridge.sheetItems.length + (AppBridge.sheetItems.length === 1 ? " item" : " items"); color: Theme.secondaryText; font.pixelSize: 13 }
            Rectangle {
                width: parent.width
                height: Math.min(list.contentHeight, 240)
                radius: 12
                color: Theme.card
                ListView {
                    id: list
                    anchors.fill: parent
                    clip: true
                    interactive: contentHeight > height
                    model: AppBridge.sheetItems
                    delegate: Item {
                        required property string modelData
                        required property int index
                        width: list.width; height: 44
                        Rectangle { visible: index > 0; width: parent.width - 16; x: 16; height: 1; color: Theme.separator }
                        Text {
                            anchors.verticalCenter: parent.verticalCenter
                            x: 16; width: parent.width - 32
                            text: modelData
                            elide: Text.ElideMiddle
                            font.pixelSize: 14; color: Theme.text
                        }
                    }
                }
            }
            Rectangle {
                width: parent.width
                height: activityColumn.implicitHeight
                visible: AppBridge.sheetActivities.length > 0
                radius: 12
                color: Theme.card
                clip: true
                Column {
                    id: activityColumn
                    width: parent.width
                    Repeater {
                        model: AppBridge.sheetActivities
                        delegate: Rectangle {
                            required property string modelData
                            required property int index
                            width: activityColumn.width; height: 44
                            color: activityArea.pressed ? Theme.pressed : "transparent"
                            Rectangle { visible: index > 0; width: parent.width - 16; x: 16; height: 1; color: Theme.separator }
                            Text { anchors.verticalCenter: parent.verticalCenter; x: 16; text: modelData; color: "#007aff"; font.pixelSize: 16 }
                            MouseArea { id: activityArea; anchors.fill: parent; onClicked: AppBridge.chooseActivity(modelData) }
                        }
                    }
                }
            }
            Rectangle {
                width: parent.width; height: 50; radius: 12
                color: closeArea.pressed ? Theme.pressed : Theme.card
                Text { anchors.centerIn: parent; text: "Close"; color: "#007aff"; font.pixelSize: 17; font.bold: true }
                MouseArea { id: closeArea; anchors.fill: parent; onClicked: AppBridge.closeSheet() }
            }
        }
    }
}
