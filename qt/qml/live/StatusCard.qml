pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// On the live map: the speed, where the vehicle heads, whether it drives or stands and since when, and how old that is.
Rectangle {
    id: root

    required property ViewControllerItem screen
    property real widest
    readonly property ImageViewItem mark: screen.outlet("ageImageView") as ImageViewItem
    readonly property LabelItem motion: screen.outlet("motionLabel") as LabelItem
    readonly property LabelItem since: screen.outlet("motionSinceLabel") as LabelItem
    readonly property LabelItem noReport: screen.outlet("noReportLabel") as LabelItem

    width: content.width + 24
    height: content.height + 16
    radius: 12
    color: Theme.raised
    border.width: 1
    border.color: Theme.mapShade
    visible: age.words !== ""

    Copyable {
        anchors.fill: parent
        screen: root.screen
        text: [doing.text, speed.words, `${root.mark?.accessibleName ?? ""}: ${age.words}`, silence.text].filter(Boolean).join(", ")
    }
    StatusVoice {
        screen: root.screen
        heard: root.visible
    }

    Column {
        id: content
        anchors.centerIn: parent
        spacing: 2

        SpeedLine {
            id: speed
            screen: root.screen
            size: Math.round(22 * Math.min(Theme.scale, 1.5))
        }
        PlainText {
            id: doing
            width: Math.min(implicitWidth, root.widest - 24)
            visible: text !== ""
            text: [root.motion?.text ?? "", root.since?.text ?? ""].filter(Boolean).join(" ")
            font.pixelSize: Theme.smallSize
            wrapMode: Text.Wrap
        }
        AgeMark {
            id: age
            mark: root.mark
            age: root.screen.outlet("ageLabel") as LabelItem
        }
        PlainText {
            id: silence
            width: Math.min(implicitWidth, root.widest - 24)
            visible: text !== ""
            text: age.words === "" ? "" : root.noReport?.text ?? ""
            color: Theme.secondaryText
            font.pixelSize: Theme.smallSize
            wrapMode: Text.Wrap
        }
    }
}
