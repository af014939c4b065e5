pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The list of vehicles. After a failed request: a text and a button below the list, or in place of an empty one.
FocusScope {
    id: root

    required property ViewControllerItem screen

    Shortcut {
        sequences: ["Ctrl+F"]
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

    ListOffer {
        id: offer
        width: parent.width
        alone: list.count === 0
        y: alone ? (parent.height - height) / 2 : parent.height - height
        line: root.screen.outlet("failureLabel") as LabelItem
        button: root.screen.outlet("reloadButton") as ButtonItem
    }
}
