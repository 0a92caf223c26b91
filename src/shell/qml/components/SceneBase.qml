import QtQuick
import Nimbrel.Shell

// What every scene gets: its screen, its outlets by name and its actions by selector.
Item {
    property var screen: null
    function o(name) { return screen ? screen.outlet(name) : null }
    function send(selector, sender) { if (screen) screen.send(selector, sender || "") }
}
