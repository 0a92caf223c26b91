import QtQuick
import Nimbrel.Shell

// The status overlay: a spinner for "status" and "progress", a mark for info, success and error.
Item {
    id: root
    anchors.fill: parent
    visible: opacity > 0
    opacity: AppBridge.hudVisible && !AppBridge.hudFading ? 1 : 0
    Behavior on opacity { NumberAnimation { duration: 150 } }

    MouseArea { anchors.fill: parent; enabled: root.opacity > 0 }   // the overlay holds touches
    Rectangle {
        anchors.centerIn: parent
        width: Math.max(110, Math.min(260, label.implicitWidth + 40))
        height: content.implicitHeight + 36
        radius: 16
        color: "#e6222224"
        Column {
            id: content
            anchors.centerIn: parent
            spacing: 12
            width: parent.width - 32
            Item {
                width: 44; height: 44
                anchors.horizontalCenter: parent.horizontalCenter
                Image {
                    anchors.fill: parent
                    visible: ["info", "success", "error"].indexOf(AppBridge.hudKind) >= 0
                    source: visible ? "image://nimbrel/asset/" + AppBridge.hudKind : ""
                    sourceSize: Qt.size(88, 88)
                }
                Item {
                    id: spinner
                    anchors.fill: parent
                    visible: AppBridge.hudKind === "status" || AppBridge.hudKind === "progress"
                    Repeater {
                        model: 12
                        Rectangle {
                            required property int index
                            x: spinner.width / 2 - 2; y: 0
                            width: 4; height: 12; radius: 2
                            color: "white"
                            opacity: 0.25 + 0.75 * index / 11
                            transform: Rotation { origin.x: 2; origin.y: spinner.height / 2; angle: index * 30 }
                        }
                    }
                    RotationAnimation on rotation {
                        running: spinner.visible && root.visible
                        from: 0; to: 360; duration: 1000; loops: Animation.Infinite
                    }
                }
            }
            Text {
                id: label
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                visible: text !== ""
                text: AppBridge.hudStatus
                color: "white"
                font.pixelSize: 15
                wrapMode: Text.WordWrap
            }
        }
    }
}
