import QtQuick
import Nimbrel.Shell

// The native ads rendered into a host view, the latest on top: a labelled demo creative.
Rectangle {
    id: root
    property var host: null            // ViewObject of the host view
    readonly property var ads: host ? host.nativeAds : []
    readonly property var ad: ads.length > 0 ? ads[ads.length - 1] : null
    property bool compact: height < 100
    visible: host !== null && host.valid && !host.hidden && ad !== null
    color: Theme.card
    radius: 14
    border.color: Theme.separator

    Rectangle {
        id: badge
        x: 12; y: 10
        width: 26; height: 16; radius: 4
        color: Theme.accent
        Text { anchors.centerIn: parent; text: "Ad"; color: "white"; font.pixelSize: 10; font.bold: true }
    }
    Image {
        id: icon
        x: 12
        anchors.top: badge.bottom; anchors.topMargin: 6
        width: root.compact ? 0 : 40; height: width
        visible: !root.compact
        source: "image://nimbrel/asset/ad_badge"
        sourceSize: Qt.size(80, 80)
    }
    Column {
        anchors.left: root.compact ? badge.right : icon.right
        anchors.leftMargin: 10
        anchors.right: cta.left
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2
        Text {
            width: parent.width
            text: root.ad ? root.ad.title : ""
            font.pixelSize: 14; font.bold: true; color: Theme.text
            elide: Text.ElideRight
        }
        Text {
            width: parent.width
            text: root.ad ? root.ad.body : ""
            font.pixelSize: 12; color: Theme.secondaryText
            elide: Text.ElideRight
            maximumLineCount: root.compact ? 1 : 2
            wrapMode: Text.WordWrap
        }
    }
    Rectangle {
        id: cta
        anchors.right: parent.right; anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        width: Math.max(72, ctaText.implicitWidth + 24); height: 32; radius: 16
        color: Theme.accent
        Text { id: ctaText; anchors.centerIn: parent; text: root.ad && root.ad.cta ? root.ad.cta : "Open"; color: "white"; font.pixelSize: 13; font.bold: true }
    }
}
