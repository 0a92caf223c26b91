import QtQuick
import Nimbrel.Shell

// The frame of the two modal screens: a header with back, the title and the menu over a scroll
// view whose offset drives the platform's header, and the native ad at the foot.
SceneBase {
    id: root
    default property alias content: column.data
    readonly property var titleView: o("TitleView")
    readonly property var small: o("lblSmallTitle")
    readonly property var big: o("lblTitle")
    readonly property var expandable: o("expandableTitleView")
    readonly property var scroll: o("mainScrollView")
    readonly property var adHost: o("nativeAdview")
    readonly property var adHeight: o("heightOfNativrAdView")

    Rectangle { anchors.fill: parent; color: Theme.background }

    ScreenHeader {
        id: header
        width: parent.width
        height: implicitHeight
        z: 2
        largeHeight: 60
        collapse: Math.max(0, Math.min(1, (flick.contentY + flick.topMargin) / 60))
        smallTitle: root.small ? root.small.text : ""
        smallTitleVisible: root.titleView && !root.titleView.hidden
        largeOpacity: root.expandable ? root.expandable.alpha : 1
        OutletButton { parent: header.bar; x: 4; width: 44; height: 44; view: root.o("btnBack") }
        OutletButton { parent: header.bar; anchors.right: parent.right; anchors.rightMargin: 4; width: 44; height: 44; view: root.o("btnMenu") }
        Text {
            parent: header.large
            x: Theme.pad; y: 4
            text: root.big ? root.big.text : ""
            font.pixelSize: 32; font.bold: true
            color: root.big ? root.big.textColor : Theme.text
        }
    }

    Flickable {
        id: flick
        // From under the bar, the large title drawn over the inset: it folds without moving the
        // content it follows.
        anchors.top: parent.top
        anchors.topMargin: Theme.barHeight
        anchors.bottom: adBox.top
        width: parent.width
        topMargin: header.largeHeight
        contentHeight: column.implicitHeight + 32
        clip: true
        onContentYChanged: if (root.scroll) root.scroll.setContentY(Math.max(0, contentY + topMargin))
        Column {
            id: column
            width: flick.width
            spacing: 14
            topPadding: 8
        }
    }

    Item {
        id: adBox
        anchors.bottom: parent.bottom
        width: parent.width
        height: ad.visible ? Math.min(root.adHeight && root.adHeight.valid ? root.adHeight.constant : 120, 120) + 16 : 0
        NativeAdView { id: ad; host: root.adHost; anchors.fill: parent; anchors.margins: 8 }
    }
}
