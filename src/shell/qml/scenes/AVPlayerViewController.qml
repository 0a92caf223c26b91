import QtQuick
import Nimbrel.Shell

// The system's full-screen player: the picture, a close button, play and pause, and the position
// bar with its times, all on the screen's player. Where the platform has no picture for the file, a
// placeholder with the file's name stands in for it.
SceneBase {
    id: root
    readonly property var player: screen ? screen.player : null
    readonly property bool playing: player !== null && player.playing
    readonly property real duration: player ? player.duration : -1
    // While a finger moves the knob, the bar shows the finger's place.
    property real dragPosition: -1
    readonly property real shownPosition: dragPosition >= 0 ? dragPosition : (player ? player.position : 0)
    readonly property real fraction: duration > 0 ? Math.max(0, Math.min(1, shownPosition / duration)) : 0
    readonly property real inset: Math.max(16, Math.min(40, width * 0.04))

    Rectangle { anchors.fill: parent; color: "black" }

    // The picture's place: the video's frame, fitted, with room below it for the caption and
    // the position bar on short windows.
    Rectangle {
        id: picture
        objectName: "playerPicture"
        readonly property real fitWidth: Math.min(root.width, (root.height - 312) * 16 / 9)
        width: fitWidth
        height: fitWidth * 9 / 16
        anchors.centerIn: parent
        gradient: Gradient {
            GradientStop { position: 0; color: "#26262c" }
            GradientStop { position: 1; color: "#121216" }
        }
        MediaPicture {
            id: media
            anchors.fill: parent
            player: root.player
        }
    }
    // What stands in for the picture, under it: the play button keeps the picture's middle.
    Column {
        objectName: "playerCaption"
        anchors.top: picture.bottom; anchors.topMargin: 14
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(root.width - 48, 480)
        spacing: 4
        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 8
            Image {
                anchors.verticalCenter: parent.verticalCenter
                width: 24; height: 24
                source: "image://nimbrel/asset/film"
                sourceSize: Qt.size(48, 48)
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, root.width - 48 - 32)
                text: root.player ? root.player.fileName : ""
                color: "white"
                font.pixelSize: 16; font.bold: true
                elide: Text.ElideMiddle
            }
        }
        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            visible: !media.showing
            text: "No picture on this platform: playback is simulated"
            color: "#b3ffffff"
            font.pixelSize: 12
            wrapMode: Text.WordWrap
        }
    }

    // Close.
    Rectangle {
        objectName: "playerClose"
        x: root.inset; y: Theme.statusBarHeight + 12
        width: 44; height: 44; radius: 22
        color: closeArea.pressed ? "#66ffffff" : "#40ffffff"
        Image {
            anchors.centerIn: parent
            width: 22; height: 22
            source: "image://nimbrel/asset/player_close"
            sourceSize: Qt.size(44, 44)
        }
        MouseArea { id: closeArea; anchors.fill: parent; onClicked: root.screen.dismiss() }
    }

    // Play and pause.
    Rectangle {
        objectName: "playerPlayPause"
        anchors.centerIn: parent
        width: 76; height: 76; radius: 38
        color: playArea.pressed ? "#73ffffff" : "#4d000000"
        border.color: "#33ffffff"; border.width: 1
        visible: root.player !== null
        Image {
            anchors.centerIn: parent
            anchors.horizontalCenterOffset: root.playing ? 0 : 3
            width: 40; height: 40
            source: root.playing ? "image://nimbrel/asset/player_pause" : "image://nimbrel/asset/player_play"
            sourceSize: Qt.size(80, 80)
        }
        MouseArea {
            id: playArea
            anchors.fill: parent
            onClicked: root.playing ? root.player.pause() : root.player.play()
        }
    }

    // The position bar and its times.
    Rectangle {
        id: controls
        objectName: "playerControls"
        anchors.bottom: parent.bottom; anchors.bottomMargin: root.inset
        x: root.inset
        width: root.width - 2 * root.inset
        height: 64; radius: 16
        color: "#8c1c1c1e"
        visible: root.player !== null

        Text {
            id: elapsed
            objectName: "playerElapsed"
            x: 16; anchors.verticalCenter: parent.verticalCenter
            width: 52
            text: root.player ? root.player.formatTime(root.shownPosition) : ""
            color: "white"; font.pixelSize: 13
        }
        Text {
            id: remaining
            objectName: "playerRemaining"
            anchors.right: parent.right; anchors.rightMargin: 16
            anchors.verticalCenter: parent.verticalCenter
            width: 52
            horizontalAlignment: Text.AlignRight
            text: root.player && root.duration >= 0 ? root.player.formatTime(root.shownPosition - root.duration) : "--:--"
            color: "white"; font.pixelSize: 13
        }
        Item {
            id: track
            objectName: "playerTrack"
            anchors.left: elapsed.right; anchors.right: remaining.left
            anchors.leftMargin: 8; anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            height: 36
            Rectangle {
                anchors.verticalCenter: parent.verticalCenter
                width: parent.width; height: 5; radius: 2.5
                color: "#4dffffff"
            }
            Rectangle {
                anchors.verticalCenter: parent.verticalCenter
                width: parent.width * root.fraction; height: 5; radius: 2.5
                color: "white"
            }
            Rectangle {
                x: parent.width * root.fraction - width / 2
                anchors.verticalCenter: parent.verticalCenter
                width: seek.pressed ? 18 : 13; height: width; radius: width / 2
                color: "white"
            }
            MouseArea {
                id: seek
                anchors.fill: parent
                anchors.margins: -6
                enabled: root.duration > 0
                function place(x) { return Math.max(0, Math.min(1, (x - 6) / track.width)) * root.duration }
                onPressed: (m) => root.dragPosition = place(m.x)
                onPositionChanged: (m) => root.dragPosition = place(m.x)
                onReleased: (m) => { root.player.seek(place(m.x)); root.dragPosition = -1 }
                onCanceled: root.dragPosition = -1
            }
        }
    }
}
