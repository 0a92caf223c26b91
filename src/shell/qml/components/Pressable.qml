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
    onPressed: held = false
    onPressAndHold: (mouse) => { if (longPressEnabled && mouse.button === Qt.LeftButton) { held = true; area.longPressed() } }
    onClicked: (mouse) => {
        if (held) return
        if (mouse.button === Qt.RightButton) area.longPressed()
        else area.tapped()
    }
}
