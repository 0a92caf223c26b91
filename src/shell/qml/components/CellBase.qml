import QtQuick
import Nimbrel.Shell

// What every cell layout gets from its row.
Item {
    property var outlets: ({})
    property bool selected: false
    property int row: -1
    function o(name) { return outlets && outlets[name] ? outlets[name] : ({}) }
}
