import QtQuick
import Nimbrel.Shell

// The music player: the blurred cover filling the page, the round cover, title and artist, the
// position slider with its times, the 15-second jumps around play and pause, and the close button.
// The sound follows the screen's player; the slider and the times show the screen's own counter.
SceneBase {
    id: root
    readonly property var banner: o("ivSongBanner")
    readonly property var backdrop: o("ivBg")
    readonly property var slider: o("sliderOutlet")
    readonly property var elapsed: o("lblTime")
    readonly property var total: o("lblTotalTime")
    readonly property var title: o("lblSongTitle")
    readonly property var artist: o("lblArtist")
    readonly property bool pad: width >= 700
    readonly property real side: Math.min(width * (pad ? 0.52 : 0.68), height * 0.4)
    // While a finger holds the knob, the knob follows the finger.
    property real dragValue: -1

    Rectangle {
        anchors.fill: parent
        gradient: Gradient {
            GradientStop { position: 0; color: "#3a3a44" }
            GradientStop { position: 1; color: "#121216" }
        }
    }
    Image {
        objectName: "musicBackdrop"
        anchors.fill: parent
        source: root.backdrop ? root.backdrop.image : ""
        fillMode: Image.PreserveAspectCrop
        asynchronous: true
        visible: source !== ""
    }
    // Keeps white text readable over a pale cover.
    Rectangle { anchors.fill: parent; color: "#66000000" }

    // Stands in for the player's own surface: on the desktop it plays the song.
    MediaPicture {
        width: 1; height: 1
        soundOnly: true
        player: root.screen ? root.screen.player : null
    }

    Item {
        id: closeButton
        x: 12; y: Theme.statusBarHeight + 12
        width: 44; height: 44
        Rectangle { anchors.centerIn: parent; width: 36; height: 36; radius: 18; color: "#e6ffffff" }
        OutletButton { anchors.fill: parent; view: root.o("btnClose"); iconSize: 20 }
    }

    Column {
        id: body
        anchors.horizontalCenter: parent.horizontalCenter
        y: Math.max(closeButton.y + closeButton.height + 12, (root.height - implicitHeight) / 2 - 12)
        width: Math.min(root.width - 48, 560)
        spacing: 0

        Item {
            width: parent.width; height: root.side
            Image {
                objectName: "musicBanner"
                anchors.centerIn: parent
                width: root.side; height: root.side
                source: root.banner && root.banner.image !== ""
                        ? root.banner.image.replace("image://nimbrel/", "image://nimbrel/round/") : ""
                sourceSize: Qt.size(root.side * 2, root.side * 2)
                asynchronous: true
            }
            Rectangle {
                anchors.centerIn: parent
                width: root.side; height: root.side; radius: root.side / 2
                color: "transparent"
                border.width: root.banner ? root.banner.borderWidth : 0
                border.color: root.banner ? root.banner.borderColor : "transparent"
            }
        }
        Item { width: 1; height: 28 }
        Text {
            objectName: "musicTitle"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: root.title ? root.title.text : ""
            color: root.title ? root.title.textColor : "white"
            font.pixelSize: root.pad ? 28 : 22; font.bold: true
            elide: Text.ElideRight
        }
        Item { width: 1; height: 6 }
        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: root.artist ? root.artist.text : ""
            color: root.artist ? root.artist.textColor : "white"
            font.pixelSize: root.pad ? 19 : 16
            elide: Text.ElideRight
        }
        Item { width: 1; height: 28 }

        Item {
            id: track
            objectName: "musicSlider"
            width: parent.width; height: 30
            readonly property real span: root.slider ? root.slider.maximum - root.slider.minimum : 0
            readonly property real shown: root.dragValue >= 0 ? root.dragValue : (root.slider ? root.slider.value : 0)
            readonly property real fraction: span > 0 ? Math.max(0, Math.min(1, (shown - root.slider.minimum) / span)) : 0
            Rectangle {
                anchors.verticalCenter: parent.verticalCenter
                width: parent.width; height: 4; radius: 2
                color: "#4dffffff"
            }
            Rectangle {
                anchors.verticalCenter: parent.verticalCenter
                width: parent.width * track.fraction; height: 4; radius: 2
                color: Theme.accent
            }
            Rectangle {
                x: (parent.width - width) * track.fraction
                anchors.verticalCenter: parent.verticalCenter
                width: drag.pressed ? 22 : 16; height: width; radius: width / 2
                color: "white"
            }
            MouseArea {
                id: drag
                anchors.fill: parent
                anchors.margins: -8
                enabled: track.span > 0
                function place(x) {
                    return root.slider.minimum + Math.max(0, Math.min(1, (x - 8) / track.width)) * track.span
                }
                // A slider sends while it moves; whole seconds are all the screen keeps of it.
                function move(x) {
                    const value = place(x)
                    const changed = Math.floor(value) !== Math.floor(root.dragValue)
                    root.dragValue = value
                    if (changed) root.slider.slide(value)
                }
                onPressed: (m) => move(m.x)
                onPositionChanged: (m) => move(m.x)
                onReleased: (m) => { root.slider.slide(place(m.x)); root.dragValue = -1 }
                onCanceled: root.dragValue = -1
            }
        }
        Item {
            width: parent.width; height: 22
            Text {
                text: root.elapsed ? root.elapsed.text : ""
                color: root.elapsed ? root.elapsed.textColor : "white"
                font.pixelSize: 13
            }
            Text {
                anchors.right: parent.right
                text: root.total ? root.total.text : ""
                color: root.total ? root.total.textColor : "white"
                font.pixelSize: 13
            }
        }
        Item { width: 1; height: 24 }

        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: root.pad ? 48 : 32
            OutletButton {
                anchors.verticalCenter: parent.verticalCenter
                width: 56; height: 56; iconSize: 40
                view: root.o("btnLessTime")
            }
            Item {
                width: 76; height: 76
                Rectangle { anchors.fill: parent; radius: width / 2; color: "white" }
                OutletButton {
                    objectName: "musicPlayButton"
                    anchors.fill: parent
                    iconSize: 34
                    view: root.o("btnPlayOutlet")
                }
            }
            OutletButton {
                anchors.verticalCenter: parent.verticalCenter
                width: 56; height: 56; iconSize: 40
                view: root.o("btnAddTime")
            }
        }
    }
}
