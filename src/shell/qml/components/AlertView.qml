import QtQuick
import Nimbrel.Shell

// The alert on top: its title, message and actions; a press answers it.
Item {
    id: root
    anchors.fill: parent
    visible: AppBridge.alertVisible
    Rectangle { anchors.fill: parent; color: "#66000000" }
    MouseArea { anchors.fill: parent }
    Rectangle {
        anchors.centerIn: parent
        width: Math.min(300, parent.width - 60)
        height: body.implicitHeight + buttons.height
        radius: 16
        color: "#f7f7f9"
        clip: true
        Column {
            id: body
            width: parent.width
            topPadding: 20; bottomPadding: 18; leftPadding: 18; rightPadding: 18
            spacing: 6
            Text {
                width: parent.width - 36
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.WordWrap
                text: AppBridge.alertTitle
                font.pixelSize: 17; font.bold: true
                color: Theme.text
            }
            Text {
                width: parent.width - 36
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.WordWrap
                text: AppBridge.alertMessage
                font.pixelSize: 13
                color: Theme.text
            }
        }
        Column {
            id: buttons
            anchors.top: body.bottom
            width: parent.width
            Repeater {
                model: AppBridge.alertActions
                Item {
                    required property var modelData
                    width: buttons.width; height: 46
                    Rectangle { width: parent.width; height: 1; color: Theme.separator }
                    Rectangle { anchors.fill: parent; anchors.topMargin: 1; color: Theme.pressed; visible: area.pressed }
                    Text {
                        anchors.centerIn: parent
                        text: modelData.title
                        color: modelData.style === 2 ? "#ff3b30" : "#007aff"
                        font.pixelSize: 17; font.bold: modelData.style === 1
                    }
                    MouseArea { id: area; anchors.fill: parent; onClicked: AppBridge.pressAlertAction(modelData.title) }
                }
            }
        }
    }
}
