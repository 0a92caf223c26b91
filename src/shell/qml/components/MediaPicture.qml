import QtQuick
import QtMultimedia
import Nimbrel.Shell

// The file's picture and sound where the platform has real media (the desktop): Qt Multimedia
// decodes it and follows the program's player, which alone decides playing, pausing and the
// position. Elsewhere nothing is made, and the scene's stand-in shows.
Item {
    id: root
    property var player: null
    // Sound alone: a song's cover rides in its file as a one-picture video stream, which Qt 6.4's
    // FFmpeg backend cannot time (it divides by its rate of zero).
    property bool soundOnly: false
    readonly property bool active: AppBridge.realPlayback && player !== null && player.valid
    // True once a picture is coming: the scene then hides its stand-in.
    readonly property bool showing: loader.item !== null && loader.item.hasPicture

    Loader {
        id: loader
        anchors.fill: parent
        active: root.active
        sourceComponent: Item {
            readonly property bool hasPicture: media.hasVideo && media.error === MediaPlayer.NoError
            // Qt's FFmpeg backend crashes writing sound to a machine without an audio device:
            // there the picture plays silent.
            MediaDevices { id: devices }
            AudioOutput { id: sound }
            MediaPlayer {
                id: media
                source: root.player ? root.player.source : ""
                videoOutput: root.soundOnly ? null : output
                audioOutput: devices.audioOutputs.length > 0 ? sound : null
                onMediaStatusChanged: follow()
            }
            Rectangle {
                anchors.fill: parent
                visible: parent.hasPicture
                color: "black"
            }
            VideoOutput {
                id: output
                anchors.fill: parent
                fillMode: VideoOutput.PreserveAspectFit
            }
            Connections {
                target: root.player
                function onChanged() { follow() }
            }
            Component.onCompleted: follow()

            // Drift beyond half a second (a seek, a stall) brings the picture back to the player.
            function follow() {
                if (!root.player) return
                const wanted = root.player.position * 1000
                if (media.seekable && Math.abs(media.position - wanted) > 500) media.position = wanted
                if (root.player.playing && media.playbackState !== MediaPlayer.PlayingState) media.play()
                else if (!root.player.playing && media.playbackState === MediaPlayer.PlayingState) media.pause()
            }
        }
    }
}
