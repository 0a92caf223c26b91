import QtQuick
import Nimbrel.Shell

// The application's outward links, one card row each.
ModalScene {
    id: root
    readonly property var rows: ["btnPrivacyPolicy", "btnTerms", "btnShareUs", "btnRateUs"]

    Rectangle {
        x: Theme.pad
        width: parent.width - 2 * Theme.pad
        height: links.implicitHeight
        radius: Theme.radius
        color: Theme.card
        clip: true
        Column {
            id: links
            width: parent.width
            Repeater {
                model: root.rows
                Item {
                    id: link
                    required property string modelData
                    required property int index
                    readonly property var button: root.o(modelData)
                    width: links.width; height: 58
                    visible: button && button.valid && !button.hidden
                    Rectangle { anchors.fill: parent; color: Theme.pressed; visible: area.pressed }
                    Rectangle { visible: link.index > 0; x: 60; width: parent.width - 60; height: 1; color: Theme.separator }
                    Rectangle {
                        x: 14; anchors.verticalCenter: parent.verticalCenter
                        width: 34; height: 34; radius: 9
                        color: Theme.accentSoft
                        Image {
                            anchors.centerIn: parent
                            width: 22; height: 22
                            source: link.button ? link.button.image : ""
                            sourceSize: Qt.size(44, 44)
                        }
                    }
                    Text {
                        x: 60; anchors.verticalCenter: parent.verticalCenter
                        text: link.button ? link.button.title : ""
                        font.pixelSize: 16; color: link.button ? link.button.titleColor : Theme.text
                    }
                    Image {
                        anchors.right: parent.right; anchors.rightMargin: 14
                        anchors.verticalCenter: parent.verticalCenter
                        width: 16; height: 16
                        source: "image://nimbrel/asset/arrow_right"
                        sourceSize: Qt.size(32, 32)
                    }
                    Pressable { id: area; anchors.fill: parent; onTapped: if (link.button) link.button.press() }
                }
            }
        }
    }
    Text {
        x: Theme.pad
        width: parent.width - 2 * Theme.pad
        horizontalAlignment: Text.AlignHCenter
        text: "Nimbrel"
        color: Theme.secondaryText
        font.pixelSize: 13
    }
}
