import QtQuick
import Nimbrel.Shell

// An album as a row: cover on the left, name and count, the mark on the right.
CellBase {
    id: root
    readonly property var img: o("albumImg")
    readonly property var name: o("lblAlbumName")
    readonly property var count: o("lblNoOfItems")
    readonly property var mark: o("checkmarkView")

    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: 12; anchors.rightMargin: 12
        anchors.topMargin: 5; anchors.bottomMargin: 5
        radius: 18
        color: root.selected && !root.mark.hidden ? Theme.accentSoft : Theme.card

        Rectangle {
            id: cover
            x: 8; y: 8
            width: parent.height - 16; height: width
            radius: 13
            color: "#ededf0"
            clip: true
            Image {
                anchors.fill: parent
                source: root.img.image || ""
                fillMode: Image.PreserveAspectCrop
                sourceSize: Qt.size(width * 2, height * 2)
                asynchronous: true
            }
        }
        Column {
            anchors.left: cover.right; anchors.leftMargin: 14
            anchors.right: markBox.left; anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            spacing: 4
            Text {
                width: parent.width
                text: root.name.text || ""
                visible: !root.name.hidden
                color: root.name.textColor || Theme.text
                font.pixelSize: 16; font.bold: true
                elide: Text.ElideRight
            }
            Text {
                width: parent.width
                text: root.count.text || ""
                visible: !root.count.hidden
                color: Theme.secondaryText
                font.pixelSize: 13
                elide: Text.ElideRight
            }
        }
        Item {
            id: markBox
            width: 40; height: parent.height
            anchors.right: parent.right; anchors.rightMargin: 6
            Checkmark { mark: root.mark; width: 26; height: 26; anchors.centerIn: parent }
            Image {
                anchors.centerIn: parent
                width: 18; height: 18
                visible: root.mark.hidden !== false
                source: "image://nimbrel/asset/arrow_right"
                sourceSize: Qt.size(36, 36)
            }
        }
    }
}
