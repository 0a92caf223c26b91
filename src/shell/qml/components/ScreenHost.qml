import QtQuick
import Nimbrel.Shell

// One screen on the stage: its scene, and how it comes and goes (a push slides in from the side,
// a full-screen modal rises from the bottom, an over-full-screen modal rises over a dimmed screen,
// an over-context one fades in).
Item {
    id: root
    required property var screen
    required property int index
    readonly property bool modal: screen.presentation === "modal"
    readonly property bool leaving: screen.leaving
    readonly property bool animatedIn: index > 0
    property real progress: animatedIn ? 0 : 1     // 0 off stage, 1 in place
    width: parent ? parent.width : 0
    height: parent ? parent.height : 0
    enabled: !leaving
    z: index

    readonly property string scenesDir: "../scenes/"
    // Scene files by screen; the live photo and video viewers are variants of the photo viewer's,
    // and the music browser is the same browse frame as the photo and video one.
    readonly property var sceneFiles: ({
        "SplashVC": "SplashVC.qml", "HomeViewController": "HomeViewController.qml", "ImagesVC": "ImagesVC.qml",
        "StorageAnalysisVC": "StorageAnalysisVC.qml", "SettingVC": "SettingVC.qml",
        "PreviewViewController": "PreviewViewController.qml",
        "LivePreviewViewController": "PreviewViewController.qml",
        "VideoPreviewViewController": "PreviewViewController.qml",
        "AVPlayerViewController": "AVPlayerViewController.qml",
        "InfoVC": "InfoVC.qml", "PhotosInfoVC": "PhotosInfoVC.qml",
        "AudioVC": "ImagesVC.qml", "MusicPlayerVC": "MusicPlayerVC.qml",
        "DocumentsVC": "DocumentsVC.qml", "QLPreviewController": "QLPreviewController.qml",
        "RecentFilesVC": "ImagesVC.qml", "FavouriteFilesVC": "ImagesVC.qml"
    })

    Rectangle {   // the dim behind a modal screen
        anchors.fill: parent
        visible: root.modal && root.screen.modalStyle === 5
        color: "black"
        opacity: 0.25 * root.progress
    }
    Item {
        id: sheet
        width: root.width; height: root.height
        x: !root.modal ? root.width * (1 - root.progress) : 0
        y: root.modal && root.screen.modalStyle !== 6 ? root.height * (1 - root.progress) : 0
        opacity: root.modal && root.screen.modalStyle === 6 ? root.progress : 1
        Rectangle {   // the edge shadow of a pushed screen
            visible: !root.modal && root.progress < 1
            width: 18; height: parent.height; x: -18
            gradient: Gradient {
                orientation: Gradient.Horizontal
                GradientStop { position: 0; color: "#00000000" }
                GradientStop { position: 1; color: "#22000000" }
            }
        }
        Loader {
            id: scene
            anchors.fill: parent
            source: root.scenesDir + (root.sceneFiles[root.screen.screenId] || "GenericScene.qml")
        }
        Binding { target: scene.item; property: "screen"; value: root.screen; when: scene.status === Loader.Ready }
    }
    NumberAnimation {
        id: enter
        target: root; property: "progress"; to: 1
        duration: root.modal ? 380 : 320
        easing.type: Easing.OutCubic
    }
    NumberAnimation {
        id: exit
        target: root; property: "progress"; to: 0
        duration: 300
        easing.type: Easing.InCubic
    }
    Component.onCompleted: if (animatedIn) enter.start()
    onLeavingChanged: if (leaving) { enter.stop(); exit.start() }
}
