import QtQuick
import Nimbrel.Shell

// One picture of an album in the grid, its size over the bottom edge.
CellBase {
    id: root
    readonly property var img: o("albumImg")
    readonly property var name: o("lblAlbumName")
    readonly property var size: o("lblNoOfItems")
    readonly property var mark: o("checkmarkView")

    Rectangle {
        anchors.fill: parent
        anchors.margins: 1.5
        radius: 6
        color: "#e6e6ea"
        clip: true
        Image {
            anchors.fill: parent
            source: root.img.image || ""
            fillMode: Image.PreserveAspectCrop
            sourceSize: Qt.size(width * 2, height * 2)
            asynchronous: true
        }
        Rectangle {
            anchors.left: parent.left; anchors.right: parent.right; anchors.bottom: parent.bottom
            height: 30
            gradient: Gradient {
                GradientStop { position: 0; color: "#00000000" }
                GradientStop { position: 1; color: "#8c000000" }
            }
        }
        Text {
            anchors.left: parent.left; anchors.bottom: parent.bottom
            anchors.margins: 6
            width: parent.width - 12
            text: root.size.text || ""
            visible: !root.size.hidden
            color: "white"
            font.pixelSize: 11; font.bold: true
            elide: Text.ElideRight
        }
        Rectangle {
            anchors.fill: parent
            color: Theme.accent
            opacity: root.selected && !root.mark.hidden ? 0.22 : 0
        }
    }
    Checkmark {
        mark: root.mark
        width: 24; height: 24
        anchors.right: parent.right; anchors.top: parent.top
        anchors.margins: 6
    }
}
