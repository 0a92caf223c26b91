import QtQuick
import Nimbrel.Shell

// An item of the home screen's recent strip: its picture or file icon, its name, and the "more"
// veil on the last one shown.
CellBase {
    id: root
    readonly property var img: o("fileImg")
    readonly property var name: o("fileName")
    readonly property var more: o("moreFilesView")
    readonly property bool isIcon: (img.image || "").indexOf("/asset/") >= 0

    Rectangle {
        id: tile
        anchors.fill: parent
        anchors.margins: 6
        radius: Math.min(img.cornerRadius || 18, width / 2)
        color: root.isIcon ? "#fff7e6" : "#ededf0"
        clip: true
        Image {
            anchors.fill: parent
            anchors.margins: root.isIcon ? parent.width * 0.2 : 0
            anchors.bottomMargin: root.isIcon && !root.name.hidden ? parent.width * 0.3 : (root.isIcon ? parent.width * 0.2 : 0)
            source: root.img.image || ""
            fillMode: root.isIcon ? Image.PreserveAspectFit : Image.PreserveAspectCrop
            sourceSize: Qt.size(width * 2, height * 2)
            asynchronous: true
        }
        Text {
            anchors.bottom: parent.bottom; anchors.bottomMargin: 10
            anchors.horizontalCenter: parent.horizontalCenter
            width: parent.width - 16
            horizontalAlignment: Text.AlignHCenter
            visible: !root.name.hidden
            text: root.name.text || ""
            font.pixelSize: 11
            color: Theme.text
            elide: Text.ElideMiddle
        }
        Rectangle {
            anchors.fill: parent
            visible: root.more.hidden === false
            color: root.more.background || "#73000000"
            Text { anchors.centerIn: parent; text: "More"; color: "white"; font.pixelSize: 15; font.bold: true }
        }
    }
}
