pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The fleet at a glance: a map, and the vehicles' cards beside it, or below it where the screen is high.
FocusScope {
    id: root

    required property ViewControllerItem screen
    readonly property bool beside: width > height || width >= 600
    readonly property bool shared: list.count > 0 // the map has the screen not for itself
    readonly property real side: Math.round(Math.min(root.width / 2, 300 * Math.min(Theme.scale, 1.25), Math.max(280, root.width * 0.42)))
    readonly property real below: Math.round(Math.min(list.count * 88 * Theme.scale, root.height * (Theme.large ? 0.5 : 0.46)))

    MapPage {
        id: page
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.rightMargin: root.shared && root.beside ? root.side : 0
        height: root.shared && !root.beside ? parent.height - root.below : parent.height - (!root.shared && offer.visible ? offer.height : 0)
        screen: root.screen
        card: root.screen.outlet("openVehicleButton") as ButtonItem
        focus: true
    }

    Rectangle {
        anchors.fill: cards
        visible: root.shared
        color: Theme.background
    }
    Item {
        id: cards
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        width: root.beside ? root.side : parent.width
        height: root.beside ? parent.height : root.below
        enabled: root.shared // until then the map is alone

        TableList {
            id: list
            width: parent.width
            height: Math.max(0, parent.height - (offer.visible ? offer.height : 0))
            table: root.screen.outlet("boardTableView") as TableItem
            label: root.screen.title
        }
        Rectangle {
            visible: root.shared
            width: root.beside ? 1 : parent.width
            height: root.beside ? parent.height : 1
            color: Theme.separator
        }
    }

    ListOffer {
        id: offer
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        width: root.shared ? cards.width : parent.width
        line: root.screen.outlet("failureLabel") as LabelItem
        button: root.screen.outlet("reloadButton") as ButtonItem
    }

    Voice {
        words: (root.screen.outlet("newsLabel") as LabelItem)?.text ?? ""
        heard: root.visible
    }
}
