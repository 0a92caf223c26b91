import QtQuick
import Nimbrel.Shell
import "Figures.js" as Figures

// The program's own overlay: the card where the platform placed it, and its figure drawn on a
// canvas from the figure's name; the clock of the drawing runs here, the choice is the program's.
Item {
    id: root
    anchors.fill: parent
    readonly property var o: AppBridge.overlay
    readonly property bool shown: o.shown === true
    visible: shown

    MouseArea { anchors.fill: parent; enabled: root.shown && root.o.blocks === true }
    Rectangle { anchors.fill: parent; color: root.shown ? root.o.backdrop : "transparent" }

    Rectangle {
        id: card
        objectName: "overlayCard"
        readonly property rect r: root.shown ? root.o.card : Qt.rect(0, 0, 0, 0)
        x: r.x; y: r.y; width: r.width; height: r.height
        radius: 10
        color: root.shown ? root.o.cardColor : "transparent"
        opacity: root.shown ? root.o.cardAlpha : 0
        scale: root.shown ? root.o.cardScale : 1
        Behavior on scale { NumberAnimation { duration: 150 } }
        Behavior on opacity { NumberAnimation { duration: 150 } }

        Canvas {
            id: figure
            objectName: "overlayFigure"
            readonly property rect c: root.o.content !== undefined ? root.o.content : Qt.rect(0, 0, 0, 0)
            x: c.x; y: c.y; width: c.width; height: c.height
            property real t: 0
            property string name: root.o.figure !== undefined ? root.o.figure : ""
            property string kind: root.o.figureKind !== undefined ? root.o.figureKind : ""
            property color tint: root.o.color !== undefined ? root.o.color : "gray"
            onTChanged: requestPaint()
            onNameChanged: requestPaint()
            NumberAnimation on t {
                running: root.shown && figure.kind === "animation"
                from: 0; to: 1; loops: Animation.Infinite
                duration: Math.max(1000 * (root.o.duration || 1), 100)
            }
            NumberAnimation on t {
                id: strokeOnce
                running: root.shown && figure.kind === "icon"
                from: 0; to: 1; duration: 500
            }
            onPaint: Figures.paint(getContext("2d"), kind, name, width, height, t, tint,
                                   root.o.progress !== undefined ? root.o.progress : 0)
        }
        Text {
            objectName: "overlayStatus"
            visible: root.o.status !== undefined
            text: visible ? root.o.status : ""
            color: root.o.statusColor !== undefined ? root.o.statusColor : "black"
            font.pixelSize: 24; font.bold: true
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            width: Math.min(250, card.width - 20)
            anchors.horizontalCenter: parent.horizontalCenter
            y: figure.y + figure.height + 10
        }
    }
}
