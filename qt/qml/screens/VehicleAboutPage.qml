import QtQuick
import Fleetor

// A vehicle's standing data, and above it what is due.
FocusScope {
    id: root

    required property ViewControllerItem screen
    readonly property LabelItem overdue: screen.outlet("overdueLabel") as LabelItem
    readonly property LabelItem due: screen.outlet("dueLabel") as LabelItem

    component Statement: Copyable {
        id: statement
        property color color: Theme.text

        width: parent.width
        height: words.height
        visible: text !== ""

        PlainText {
            id: words
            width: parent.width
            text: statement.text
            color: statement.color
            wrapMode: Text.Wrap
            font.weight: Font.DemiBold
        }
    }

    Rectangle {
        id: strip
        width: parent.width
        height: (root.overdue?.text ?? "") || (root.due?.text ?? "") ? Math.min(lines.height + 24, root.height / 2) : 0
        clip: true
        color: Theme.well

        Column {
            id: lines
            x: Theme.margin
            y: 12
            width: parent.width - 2 * x
            spacing: 6

            Statement {
                screen: root.screen
                text: root.overdue?.text ?? ""
                color: Theme.alert
            }
            Statement {
                screen: root.screen
                text: root.due?.text ?? ""
            }
        }
    }

    TablePage {
        anchors.top: strip.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        screen: root.screen
        focus: true
    }
}
