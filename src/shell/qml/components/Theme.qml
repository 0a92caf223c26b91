pragma Singleton
import QtQuick

QtObject {
    // The palette's accent: r 0.98, g 0.71, b 0.17.
    readonly property color accent: Qt.rgba(0.98, 0.71, 0.17, 1)
    readonly property color accentSoft: Qt.rgba(0.98, 0.71, 0.17, 0.14)
    readonly property color background: "#f5f5f7"
    readonly property color card: "#ffffff"
    readonly property color text: "#1c1c1e"
    readonly property color secondaryText: "#8e8e93"
    readonly property color separator: "#e3e3e8"
    readonly property color pressed: "#ececf0"
    readonly property int barHeight: 44
    readonly property int statusBarHeight: 24
    readonly property int radius: 16
    readonly property int pad: 16
    readonly property string font: Qt.application.font.family
}
