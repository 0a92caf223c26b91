import QtQuick
import QtQuick.Window
import Nimbrel.Shell

Window {
    id: window
    visible: true
    title: AppBridge.windowTitle
    color: "#f5f5f7"
}
