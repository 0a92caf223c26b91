import QtQuick
import Nimbrel.Shell

// An album in the grid: its cover, its name and how many items it holds.
CellBase {
    id: root
    readonly property var img: o("albumImg")
    readonly property var name: o("lblAlbumName")
    readonly property var count: o("lblNoOfItems")
    readonly property var mark: o("checkmarkView")

    Rectangle {
        anchors.fill: parent
        anchors.margins: 6
        radius: 18
        color: Theme.card
        border.color: root.selected && !root.mark.hidden ? Theme.accent : "#ececf0"
        border.width: root.selected && !root.mark.hidden ? 2 : 1
        clip: true

        Rectangle {
            id: cover
            x: 6; y: 6
            width: parent.width - 12
            height: parent.height - 56
            radius: 13
            color: "#ededf0"
            clip: true
            visible: !root.img.hidden
            Image {
                anchors.fill: parent
                source: root.img.image || ""
                fillMode: Image.PreserveAspectCrop
                sourceSize: Qt.size(width * 2, height * 2)
                asynchronous: true
                smooth: true
            }
        }
        Column {
            anchors.left: parent.left; anchors.right: parent.right
            anchors.top: cover.bottom
            anchors.leftMargin: 10; anchors.rightMargin: 10; anchors.topMargin: 6
            spacing: 1
            Text {
                width: parent.width
                text: root.name.text || ""
                visible: !root.name.hidden
                color: root.name.textColor || Theme.text
                font.pixelSize: 14; font.bold: true
                elide: Text.ElideRight
            }
            Text {
                width: parent.width
                text: root.count.text || ""
                visible: !root.count.hidden
                color: Theme.secondaryText
                font.pixelSize: 12
                elide: Text.ElideRight
            }
        }
    }
    Checkmark {
        mark: root.mark
        width: 26; height: 26
        anchors.right: parent.right; anchors.top: parent.top
        anchors.margins: 14
    }
}
