pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The list of vehicles. After a failed request: a text and a button below the list, or in place of an empty one.
FocusScope {
    id: root

    required property ViewControllerItem screen
    readonly property ButtonItem reload: screen.outlet("reloadButton") as ButtonItem
    readonly property LabelItem failure: screen.outlet("failureLabel") as LabelItem

    Shortcut {
        sequences: [StandardKey.Find]
        enabled: root.visible && root.enabled
        onActivated: (root.screen.outlet("findButton") as ButtonItem)?.tap()
    }

    TableList {
        id: list
        width: parent.width
        height: parent.height - (offer.visible ? offer.height : 0)
        table: root.screen.outlet("itemsTableView") as TableItem
        label: root.screen.accessibleName
        focus: true
    }

    Rectangle {
        id: offer
        visible: line.text !== ""
        width: parent.width
        height: content.height + 16
        y: list.count === 0 ? (parent.height - height) / 2 : parent.height - height
        color: list.count === 0 ? "transparent" : Theme.raised

        Rectangle {
            visible: list.count > 0
            width: parent.width
            height: 1
            color: Theme.separator
        }
        // Side by side while there is room.
        Grid {
            id: content
            anchors.centerIn: parent
            columns: list.count > 0 && line.implicitWidth + again.implicitWidth < offer.width ? 2 : 1
            horizontalItemAlignment: Grid.AlignHCenter
            verticalItemAlignment: Grid.AlignVCenter
            PlainText {
                id: line
                width: Math.min(implicitWidth, offer.width - 2 * Theme.margin)
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                text: root.failure?.text ?? ""
                color: Theme.secondaryText
                Accessible.ignored: false
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            TextButton {
                id: again
                width: Math.min(implicitWidth, offer.width)
                label: root.reload?.title ?? ""
                onTapped: root.reload.tap()
            }
        }
    }
}
