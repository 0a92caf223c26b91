import QtQuick
import Nimbrel.Shell

// One picture as a row: thumbnail, file name, date and size.
CellBase {
    id: root
    readonly property var img: o("albumImg")
    readonly property var name: o("lblAlbumName")
    readonly property var detail: o("lblNoOfItems")
    readonly property var mark: o("checkmarkView")

    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: 12; anchors.rightMargin: 12
        anchors.topMargin: 4; anchors.bottomMargin: 4
        radius: 16
        color: root.selected && !root.mark.hidden ? Theme.accentSoft : Theme.card
        Rectangle {
            id: thumb
            x: 8; y: 8
            width: parent.height - 16; height: width
            radius: 11
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
            anchors.left: thumb.right; anchors.leftMargin: 14
            anchors.right: markItem.left; anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            spacing: 4
            Text {
                width: parent.width
                text: root.name.text || ""
                visible: !root.name.hidden
                color: Theme.text
                font.pixelSize: 15; font.bold: true
                elide: Text.ElideMiddle
            }
            Text {
                width: parent.width
                text: root.detail.text || ""
                visible: !root.detail.hidden
                color: Theme.secondaryText
                font.pixelSize: 12
                elide: Text.ElideRight
            }
        }
        Checkmark {
            id: markItem
            mark: root.mark
            width: 26; height: 26
            anchors.right: parent.right; anchors.rightMargin: 14
            anchors.verticalCenter: parent.verticalCenter
        }
    }
}
