pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A day's track on a map, below the day bar.
FocusScope {
    id: root

    required property ViewControllerItem screen

    Column {
        id: head
        width: parent.width
        z: 1 // what the ribbon names lies over the map

        DayBar {
            width: parent.width
            screen: root.screen
            noted: note.visible
        }
        DayRibbon {
            width: parent.width
            ribbon: root.screen.outlet("dayRibbon") as TimeRibbonItem
        }
    }

    MapPage {
        id: page
        anchors.top: head.bottom
        anchors.bottom: foot.top
        width: parent.width
        screen: root.screen
        card: root.screen.outlet("stopCardButton") as ButtonItem
        focus: true

        DayNote {
            id: note
            screen: root.screen
            visible: page.covered && !page.busy
        }
    }

    // What lies below the map.
    Column {
        id: foot
        anchors.bottom: parent.bottom
        width: parent.width

        TripStrip {
            width: parent.width
            screen: root.screen
        }
    }
}
