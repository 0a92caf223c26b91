import QtQuick
import QtQuick.Window
import QtMultimedia
import Nimbrel.Shell

// The preview of one document: PDF pages, a picture, text, a player, or for anything else its
// icon, name and size with "Open with…". The back button always stands in the bar.
SceneBase {
    id: root
    PreviewContent { id: content; screen: root.screen }

    Rectangle { anchors.fill: parent; color: Theme.background }

    Rectangle {
        id: bar
        width: parent.width; height: Theme.barHeight
        color: Theme.card
        z: 2
        OutletButton { objectName: "previewBack"; view: root.o("backButton"); x: 4; width: 44; height: 44 }
        Text {
            anchors.centerIn: parent
            width: parent.width - 120
            horizontalAlignment: Text.AlignHCenter
            text: content.name
            elide: Text.ElideMiddle
            color: Theme.text; font.pixelSize: 17; font.bold: true
        }
        Rectangle { anchors.bottom: parent.bottom; width: parent.width; height: 1; color: Theme.separator }
    }

    Item {
        id: stage
        anchors.top: bar.bottom; anchors.bottom: parent.bottom
        width: parent.width
        clip: true

        Loader {
            anchors.fill: parent
            sourceComponent: !content.exists ? missing
                           : content.kind === "pdf" ? pdf
                           : content.kind === "image" ? picture
                           : content.kind === "text" ? plainText
                           : content.kind === "audio" || content.kind === "video" ? media
                           : other
        }
    }

    Component {
        id: missing
        Text {
            text: content.notice
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter; verticalAlignment: Text.AlignVCenter
            padding: 32
            color: Theme.secondaryText; font.pixelSize: 16
        }
    }
    Component {
        id: pdf
        Item {
            // Pages one under another, each drawn by the program's image provider at the list's
            // width times the zoom; ctrl+wheel or a pinch zooms.
            ListView {
                id: pages
                objectName: "pdfView"
                anchors.fill: parent
                property real zoom: 1
                clip: true
                spacing: 12
                model: content.pageCount
                contentWidth: width * zoom
                flickableDirection: Flickable.HorizontalAndVerticalFlick
                delegate: Image {
                    required property int index
                    width: pages.width * pages.zoom
                    height: width * content.pageAspect
                    source: content.pagesSource + "/" + index
                    sourceSize.width: width * Screen.devicePixelRatio
                    asynchronous: true
                    cache: false
                }
                WheelHandler {
                    acceptedModifiers: Qt.ControlModifier
                    onWheel: (event) => pages.zoom = Math.max(1, Math.min(6, pages.zoom * (event.angleDelta.y > 0 ? 1.1 : 0.9)))
                }
            }
            Text {
                anchors.centerIn: parent
                visible: content.pageCount === 0
                text: "This PDF cannot be read."
                color: Theme.secondaryText; font.pixelSize: 16
            }
        }
    }
    Component {
        id: picture
        Flickable {
            id: flick
            contentWidth: Math.max(width, image.width * image.scale)
            contentHeight: Math.max(height, image.height * image.scale)
            Image {
                id: image
                width: flick.width; height: flick.height
                transformOrigin: Item.TopLeft
                source: content.url
                fillMode: Image.PreserveAspectFit
                asynchronous: true
            }
            PinchHandler { target: image; minimumScale: 1; maximumScale: 6 }
            WheelHandler {
                acceptedModifiers: Qt.ControlModifier
                onWheel: (event) => image.scale = Math.max(1, Math.min(6, image.scale * (event.angleDelta.y > 0 ? 1.1 : 0.9)))
            }
        }
    }
    Component {
        id: plainText
        Column {
            Text {
                width: parent.width
                visible: content.notice !== ""
                text: content.notice
                wrapMode: Text.Wrap
                padding: 10
                color: "#8a5a00"; font.pixelSize: 13
            }
            Flickable {
                width: parent.width
                height: parent.height - (content.notice !== "" ? 40 : 0)
                contentHeight: body.implicitHeight
                clip: true
                TextEdit {
                    id: body
                    width: parent.width
                    readOnly: true
                    selectByMouse: true
                    wrapMode: TextEdit.Wrap
                    textFormat: TextEdit.PlainText
                    padding: 12
                    text: content.text
                    font.family: "DejaVu Sans Mono"; font.pixelSize: 13
                    color: Theme.text
                }
            }
        }
    }
    Component {
        id: media
        Item {
            MediaPlayer {
                id: player
                source: content.url
                audioOutput: AudioOutput {}
                videoOutput: video
            }
            VideoOutput { id: video; anchors.fill: parent; anchors.bottomMargin: 64 }
            Image {
                anchors.centerIn: parent
                visible: content.kind === "audio"
                width: 120; height: 120
                source: "image://nimbrel/asset/icon_music1"
                sourceSize: Qt.size(240, 240)
            }
            Rectangle {
                anchors.bottom: parent.bottom
                width: parent.width; height: 64
                color: Theme.card
                Image {
                    anchors.centerIn: parent
                    width: 36; height: 36
                    source: "image://nimbrel/asset/" + (player.playbackState === MediaPlayer.PlayingState ? "pause" : "play")
                    sourceSize: Qt.size(72, 72)
                    TapHandler { onTapped: player.playbackState === MediaPlayer.PlayingState ? player.pause() : player.play() }
                }
            }
        }
    }
    Component {
        id: other
        Column {
            anchors.centerIn: parent
            spacing: 12
            Image {
                anchors.horizontalCenter: parent.horizontalCenter
                width: 96; height: 96
                source: "image://nimbrel/asset/" + content.icon
                sourceSize: Qt.size(192, 192)
            }
            Text { anchors.horizontalCenter: parent.horizontalCenter; text: content.name; color: Theme.text; font.pixelSize: 17; font.bold: true }
            Text { anchors.horizontalCenter: parent.horizontalCenter; text: content.sizeText; color: Theme.secondaryText; font.pixelSize: 14 }
            Rectangle {
                anchors.horizontalCenter: parent.horizontalCenter
                width: 180; height: 44; radius: 22
                color: Theme.accent
                Text { anchors.centerIn: parent; text: "Open with\u2026"; color: "white"; font.pixelSize: 16; font.bold: true }
                TapHandler { onTapped: content.openWith() }
            }
        }
    }
}
