import QtQuick
import Nimbrel.Shell

// A row that stands for a native ad (or a layout this shell does not know): a labelled card.
CellBase {
    Rectangle {
        anchors.fill: parent
        anchors.margins: 6
        radius: 16
        color: Theme.card
        border.color: Theme.separator
        Rectangle {
            x: 12; y: 12; width: 26; height: 16; radius: 4; color: Theme.accent
            Text { anchors.centerIn: parent; text: "Ad"; color: "white"; font.pixelSize: 10; font.bold: true }
        }
        Text {
            anchors.centerIn: parent
            text: "Sponsored"
            color: Theme.secondaryText
            font.pixelSize: 13
        }
    }
}
