import QtQuick
import Nimbrel.Shell

// The dashboard: a collapsing header with the title and the menu, the storage line, the strip of
// recent items, the buttons to the browse screens and the native ad at the foot.
SceneBase {
    id: root
    readonly property var header: o("heightOfHeaderViewConstant")
    readonly property var expandable: o("expandableTitleView")
    readonly property var titleView: o("TitleView")
    readonly property var lblTitle: o("lblTitle")
    readonly property var btnMenu: o("btnMenu")
    readonly property var scroll: o("mainScrollView")
    readonly property var storage: o("lblInternalStorage")
    readonly property var recentView: o("recentFilesView")
    readonly property var recentTitle: o("lblRecentFiles")
    readonly property var strip: o("recentFileCollectionView")
    readonly property var adHost: o("nativeAdview")
    readonly property var adHeight: o("heightOfNativrAdView")
    readonly property bool wide: root.width >= 700
    readonly property var buttons: [
        "btnImages", "btnVideo", "btnAudio", "btnDocument", "btnRecent", "btnFav", "btnStorageAnalysis"
    ]

    Rectangle { anchors.fill: parent; color: Theme.background }

    // Header: its height is the platform's collapsing constraint.
    Item {
        id: headerItem
        width: parent.width
        height: root.header && root.header.valid ? Math.max(50, root.header.constant) : 120
        z: 2
        clip: true
        Rectangle { anchors.fill: parent; color: Theme.background }
        Rectangle {
            anchors.bottom: parent.bottom; width: parent.width; height: 1
            color: Theme.separator; visible: headerItem.height < 100
        }
        Text {   // the small title once the header has folded
            anchors.verticalCenter: parent.verticalCenter
            x: Theme.pad
            visible: root.titleView && root.titleView.hidden
            text: root.lblTitle ? root.lblTitle.text : ""
            font.pixelSize: 20; font.bold: true; color: Theme.text
        }
        Item {
            y: 50
            width: parent.width; height: 70
            opacity: root.expandable ? root.expandable.alpha * Math.max(0, (headerItem.height - 60) / 60) : 1
            visible: root.expandable && !root.expandable.hidden
            Text {
                x: Theme.pad; y: 6
                text: root.lblTitle ? root.lblTitle.text : ""
                font.pixelSize: 34; font.bold: true
                color: root.lblTitle ? root.lblTitle.textColor : Theme.text
            }
        }
        OutletButton {
            view: root.btnMenu
            anchors.right: parent.right; anchors.rightMargin: 6
            y: 3
            width: 44; height: 44
        }
    }

    Flickable {
        id: flick
        anchors.top: headerItem.bottom
        anchors.bottom: adBox.top
        width: parent.width
        contentHeight: content.height + 24
        clip: true
        boundsBehavior: Flickable.DragAndOvershootBounds
        onContentYChanged: if (root.scroll) root.scroll.setContentY(Math.max(0, contentY))

        Column {
            id: content
            width: flick.width
            spacing: 18
            topPadding: 6

            // The storage line.
            Rectangle {
                x: Theme.pad
                width: parent.width - 2 * Theme.pad
                height: 76
                radius: Theme.radius
                color: Theme.card
                visible: root.storage && !root.storage.hidden
                Image {
                    id: storageIcon
                    x: 14; anchors.verticalCenter: parent.verticalCenter
                    width: 44; height: 44
                    source: "image://nimbrel/asset/home_storage"
                    sourceSize: Qt.size(88, 88)
                }
                Column {
                    anchors.left: storageIcon.right; anchors.leftMargin: 14
                    anchors.verticalCenter: parent.verticalCenter
                    spacing: 3
                    Text { text: "Internal storage"; font.pixelSize: 13; color: Theme.secondaryText }
                    Text {
                        text: root.storage ? root.storage.text : ""
                        font.pixelSize: 20; font.bold: true
                        color: root.storage ? root.storage.textColor : Theme.text
                    }
                }
            }

            // The strip of recent items.
            Column {
                width: parent.width
                spacing: 8
                visible: root.recentView && !root.recentView.hidden
                Text {
                    x: Theme.pad
                    text: root.recentTitle ? root.recentTitle.text : ""
                    font.pixelSize: 20; font.bold: true; color: Theme.text
                }
                ListView {
                    id: stripList
                    width: parent.width
                    height: root.strip && root.strip.model && root.strip.model.itemHeight > 0 ? root.strip.model.itemHeight : 120
                    orientation: ListView.Horizontal
                    leftMargin: 10; rightMargin: 10
                    clip: true
                    model: root.strip ? root.strip.model : null
                    onWidthChanged: if (root.strip && width > 0) root.strip.setViewSize(width, height)
                    Component.onCompleted: if (root.strip && width > 0) root.strip.setViewSize(width, height)
                    delegate: Item {
                        id: stripCell
                        required property var outlets
                        required property bool selected
                        required property int row
                        width: root.strip.model.itemWidth > 0 ? root.strip.model.itemWidth : 120
                        height: stripList.height
                        RecentFilesCell { anchors.fill: parent; outlets: stripCell.outlets; selected: stripCell.selected; row: stripCell.row }
                        CellTouch { anchors.fill: parent; collection: root.strip.model; row: stripCell.row }
                    }
                }
            }

            // The buttons to the browse screens and the storage analysis.
            Grid {
                id: tiles
                x: Theme.pad
                columns: root.wide ? 4 : 3
                spacing: 12
                readonly property real side: (parent.width - 2 * Theme.pad - (columns - 1) * spacing) / columns
                Repeater {
                    model: root.buttons
                    Rectangle {
                        id: tile
                        required property string modelData
                        readonly property var button: root.o(modelData)
                        width: tiles.side
                        height: Math.min(tiles.side, 132)
                        radius: Theme.radius
                        color: area.pressed ? Theme.pressed : Theme.card
                        visible: button && button.valid && !button.hidden
                        opacity: button && button.enabled ? 1 : 0.4
                        Image {
                            anchors.horizontalCenter: parent.horizontalCenter
                            y: parent.height * 0.17
                            width: Math.min(52, parent.width * 0.45); height: width
                            source: tile.button ? tile.button.image : ""
                            sourceSize: Qt.size(104, 104)
                        }
                        Text {
                            anchors.horizontalCenter: parent.horizontalCenter
                            anchors.bottom: parent.bottom; anchors.bottomMargin: parent.height * 0.13
                            width: parent.width - 12
                            horizontalAlignment: Text.AlignHCenter
                            text: tile.button ? tile.button.title : ""
                            font.pixelSize: 14; font.bold: true
                            color: tile.button ? tile.button.titleColor : Theme.text
                            elide: Text.ElideRight
                        }
                        Pressable { id: area; anchors.fill: parent; onTapped: if (tile.button) tile.button.press() }
                    }
                }
            }
        }
    }

    // The native ad at the foot, as tall as the screen's constraint says.
    Item {
        id: adBox
        anchors.bottom: parent.bottom
        width: parent.width
        height: ad.visible ? Math.min(root.adHeight && root.adHeight.valid ? root.adHeight.constant : 120, 120) + 16 : 0
        NativeAdView {
            id: ad
            host: root.adHost
            anchors.fill: parent
            anchors.margins: 8
        }
    }
}
