import QtQuick
import Nimbrel.Shell

// The stack's navigation bar over a screen that uses it, under the status bar: the back button,
// the screen's title view (attributed text) and its right bar button. Each part shows what the
// platform says; the bar itself only while the stack does not hide it.
Item {
    id: root
    property var screen: null
    // Text and glyphs over a dark screen read light.
    property bool dark: false
    readonly property bool statusShown: screen !== null && !screen.statusBarHidden
    readonly property bool barShown: screen !== null && !screen.navigationBarHidden
    readonly property var titleView: screen ? screen.titleView : null
    readonly property var rightItem: screen ? screen.rightBarButton : null
    readonly property color ink: dark ? "white" : Theme.text
    width: parent ? parent.width : 0
    height: status.height + Theme.barHeight * barReveal
    property real barReveal: barShown ? 1 : 0
    Behavior on barReveal { NumberAnimation { duration: 300; easing.type: Easing.InOutQuad } }

    // The bar's material reaches under the status bar, as the platform's does.
    Rectangle {
        anchors.fill: parent
        visible: root.barReveal > 0
        opacity: root.barReveal
        color: root.dark ? "#e61c1c1e" : "#eef9f9fb"
        Rectangle { anchors.bottom: parent.bottom; width: parent.width; height: 1; color: root.dark ? "#33ffffff" : Theme.separator }
    }

    Item {
        id: status
        width: parent.width
        height: root.statusShown ? Theme.statusBarHeight : 0
        clip: true
        Behavior on height { NumberAnimation { duration: 300; easing.type: Easing.InOutQuad } }
        // The bar's contents slide up out of sight as it folds.
        Item {
            y: status.height - Theme.statusBarHeight
            width: parent.width
            height: Theme.statusBarHeight
            Text {
                objectName: "statusClock"
                x: 18; width: 80
                height: Theme.statusBarHeight
                verticalAlignment: Text.AlignVCenter
                text: AppBridge.clock
                color: root.ink
                font.pixelSize: 13; font.bold: true
            }
            // A battery, full.
            Rectangle {
                anchors.right: parent.right; anchors.rightMargin: 20
                y: (Theme.statusBarHeight - height) / 2
                width: 24; height: 12; radius: 3.5
                color: "transparent"
                border.color: root.ink; border.width: 1.2
                opacity: 0.9
                Rectangle { x: 2; y: 2; width: parent.width - 4; height: parent.height - 4; radius: 2; color: root.ink }
                Rectangle { x: parent.width + 1; y: 4; width: 2; height: 4; radius: 1; color: root.ink }
            }
        }
    }

    Item {
        id: bar
        objectName: "navigationBar"
        y: status.height
        width: parent.width
        height: Theme.barHeight
        visible: root.barReveal > 0
        opacity: root.barReveal

        Item {
            id: back
            objectName: "backButton"
            x: 4; width: backRow.width + 16; height: parent.height
            visible: root.screen !== null && root.screen.canGoBack
            Rectangle { anchors.fill: parent; anchors.margins: 4; radius: 8; color: Theme.accentSoft; visible: backArea.pressed }
            Row {
                id: backRow
                x: 4
                anchors.verticalCenter: parent.verticalCenter
                spacing: 2
                Image {
                    anchors.verticalCenter: parent.verticalCenter
                    width: 22; height: 22
                    source: "image://nimbrel/asset/nav_back"
                    sourceSize: Qt.size(44, 44)
                }
                Text {
                    anchors.verticalCenter: parent.verticalCenter
                    text: "Back"
                    color: root.dark ? "white" : Theme.accent
                    font.pixelSize: 17
                }
            }
            MouseArea { id: backArea; anchors.fill: parent; onClicked: root.screen.goBack() }
        }

        // The title view: its runs, line by line, at their sizes.
        Text {
            objectName: "titleView"
            anchors.centerIn: parent
            width: Math.max(0, parent.width - 2 * Math.max(back.width, 60) - 16)
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            visible: root.titleView !== null && !root.titleView.hidden
            textFormat: Text.RichText
            text: root.titleHtml(root.titleView ? root.titleView.state.runs : undefined,
                                 root.titleView ? root.titleView.text : "")
            color: root.ink
            elide: Text.ElideRight
            lineHeight: 0.95
        }

        Item {
            objectName: "rightBarButton"
            anchors.right: parent.right; anchors.rightMargin: 6
            width: 44; height: 44
            visible: root.rightItem !== null && root.rightItem.valid
            Rectangle { anchors.centerIn: parent; width: 38; height: 38; radius: 19; color: Theme.accentSoft; visible: rightArea.pressed }
            Image {
                anchors.centerIn: parent
                width: 24; height: 24
                source: root.rightItem ? root.rightItem.image : ""
                sourceSize: Qt.size(48, 48)
            }
            MouseArea { id: rightArea; anchors.fill: parent; onClicked: root.rightItem.press() }
        }
    }

    function escapeHtml(text) {
        return text.replace(/&/g, "&amp;").replace(/</g, "&lt;").replace(/>/g, "&gt;")
    }
    // Attributed runs as rich text: a run's line breaks start new lines, each run keeps its size,
    // weight and colour.
    function titleHtml(runs, plain) {
        if (!runs || runs.length === 0) return escapeHtml(plain || "")
        var html = ""
        for (var i = 0; i < runs.length; ++i) {
            var run = runs[i]
            var parts = run.text.split("\n")
            for (var j = 0; j < parts.length; ++j) {
                if (j > 0) html += "<br/>"
                if (parts[j] === "") continue
                html += "<span style=\"font-size:" + run.size + "px;" + (run.bold ? "font-weight:600;" : "")
                      + (root.dark ? "" : "color:" + run.color + ";") + "\">" + escapeHtml(parts[j]) + "</span>"
            }
        }
        return html
    }
}
