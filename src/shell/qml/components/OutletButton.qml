import QtQuick
import Nimbrel.Shell

// A control outlet drawn as an icon (and title) that sends its wired actions when tapped.
Item {
    id: root
    property var view: null          // ViewObject of the button
    property string icon: view ? view.image : ""
    property int iconSize: 24
    property color tint: "transparent"
    visible: view !== null && view.valid && !view.hidden
    opacity: view && view.enabled ? view.alpha : 0.4
    implicitWidth: 44
    implicitHeight: 44

    Rectangle {
        anchors.centerIn: parent
        width: Math.min(parent.width, parent.height) - 4
        height: width
        radius: width / 2
        color: Theme.pressed
        visible: area.pressed
    }
    Image {
        anchors.centerIn: parent
        width: root.iconSize
        height: root.iconSize
        source: root.icon
        sourceSize: Qt.size(root.iconSize * 2, root.iconSize * 2)
        visible: root.icon !== ""
        smooth: true
    }
    Pressable {
        id: area
        anchors.fill: parent
        onTapped: if (root.view) root.view.press()
    }
}
