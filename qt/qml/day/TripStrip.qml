pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// Below the map: the trip that was opened from its card, and the ways back to the card and to the whole day.
FocusScope {
    id: root

    required property ViewControllerItem screen
    property bool low: false // there is little room for the map
    readonly property bool single: low && width >= 480
    readonly property string words: text("tripLabel")
    readonly property string way: text("tripWayLabel")
    readonly property string note: text("tripNoteLabel")

    function lined(separator) {
        return words + (way ? separator + way : "") + (note ? separator + note : "");
    }

    function text(name) {
        return (screen.outlet(name) as LabelItem)?.text ?? "";
    }

    height: column.y + column.height + (single ? 0 : 2)
    visible: words !== ""

    Rectangle {
        anchors.fill: parent
        color: Theme.raised
    }
    Rectangle {
        width: parent.width
        height: 1
        color: Theme.separator
    }

    Grid {
        id: column
        anchors.horizontalCenter: parent.horizontalCenter
        y: root.single ? 1 : 10
        width: Math.min(parent.width, 560) - 2 * Theme.margin
        columns: root.single ? 2 : 1
        verticalItemAlignment: Grid.AlignVCenter

        Copyable {
            width: root.single ? column.width - buttons.width : column.width
            height: lines.height
            screen: root.screen
            text: root.lined("\n")
            role: Accessible.Grouping

            Column {
                id: lines
                width: parent.width

                Repeater {
                    model: [root.words, root.way, root.note]
                    delegate: PlainText {
                        required property int index
                        required property string modelData

                        width: parent.width
                        visible: text !== "" && !(root.low && index === 1)
                        text: modelData
                        wrapMode: Text.Wrap
                        maximumLineCount: root.single ? 2 : 3
                        color: index === 0 ? Theme.text : Theme.secondaryText
                        font.pixelSize: index === 0 ? Theme.bodySize : Theme.smallSize
                        font.bold: index === 0
                        Accessible.ignored: false
                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                    }
                }
            }
        }
        Item {
            id: buttons
            readonly property real room: root.single ? column.width * 2 / 3 : column.width + 24
            readonly property real share: Math.min(1, room / (back.implicitWidth + close.implicitWidth))
            width: root.single ? row.width - 12 : column.width
            height: row.height

            Row {
                id: row
                anchors.left: parent.left
                anchors.leftMargin: root.single ? 0 : -12 // the words, not the buttons, stand below each other

                DayButton {
                    id: back
                    button: root.screen.outlet("tripBackButton") as ButtonItem
                    width: implicitWidth * buttons.share
                }
                DayButton {
                    id: close
                    button: root.screen.outlet("tripCloseButton") as ButtonItem
                    width: implicitWidth * buttons.share
                }
            }
        }
    }

    Voice {
        words: root.lined(", ")
        topic: root.visible ? words : ""
    }
}
