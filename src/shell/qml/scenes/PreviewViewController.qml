import QtQuick
import Nimbrel.Shell

// The photo viewer and its live photo and video variants: the still in the scroll view at the
// platform's zoom, offset and insets; the live photo with its badge; the player over the still;
// the navigation bar and the status bar as the screen asks. A click is a tap for the single-tap
// recogniser, a double click one for the double-tap recogniser, a pinch or ctrl+wheel zooms, a
// drag or the wheel pans a zoomed picture.
SceneBase {
    id: root
    readonly property var rootView: screen ? screen.rootView : null
    readonly property var scroll: o("scrollView")
    readonly property var still: o("imageView")
    readonly property var live: o("livePhotoView")
    readonly property var badge: o("badgeView")
    readonly property var playerView: o("playerView")
    readonly property var singleTap: o("singleTapRecognizer")
    readonly property var doubleTap: o("doubleTapRecognizer")
    readonly property var player: playerView && playerView.valid ? playerView.player : null

    readonly property var scrollState: scroll && scroll.valid ? scroll.state : ({})
    readonly property real zoomScale: scrollState.zoomScale || 1
    readonly property bool zoomable: scroll !== null && scroll.valid && scrollState.interactive !== false
    // A pinch, a drag or the wheel: the picture follows the hand with no easing.
    property bool following: false
    readonly property int ease: following ? 0 : 260

    function frameOf(view) {
        var f = view && view.valid ? view.state.frame : undefined
        return f ? f : { "x": 0, "y": 0, "width": root.width, "height": root.height }
    }

    // The screen's views take the size the window gives them (a zoomed picture keeps its own).
    function layoutViews() {
        if (!screen || width <= 0 || height <= 0) return
        if (rootView) rootView.setViewSize(width, height)
        if (scroll && scroll.valid) scroll.setViewSize(width, height)
        if (zoomScale === 1) {
            if (still && still.valid) still.setViewSize(width, height)
            if (live && live.valid) live.setViewSize(width, height)
        }
        if (playerView && playerView.valid) playerView.setViewSize(width, height)
        screen.didLayOut()
    }
    // Once the bindings have settled: the outlets come after the screen, and a view that the
    // platform made before its parent had a size (the live photo's) waits for this.
    onWidthChanged: Qt.callLater(layoutViews)
    onHeightChanged: Qt.callLater(layoutViews)
    onScreenChanged: Qt.callLater(layoutViews)
    onRootViewChanged: Qt.callLater(layoutViews)
    onScrollChanged: Qt.callLater(layoutViews)
    onStillChanged: Qt.callLater(layoutViews)
    onLiveChanged: Qt.callLater(layoutViews)
    onPlayerViewChanged: Qt.callLater(layoutViews)

    Rectangle {
        objectName: "viewerBackground"
        anchors.fill: parent
        color: root.rootView && root.rootView.state.background ? root.rootView.state.background : "white"
        Behavior on color { ColorAnimation { duration: 300 } }
    }

    // The scroll view: its content moved by the offset it shows.
    Item {
        id: viewport
        readonly property var frame: root.frameOf(root.scroll)
        x: frame.x; y: frame.y; width: frame.width; height: frame.height
        clip: true
        visible: root.scroll !== null && root.scroll.valid && !root.scroll.hidden

        Item {
            id: content
            x: -(root.scrollState.shownX || 0)
            y: -(root.scrollState.shownY || 0)
            Behavior on x { NumberAnimation { duration: root.ease; easing.type: Easing.OutCubic } }
            Behavior on y { NumberAnimation { duration: root.ease; easing.type: Easing.OutCubic } }

            Image {
                id: stillImage
                objectName: "still"
                readonly property var frame: root.frameOf(root.still)
                x: frame.x; y: frame.y; width: frame.width; height: frame.height
                Behavior on width { NumberAnimation { duration: root.ease; easing.type: Easing.OutCubic } }
                Behavior on height { NumberAnimation { duration: root.ease; easing.type: Easing.OutCubic } }
                visible: root.still !== null && root.still.valid && !root.still.hidden
                source: root.still ? root.still.image : ""
                fillMode: Image.PreserveAspectFit
                sourceSize: Qt.size(Math.min(2400, Math.max(root.width, root.height) * 2), 0)
                smooth: true
            }

            Item {
                id: livePhoto
                objectName: "livePhoto"
                readonly property var frame: root.frameOf(root.live)
                x: frame.x; y: frame.y; width: frame.width; height: frame.height
                Behavior on width { NumberAnimation { duration: root.ease; easing.type: Easing.OutCubic } }
                Behavior on height { NumberAnimation { duration: root.ease; easing.type: Easing.OutCubic } }
                visible: root.live !== null && root.live.valid && !root.live.hidden
                Image {
                    anchors.fill: parent
                    source: root.live && root.live.valid ? root.live.image : ""
                    fillMode: Image.PreserveAspectFit
                    sourceSize: Qt.size(Math.min(2400, Math.max(root.width, root.height) * 2), 0)
                    smooth: true
                }
                Image {
                    objectName: "liveBadge"
                    readonly property var frame: root.frameOf(root.badge)
                    x: frame.x; y: frame.y
                    width: frame.width; height: frame.height
                    visible: root.badge !== null && root.badge.valid && !root.badge.hidden
                    source: root.badge ? root.badge.image : ""
                    sourceSize: Qt.size(52, 52)
                    opacity: root.badge ? root.badge.alpha : 0
                    Behavior on opacity { NumberAnimation { duration: 300 } }
                }
            }
        }
    }

    // The player over the still: the file's picture where the platform has one; elsewhere the
    // still stands in for it, with the player's time.
    Item {
        id: playerLayer
        objectName: "playerLayer"
        readonly property var frame: root.frameOf(root.playerView)
        x: frame.x; y: frame.y; width: frame.width; height: frame.height
        visible: root.playerView !== null && root.playerView.valid && !root.playerView.hidden
        Image {
            anchors.fill: parent
            visible: !media.showing
            source: root.still ? root.still.image : ""
            fillMode: Image.PreserveAspectFit
            sourceSize: Qt.size(Math.min(2400, Math.max(root.width, root.height) * 2), 0)
        }
        MediaPicture {
            id: media
            anchors.fill: parent
            player: root.player
        }
        Rectangle {
            objectName: "playbackBadge"
            visible: root.player !== null && !media.showing
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: parent.bottom; anchors.bottomMargin: 36
            width: Math.min(badgeText.implicitWidth + 28, parent.width - 32); height: 30; radius: 15
            color: "#b31c1c1e"
            Text {
                id: badgeText
                anchors.centerIn: parent
                width: Math.min(implicitWidth, parent.width - 28)
                elide: Text.ElideRight
                color: "white"
                font.pixelSize: 13
                text: !root.player ? "" : (root.player.playing ? "Playing" : "Paused") + "  "
                      + root.player.formatTime(root.player.position) + " / "
                      + (root.player.duration >= 0 ? root.player.formatTime(root.player.duration) : "--:--")
                      + "  ·  no picture on this platform"
            }
        }
    }

    // Touches on the screen's view.
    PinchArea {
        id: pinch
        anchors.fill: parent
        enabled: root.zoomable
        property real startScale: 1
        onPinchStarted: { root.following = true; startScale = root.zoomScale }
        onPinchUpdated: (p) => root.scroll.zoomAt(startScale * p.scale, p.center.x - viewport.x, p.center.y - viewport.y)
        onPinchFinished: root.following = false

        MouseArea {
            id: touches
            objectName: "viewerTouches"
            anchors.fill: parent
            property point pressedAt
            property point offsetAt
            property bool dragged: false
            onPressed: (m) => {
                pressedAt = Qt.point(m.x, m.y)
                offsetAt = Qt.point(root.scrollState.shownX || 0, root.scrollState.shownY || 0)
                dragged = false
            }
            onPositionChanged: (m) => {
                var dx = m.x - pressedAt.x, dy = m.y - pressedAt.y
                if (!dragged && Math.abs(dx) + Math.abs(dy) < 8) return
                dragged = true
                if (!root.zoomable || root.zoomScale <= 1) return
                root.following = true
                root.scroll.scrollTo(offsetAt.x - dx, offsetAt.y - dy)
            }
            onReleased: root.following = false
            onCanceled: root.following = false
            onClicked: (m) => { if (!dragged && root.singleTap) root.singleTap.recognize(m.x, m.y) }
            onDoubleClicked: (m) => { if (root.doubleTap) root.doubleTap.recognize(m.x, m.y) }
            onWheel: (w) => {
                if (!root.zoomable) { w.accepted = false; return }
                if (w.modifiers & Qt.ControlModifier) {
                    root.following = true
                    root.scroll.zoomAt(root.zoomScale * Math.pow(1.0016, w.angleDelta.y),
                                       w.x - viewport.x, w.y - viewport.y)
                    root.following = false
                } else if (root.zoomScale > 1) {
                    var step = w.pixelDelta.y !== 0 || w.pixelDelta.x !== 0 ? w.pixelDelta : Qt.point(w.angleDelta.x / 2, w.angleDelta.y / 2)
                    root.following = true
                    root.scroll.scrollTo((root.scrollState.shownX || 0) - step.x, (root.scrollState.shownY || 0) - step.y)
                    root.following = false
                } else {
                    w.accepted = false
                }
            }
        }
    }

    NavigationBar {
        id: bar
        objectName: "viewerBar"
        screen: root.screen
        dark: root.rootView !== null && root.rootView.state.background !== undefined
              && Qt.colorEqual(root.rootView.state.background, "black")
    }
}
