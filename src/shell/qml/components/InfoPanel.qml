import QtQuick
import Nimbrel.Shell

// A panel's card over the dimmed screen: its title, its caption and value lines where the scene
// placed them, and Done; a touch beside the card is the way out. When the screen's view records
// its "pulse" animation, the view springs in from that scale.
SceneBase {
    id: root
    // The value labels' outlet names, each with its "<name>Caption" beside it.
    property var lines: []
    readonly property var rootView: screen ? screen.rootView : null
    readonly property var card: o("popUpView")
    readonly property var cardFrame: card && card.valid ? card.state.frame : undefined
    readonly property var pulse: {
        var records = rootView ? rootView.state.layerAnimations : undefined
        if (!records) return null
        for (var i = 0; i < records.length; ++i) if (records[i].key === "pulse") return records[i]
        return null
    }
    property bool pulsed: false
    onPulseChanged: {
        if (!pulse || pulsed) return
        pulsed = true
        spring.from = pulse.from
        spring.to = pulse.to
        spring.duration = pulse.duration * 1000
        spring.restart()
    }

    Item {
        id: stage
        objectName: "panelStage"
        anchors.fill: parent
        transformOrigin: Item.Center
        NumberAnimation {
            id: spring
            target: stage; property: "scale"
            easing.type: Easing.OutBack; easing.overshoot: 2.2
        }

        Rectangle {
            anchors.fill: parent
            color: root.rootView && root.rootView.state.background ? root.rootView.state.background : "#66000000"
        }
        MouseArea { anchors.fill: parent; onClicked: root.o("btnExit").press() }

        Rectangle {
            id: cardItem
            objectName: "panelCard"
            width: root.cardFrame ? root.cardFrame.width : 0
            height: root.cardFrame ? root.cardFrame.height : 0
            anchors.centerIn: parent
            visible: root.card !== null && root.card.valid && !root.card.hidden
            radius: root.card ? root.card.state.cornerRadius || 0 : 0
            color: root.card && root.card.state.background ? root.card.state.background : Theme.card
            MouseArea { anchors.fill: parent }   // a touch on the card stays on it

            Text {
                readonly property var view: root.o("lblTitle")
                readonly property var f: view && view.valid ? view.state.frame : ({ "x": 16, "y": 12, "width": 0, "height": 24 })
                x: f.x; y: f.y; width: f.width; height: f.height
                verticalAlignment: Text.AlignVCenter
                text: view ? view.text : ""
                font.pixelSize: view ? view.fontSize : 18; font.bold: view ? view.bold : true
                color: view ? view.textColor : Theme.text
            }

            Repeater {
                model: root.lines
                Item {
                    id: line
                    required property string modelData
                    readonly property var caption: root.o(modelData + "Caption")
                    readonly property var value: root.o(modelData)
                    readonly property var cf: caption && caption.valid ? caption.state.frame : undefined
                    readonly property var vf: value && value.valid ? value.state.frame : undefined
                    anchors.fill: parent
                    Text {
                        visible: line.cf !== undefined && !line.caption.hidden
                        x: line.cf ? line.cf.x : 0; y: line.cf ? line.cf.y : 0
                        width: line.cf ? line.cf.width : 0
                        height: line.cf ? line.cf.height : 0
                        verticalAlignment: Text.AlignTop
                        text: line.caption ? line.caption.text : ""
                        color: line.caption ? line.caption.textColor : Theme.secondaryText
                        font.pixelSize: 14
                        elide: Text.ElideRight
                    }
                    Text {
                        objectName: "value_" + line.modelData
                        readonly property int maxLines: line.value && line.value.state.lines > 0 ? line.value.state.lines : 1
                        visible: line.vf !== undefined && !line.value.hidden
                        x: line.vf ? line.vf.x : 0; y: line.vf ? line.vf.y : 0
                        width: line.vf ? line.vf.width : 0
                        text: line.value ? line.value.text : ""
                        color: line.value ? line.value.textColor : Theme.text
                        font.pixelSize: 14
                        wrapMode: maxLines > 1 ? Text.WrapAnywhere : Text.NoWrap
                        maximumLineCount: maxLines
                        elide: maxLines > 1 ? Text.ElideRight : Text.ElideMiddle
                    }
                }
            }

            Item {
                readonly property var view: root.o("btnDone")
                readonly property var f: view && view.valid ? view.state.frame : ({ "x": 0, "y": 0, "width": 0, "height": 0 })
                objectName: "panelDone"
                x: f.x; y: f.y; width: f.width; height: f.height
                visible: view !== null && view.valid && !view.hidden
                Rectangle { anchors.fill: parent; radius: 10; color: Theme.accentSoft; visible: doneArea.pressed }
                Text {
                    anchors.centerIn: parent
                    text: parent.view ? parent.view.title : ""
                    color: Theme.accent
                    font.pixelSize: 17; font.bold: true
                }
                MouseArea { id: doneArea; anchors.fill: parent; onClicked: parent.view.press() }
            }
        }
    }
}
