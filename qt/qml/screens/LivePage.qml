pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The live map, with the button that lets it follow the vehicle and a card about the latest record.
FocusScope {
    id: root

    required property ViewControllerItem screen
    readonly property real aside: Theme.sideways && Theme.large ? follow.width + 4 : 0 // there is no room for the card below the button

    MapButton {
        id: follow
        anchors.left: parent.left
        anchors.leftMargin: page.space
        y: page.space
        z: 1
        visible: !page.covered
        button: root.screen.outlet("followButton") as ButtonItem
        checked: button?.selected ?? false
        Accessible.checkable: true
    }

    MapPage {
        id: page
        anchors.fill: parent
        screen: root.screen
        markersGrow: true
        lowestCallout: card.visible ? card.y : lowest
        leadStrip: follow.visible ? space + follow.width : 0
        focus: true
    }

    StatusCard {
        id: card
        anchors.left: parent.left
        anchors.leftMargin: page.space + root.aside
        y: page.lowest - height - page.space
        screen: root.screen
        widest: parent.width - 2 * page.space - root.aside - (page.roomy || root.aside > 0 ? page.buttonStrip : 0)
    }
}
