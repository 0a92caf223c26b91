import QtQuick
import Nimbrel.Shell

// The full-screen ad on show: a labelled placeholder creative with a close button.
Rectangle {
    id: root
    anchors.fill: parent
    visible: AppBridge.adVisible
    color: "#101014"
    MouseArea { anchors.fill: parent }
    Column {
        anchors.centerIn: parent
        spacing: 14
        width: parent.width - 64
        Image {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 96; height: 96
            source: "image://nimbrel/asset/ad_badge"
            sourceSize: Qt.size(192, 192)
        }
        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: "Demo advertisement"
            color: "white"; font.pixelSize: 24; font.bold: true
        }
        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
            text: AppBridge.adFormat + " · " + AppBridge.adNetwork
            color: "#a0a0a8"; font.pixelSize: 14
        }
    }
    Rectangle {
        anchors.top: parent.top; anchors.right: parent.right
        anchors.margins: 16
        width: 36; height: 36; radius: 18
        color: "#33ffffff"
        Text { anchors.centerIn: parent; text: "✕"; color: "white"; font.pixelSize: 16; font.bold: true }
        MouseArea { anchors.fill: parent; anchors.margins: -8; onClicked: AppBridge.closeAd() }
    }
}
