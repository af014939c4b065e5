pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// Below the map: the trip that was opened from its card, and the ways back to the card and to the whole day.
FocusScope {
    id: root

    required property ViewControllerItem screen
    readonly property string trip: text("tripLabel")
    readonly property string way: text("tripWayLabel")
    readonly property string note: text("tripNoteLabel")

    function text(name) {
        return (screen.outlet(name) as LabelItem)?.text ?? "";
    }

    height: column.height + 12
    visible: trip !== ""

    Rectangle {
        anchors.fill: parent
        color: Theme.raised
    }
    Rectangle {
        width: parent.width
        height: 1
        color: Theme.separator
    }

    Column {
        id: column
        anchors.horizontalCenter: parent.horizontalCenter
        y: 10
        width: Math.min(parent.width, 560) - 2 * Theme.margin

        Repeater {
            model: [root.trip, root.way, root.note]
            delegate: PlainText {
                required property int index
                required property string modelData

                width: parent.width
                visible: text !== ""
                text: modelData
                wrapMode: Text.Wrap
                maximumLineCount: 3
                color: index === 0 ? Theme.text : Theme.secondaryText
                font.pixelSize: index === 0 ? Theme.bodySize : Theme.smallSize
                font.bold: index === 0
                Accessible.ignored: false
                Accessible.role: index === 2 ? Accessible.AlertMessage : Accessible.StaticText
                Accessible.name: text
            }
        }
        Row {
            anchors.left: parent.left
            anchors.leftMargin: -12 // the words, not the buttons, stand below each other

            DayButton {
                button: root.screen.outlet("tripBackButton") as ButtonItem
                width: Math.min(implicitWidth, column.width / 2)
            }
            DayButton {
                button: root.screen.outlet("tripCloseButton") as ButtonItem
                width: Math.min(implicitWidth, column.width / 2)
            }
        }
    }
}
