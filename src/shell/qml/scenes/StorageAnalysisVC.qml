import QtQuick
import Nimbrel.Shell

// How the volume is divided: the storage line, the ring chart with the used share in its middle,
// and one row per sector with its figure.
ModalScene {
    id: root
    readonly property var storage: o("lblInternalStorage")
    readonly property var chart: o("pieChartView")
    readonly property var value: o("valueLabel")
    readonly property var rows: ["lblVideo", "lblImages", "lblAudio", "lblOther", "lblFreeSpace"]
    readonly property var colors: chart && chart.state.sectorColors ? chart.state.sectorColors : []

    Text {
        x: Theme.pad
        width: parent.width - 2 * Theme.pad
        visible: root.storage && !root.storage.hidden
        text: root.storage ? root.storage.text : ""
        color: root.storage ? root.storage.textColor : Theme.text
        font.pixelSize: 15
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.WordWrap
    }
    Item {
        width: parent.width
        height: ring.height + 12
        RingChart {
            id: ring
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(parent.width - 96, 280)
            height: width
            chart: root.chart ? root.chart.state : ({})
            visible: root.chart && !root.chart.hidden
            Text {
                anchors.centerIn: parent
                width: parent.width * 0.6
                horizontalAlignment: Text.AlignHCenter
                text: root.value ? root.value.text : ""
                visible: root.value && !root.value.hidden
                color: root.value ? root.value.textColor : Theme.text
                font.pixelSize: 24; font.bold: true
                wrapMode: Text.WordWrap
            }
        }
    }
    Rectangle {
        x: Theme.pad
        width: parent.width - 2 * Theme.pad
        height: legend.implicitHeight + 8
        radius: Theme.radius
        color: Theme.card
        Column {
            id: legend
            width: parent.width
            topPadding: 4
            Repeater {
                model: root.rows
                Item {
                    id: row
                    required property string modelData
                    required property int index
                    readonly property var caption: root.o(modelData + "Caption")
                    readonly property var figure: root.o(modelData)
                    width: legend.width; height: 48
                    Rectangle { visible: row.index > 0; x: 44; width: parent.width - 44; height: 1; color: Theme.separator }
                    Rectangle {
                        x: 18; anchors.verticalCenter: parent.verticalCenter
                        width: 14; height: 14; radius: 7
                        color: row.index < root.colors.length ? root.colors[row.index] : "#c1c1c1"
                    }
                    Text {
                        x: 44; anchors.verticalCenter: parent.verticalCenter
                        text: row.caption ? row.caption.text : ""
                        font.pixelSize: 16; color: Theme.text
                    }
                    Text {
                        anchors.right: parent.right; anchors.rightMargin: 16
                        anchors.verticalCenter: parent.verticalCenter
                        text: row.figure ? row.figure.text : ""
                        font.pixelSize: 16; font.bold: true
                        color: row.figure ? row.figure.textColor : Theme.text
                    }
                }
            }
        }
    }
}
