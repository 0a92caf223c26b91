import QtQuick
import QtQuick.Window
import Nimbrel.Shell

Window {
    id: window
    visible: true
    title: AppBridge.windowTitle
    color: Theme.background
    minimumWidth: 320
    minimumHeight: 480

    Item {
        id: stage
        anchors.fill: parent
        focus: true
        Keys.onEscapePressed: AppBridge.back()

        Repeater {
            model: AppBridge.screens
            delegate: ScreenHost {}
        }
        PopupMenu { z: 1000 }
        ActivitySheet { z: 1001 }
        AlertView { z: 1002 }
        Hud { z: 1003 }
        ProgressOverlay { z: 1003 }
        FullScreenAd { z: 1004 }
        NoticeBanner { z: 1005 }
    }
}
