import QtQuick
import Qt.labs.lottieqt
import Nimbrel.Shell

// The launch screen: the animation the screen plays, the name under it.
SceneBase {
    id: root
    readonly property var animation: o("viewOfAnimation")

    Rectangle { anchors.fill: parent; color: "white" }
    LottieAnimation {
        id: lottie
        readonly property real side: Math.min(root.width * 0.6, 320)
        width: 200; height: 200
        scale: side / 200
        transformOrigin: Item.TopLeft
        x: (root.width - side) / 2
        y: (root.height - side) / 2 - 40
        source: "qrc:/nimbrel/lottie/splash.json"
        visible: root.animation && root.animation.valid && !root.animation.hidden
        autoPlay: false
        loops: root.animation && root.animation.state.loop ? LottieAnimation.Infinite : 1
        frameRate: 30 * (root.animation ? root.animation.state.speed || 1 : 1)
        quality: LottieAnimation.HighQuality
        readonly property bool shouldPlay: root.animation !== null && root.animation.state.playing === true
        onShouldPlayChanged: shouldPlay ? start() : stop()
        onStatusChanged: if (status === LottieAnimation.Ready && shouldPlay) start()
    }
    Column {
        anchors.horizontalCenter: parent.horizontalCenter
        y: lottie.y + lottie.side + 8
        spacing: 6
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "Nimbrel"
            font.pixelSize: 34; font.bold: true
            color: Theme.text
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "Files and media"
            font.pixelSize: 15
            color: Theme.secondaryText
        }
    }
}
