pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// Above the readings: the speed, where the vehicle heads, whether it drives or stands, and since when.
Rectangle {
    id: root

    required property ViewControllerItem screen
    property bool low: false // there is little room
    readonly property LabelItem motion: screen.outlet("motionLabel") as LabelItem
    readonly property LabelItem since: screen.outlet("motionSinceLabel") as LabelItem
    readonly property LabelItem noReport: screen.outlet("noReportLabel") as LabelItem

    visible: lead.words !== "" || silence.text !== ""
    height: visible ? flow.height + (low ? 8 : 20) : 0
    color: Theme.well

    Copyable {
        anchors.fill: parent
        anchors.margins: 5
        screen: root.screen
        text: [root.motion?.text, root.since?.text, lead.words, silence.text].filter(Boolean).join(", ")
    }
    StatusVoice {
        screen: root.screen
        heard: root.visible
    }

    Flow {
        id: flow
        x: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width - 2 * Theme.margin
        spacing: root.low ? 2 : 6

        SpeedLine {
            id: lead
            screen: root.screen
            size: Math.round((root.low ? 22 : 34) * Math.min(Theme.scale, 1.5))
            leftPadding: Theme.mirrored ? 20 : 0
            rightPadding: Theme.mirrored ? 0 : 20
        }
        Item {
            visible: lead.words !== "" && motionText.text !== ""
            width: Math.min(flow.width, Math.max(motionText.implicitWidth, sinceText.implicitWidth))
            height: Math.max(lead.height, words.height)

            Column {
                id: words
                anchors.verticalCenter: parent.verticalCenter
                width: parent.width

                PlainText {
                    id: motionText
                    text: root.motion?.text ?? ""
                    font.weight: Font.DemiBold
                }
                PlainText {
                    id: sinceText
                    width: parent.width
                    visible: text !== ""
                    text: root.since?.text ?? ""
                    color: Theme.secondaryText
                    font.pixelSize: Theme.smallSize
                    wrapMode: Text.Wrap
                }
            }
        }
        PlainText {
            id: silence
            width: flow.width
            visible: text !== ""
            text: root.noReport?.text ?? ""
            color: Theme.secondaryText
            font.pixelSize: Theme.smallSize
            wrapMode: Text.Wrap
        }
    }

    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.separator
    }
}
