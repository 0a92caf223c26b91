import QtQuick
import Nimbrel.Shell

// A touch surface: click or tap is a tap, press-and-hold or a right click is a long press.
MouseArea {
    id: area
    signal tapped()
    signal longPressed()
    property bool longPressEnabled: false
    acceptedButtons: longPressEnabled ? (Qt.LeftButton | Qt.RightButton) : Qt.LeftButton
    pressAndHoldInterval: 450
    property bool held: false
    // Set by a surface whose press became a drag: that press is neither a tap nor a long press.
    property bool dragged: false
    onPressed: { held = false; dragged = false }
    onPressAndHold: (mouse) => { if (longPressEnabled && !dragged && mouse.button === Qt.LeftButton) { held = true; area.longPressed() } }
    onClicked: (mouse) => {
        if (held || dragged) return
        if (mouse.button === Qt.RightButton) area.longPressed()
        else area.tapped()
    }
}
