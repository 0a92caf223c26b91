import QtQuick
import Nimbrel.Shell

// The photo and video browser: header with back, layout switch and menu; the selection chrome;
// the path bar; the grid or list of albums or of one album's items; the edit bar and the ad slot.
SceneBase {
    id: root
    readonly property var expandable: o("expandableTitleView")
    readonly property var titleView: o("TitleView")
    readonly property var above: o("lblAboveTitle")
    readonly property var below: o("lblBelowTitle")
    readonly property var albumsCount: o("lblTitleNoOfAlbums")
    readonly property var itemsCount: o("lblNoOfItems")
    readonly property var selectionBar: o("headerSelectionView")
    readonly property var closeView: o("closeBtnView")
    readonly property var selectAll: o("selectALLBtn")
    readonly property var selectAllMark: o("selectAllCehckmark")
    readonly property var mainFolder: o("lblMainFolderName")
    readonly property var subFolder: o("lbSubFolderName")
    readonly property var arrow: o("lastsubImagesAerrowView")
    readonly property var subWidth: o("subVFolderNameWidthConstant")
    readonly property var collection: o("albumsCollectionView")
    readonly property var editBar: o("SelectEditView")
    readonly property var adHost: o("BottomAdView")
    readonly property var adHeight: o("bottomViewHeightConstant")
    readonly property var gridOrList: o("imgGridOrList")

    Rectangle { anchors.fill: parent; color: Theme.background }

    ScreenHeader {
        id: header
        width: parent.width
        height: implicitHeight
        z: 3
        collapse: Math.max(0, Math.min(1, (grid.contentY + grid.contentInset) / 72))
        smallTitle: root.below ? root.below.text : ""
        smallTitleVisible: root.titleView && !root.titleView.hidden
        largeOpacity: root.expandable ? Math.max(0.1, root.expandable.alpha) : 1

        Row {
            parent: header.bar
            x: 4; height: parent.height
            OutletButton { view: root.o("btnBack"); width: 44; height: 44 }
        }
        Row {
            parent: header.bar
            anchors.right: parent.right; anchors.rightMargin: 4
            height: parent.height
            OutletButton {
                view: root.o("btnGridOrList")
                icon: root.gridOrList ? root.gridOrList.image : ""
                iconSize: 22
                width: 44; height: 44
            }
            OutletButton { view: root.o("btnMrnu"); width: 44; height: 44 }
        }
        // The selection chrome over the bar.
        Rectangle {
            parent: header.bar
            anchors.fill: parent
            z: 5
            color: Theme.background
            visible: root.selectionBar && !root.selectionBar.hidden
            MouseArea { anchors.fill: parent }
            OutletButton {
                x: 4; width: 44; height: 44
                view: root.o("closebtn")
                visible: root.closeView && !root.closeView.hidden
            }
            Row {
                anchors.right: parent.right; anchors.rightMargin: 14
                height: parent.height
                spacing: 8
                Text {
                    anchors.verticalCenter: parent.verticalCenter
                    visible: root.selectAll && !root.selectAll.hidden
                    text: root.selectAll ? root.selectAll.title : ""
                    color: root.selectAll ? root.selectAll.titleColor : Theme.accent
                    font.pixelSize: 16; font.bold: true
                    MouseArea { anchors.fill: parent; anchors.margins: -10; onClicked: root.selectAll.press() }
                }
                Checkmark {
                    anchors.verticalCenter: parent.verticalCenter
                    implicitWidth: 26; implicitHeight: 26
                    width: 26; height: 26
                    mark: root.selectAllMark ? root.selectAllMark.state : ({})
                }
            }
        }
        Item {
            parent: header.large
            anchors.fill: parent
            Column {
                x: Theme.pad; y: 2
                width: parent.width - 150
                Text {
                    text: root.above ? root.above.text : ""
                    visible: root.above && !root.above.hidden
                    color: root.above ? root.above.textColor : Theme.secondaryText
                    font.pixelSize: 14
                }
                Text {
                    text: root.below ? root.below.text : ""
                    visible: root.below && !root.below.hidden
                    color: root.below ? root.below.textColor : Theme.text
                    font.pixelSize: 32; font.bold: true
                }
            }
            Column {
                anchors.right: parent.right; anchors.rightMargin: Theme.pad
                anchors.bottom: parent.bottom; anchors.bottomMargin: 12
                Text { anchors.right: parent.right; text: root.albumsCount ? root.albumsCount.text : ""; color: Theme.secondaryText; font.pixelSize: 13 }
                Text { anchors.right: parent.right; text: root.itemsCount ? root.itemsCount.text : ""; color: Theme.secondaryText; font.pixelSize: 13 }
            }
        }
    }

    // The path bar: the library, then the open album.
    Item {
        id: pathBar
        anchors.top: header.bottom
        width: parent.width
        height: 44
        z: 2
        Rectangle { anchors.fill: parent; color: Theme.background }
        Row {
            x: Theme.pad
            height: parent.height
            spacing: 6
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: root.mainFolder ? root.mainFolder.text : ""
                color: root.mainFolder ? root.mainFolder.textColor : Theme.accent
                font.pixelSize: 16; font.bold: true
                MouseArea { anchors.fill: parent; anchors.margins: -8; onClicked: root.o("btnMainFolder").press() }
            }
            Image {
                anchors.verticalCenter: parent.verticalCenter
                visible: root.arrow && !root.arrow.hidden
                width: 16; height: 16
                source: "image://nimbrel/asset/arrow_right"
                sourceSize: Qt.size(32, 32)
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                visible: root.subFolder && !root.subFolder.hidden
                width: Math.min(implicitWidth, root.subWidth && root.subWidth.valid && root.subWidth.constant > 0 ? root.subWidth.constant + 4 : implicitWidth, pathBar.width - 160)
                text: root.subFolder ? root.subFolder.text : ""
                color: root.subFolder ? root.subFolder.textColor : Theme.text
                font.pixelSize: 16; font.bold: true
                elide: Text.ElideRight
            }
        }
        Rectangle { anchors.bottom: parent.bottom; width: parent.width; height: 1; color: Theme.separator }
    }

    CollectionGrid {
        id: grid
        objectName: "albumsGrid"
        view: root.collection
        // From under the bar: the large title and the path bar are drawn over the grid's inset.
        anchors.top: parent.top
        anchors.topMargin: Theme.barHeight
        anchors.bottom: adSlot.top
        width: parent.width
        contentInset: header.largeHeight + pathBar.height
        viewHeight: height - pathBar.height
        topMargin: contentInset + 6
        bottomMargin: editBar.visible ? editBar.height + 6 : 6
        cellFiles: ({
            "albumGridCell": Qt.resolvedUrl("../cells/AlbumGridCell.qml"),
            "albumListCell": Qt.resolvedUrl("../cells/AlbumListCell.qml"),
            "photosGridCell": Qt.resolvedUrl("../cells/PhotosGridCell.qml"),
            "photosListCell": Qt.resolvedUrl("../cells/PhotosListCell.qml")
        })
    }

    // The edit bar over the foot of the grid.
    Rectangle {
        id: editBar
        anchors.bottom: adSlot.top
        width: parent.width
        height: 60
        z: 2
        color: Theme.card
        visible: root.editBar && !root.editBar.hidden
        Rectangle { width: parent.width; height: 1; color: Theme.separator }
        Row {
            anchors.fill: parent
            Repeater {
                model: ["btnShare", "btnDelete", "btnFav", "btnInfo"]
                Item {
                    required property string modelData
                    width: editBar.width / 4; height: editBar.height
                    OutletButton {
                        anchors.centerIn: parent
                        width: 56; height: 48
                        view: root.o(modelData)
                        icon: modelData === "btnFav" && root.o("imgFav").valid ? root.o("imgFav").image : (view ? view.image : "")
                    }
                }
            }
        }
    }

    // The ad slot at the foot.
    Item {
        id: adSlot
        anchors.bottom: parent.bottom
        width: parent.width
        height: root.adHost && root.adHost.valid && !root.adHost.hidden
                ? (root.adHeight && root.adHeight.valid ? root.adHeight.constant : 64) : 0
        Rectangle { anchors.fill: parent; color: "#ececf0" }
        Text {
            anchors.centerIn: parent
            visible: !ad.visible && parent.height > 0
            text: "Advertisement"
            color: Theme.secondaryText; font.pixelSize: 12
        }
        NativeAdView { id: ad; host: root.adHost; anchors.fill: parent; anchors.margins: 4; radius: 10 }
    }
}
