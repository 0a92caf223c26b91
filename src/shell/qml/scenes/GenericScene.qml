import QtQuick
import Nimbrel.Shell

// A screen this shell has no scene for: its outlets listed, so that nothing is hidden.
SceneBase {
    id: root
    Rectangle { anchors.fill: parent; color: Theme.background }
    Row {
        x: 4; y: 4; height: Theme.barHeight
        OutletButton { view: root.o("btnBack"); width: 44; height: 44 }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: root.screen ? root.screen.screenId : ""
            font.pixelSize: 17; font.bold: true; color: Theme.text
        }
    }
    ListView {
        anchors.fill: parent; anchors.topMargin: Theme.barHeight + 8
        model: root.screen ? root.screen.outletNames : []
        delegate: Text {
            required property string modelData
            x: 16
            text: modelData + "  " + (root.o(modelData).text || root.o(modelData).title || "")
            color: Theme.secondaryText; font.pixelSize: 13
        }
    }
}
