import QtQuick
import Nimbrel.Shell

// The platform's own message (where a damaged file was kept): a strip at the foot of the window
// that leaves the screens usable and stays until it is closed.
Rectangle {
    id: root
    objectName: "noticeBanner"
    visible: AppBridge.notice.length > 0
    anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: 10 }
    height: message.implicitHeight + 24
    radius: 12
    color: "#f2222224"

    Text {
        id: message
        anchors { left: parent.left; right: close.left; verticalCenter: parent.verticalCenter; leftMargin: 14; rightMargin: 8 }
        wrapMode: Text.Wrap
        text: AppBridge.notice
        font.pixelSize: 13
        color: "white"
    }
    Text {
        id: close
        objectName: "noticeClose"
        anchors { right: parent.right; verticalCenter: parent.verticalCenter; rightMargin: 14 }
        text: "\u2715"
        font.pixelSize: 16
        color: Theme.accent
        MouseArea { anchors.fill: parent; anchors.margins: -10; onClicked: AppBridge.dismissNotice() }
    }
}
