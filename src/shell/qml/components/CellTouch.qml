import QtQuick
import Nimbrel.Shell

// The touch surface of a collection's cell. Beyond the tap and the long press, a mouse's
// press-and-move drags the files behind the cell (or behind the selection it is in) out of the
// program, as Copy would hand them to a file manager. Only where files stand behind the cell: a
// touch's move, and any move on a cell without files, still scrolls the collection.
Pressable {
    id: touch
    property var collection: null   // the CollectionModel
    property int row: -1
    property point pressedAt
    onTapped: collection.tap(row)
    onLongPressed: collection.longPress(row)

    Drag.dragType: Drag.Automatic
    Drag.supportedActions: Qt.CopyAction

    // Fills Drag.mimeData for a drag from this cell; false when no file stands behind it.
    function prepareDrag() {
        Drag.mimeData = collection ? collection.dragData(row) : ({})
        return Object.keys(Drag.mimeData).length > 0
    }

    onPressed: (mouse) => {
        pressedAt = Qt.point(mouse.x, mouse.y)
        // Holding on to the press keeps the collection from taking the move for a scroll.
        preventStealing = mouse.button === Qt.LeftButton && mouse.source === Qt.MouseEventNotSynthesized
                          && collection !== null && collection.draggable(row)
    }
    onPositionChanged: (mouse) => {
        if (!preventStealing || dragged || held) return
        if (Math.abs(mouse.x - pressedAt.x) + Math.abs(mouse.y - pressedAt.y) < Qt.styleHints.startDragDistance) return
        dragged = true
        if (prepareDrag()) Drag.active = true
    }
    onReleased: preventStealing = false
    onCanceled: preventStealing = false
}
