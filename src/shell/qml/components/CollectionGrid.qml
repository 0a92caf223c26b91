import QtQuick
import Nimbrel.Shell

// A collection view outlet as a grid (or a list: one column) whose cells come from the
// collection's data source. Its size and scroll position flow back to the collection, so that
// the cell-size rules and the collapsing header follow what a person sees.
GridView {
    id: grid
    property var view: null                 // ViewObject of the UICollectionView
    // The cell layout's file for a reuse identifier; each has `outlets`, `reuse`, `selected`, `row`.
    property var cellFiles: ({})
    property url fallbackCell: Qt.resolvedUrl("../cells/AdCell.qml")
    readonly property var collection: view ? view.model : null
    model: collection
    visible: view !== null && view.valid && !view.hidden
    clip: true
    cacheBuffer: 0
    boundsBehavior: Flickable.DragAndOvershootBounds
    cellWidth: collection && collection.columns > 0 ? Math.floor(width / collection.columns * 1000) / 1000 : width
    cellHeight: collection && collection.itemHeight > 0 ? collection.itemHeight : 100
    flickDeceleration: 2200
    maximumFlickVelocity: 5000
    pixelAligned: true

    // The height the collection is told: scenes that draw a folding header over the grid pass the
    // height left under it, so that folding does not lay the collection out again at every step.
    property real viewHeight: height
    // Room at the top that the scene covers with its own chrome: the collection's offset starts
    // below it. The chrome folds over the grid instead of moving it, so nothing loops.
    property real contentInset: 0
    function feedSize() { if (view && width > 0 && viewHeight > 0) view.setViewSize(width, viewHeight) }
    onWidthChanged: feedSize()
    onViewHeightChanged: feedSize()
    Component.onCompleted: feedSize()
    onContentYChanged: if (view && moving) view.setContentY(contentY - originY + contentInset)
    onMovementEnded: if (view) view.setContentY(Math.max(0, contentY - originY + contentInset))
    // The collection moved itself (back to the top after a reload): follow it.
    Connections {
        target: grid.view
        function onChanged() {
            if (!grid.moving && Math.abs((grid.contentY - grid.originY + grid.contentInset) - grid.view.contentY) > 0.5)
                grid.contentY = grid.view.contentY + grid.originY - grid.contentInset
        }
    }

    delegate: Item {
        id: cell
        required property var outlets
        required property string reuse
        required property bool selected
        required property int row
        width: grid.cellWidth
        height: grid.cellHeight
        Loader {
            id: loader
            anchors.fill: parent
            source: grid.cellFiles[cell.reuse] !== undefined ? grid.cellFiles[cell.reuse] : grid.fallbackCell
        }
        Binding { target: loader.item; property: "outlets"; value: cell.outlets; when: loader.status === Loader.Ready }
        Binding { target: loader.item; property: "selected"; value: cell.selected; when: loader.status === Loader.Ready }
        Binding { target: loader.item; property: "row"; value: cell.row; when: loader.status === Loader.Ready }
        CellTouch {
            objectName: "cellTouch" + cell.row
            anchors.fill: parent
            longPressEnabled: true
            collection: grid.collection
            row: cell.row
        }
    }
}
