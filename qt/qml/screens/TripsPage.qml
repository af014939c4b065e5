pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A day's trips and stops as cards, below the day bar.
FocusScope {
    id: root

    required property ViewControllerItem screen

    Rectangle {
        anchors.fill: parent
        color: Theme.well
    }

    Column {
        id: head
        width: parent.width
        z: 1 // what the ribbon names lies over the cards

        DayBar {
            id: bar
            width: parent.width
            screen: root.screen
            noted: note.visible
        }
        DayRibbon {
            width: parent.width
            ribbon: root.screen.outlet("dayRibbon") as TimeRibbonItem
        }
    }

    TablePage {
        id: page
        anchors.top: head.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        screen: root.screen
        focus: true
        rows.topMargin: totals.height
    }
    // Scrolls with the cards. A header cannot: a bound component is not created by a view.
    DayTotals {
        id: totals
        parent: page.rows.contentItem
        y: page.rows.originY - height
        width: page.width
        property real before: 0
        screen: root.screen
        strip: root.screen.outlet("dayTotals") as FactStripItem
        // They come into sight only where the list stands at its top, and no row was asked for.
        onHeightChanged: {
            const atTop = page.rows.contentY <= page.rows.originY - before + 1;
            before = height;
            if (atTop && page.rows.pointedRow < 0)
                page.rows.contentY = page.rows.originY - height;
        }
    }

    PullToLoad {
        anchors.top: head.bottom
        anchors.horizontalCenter: parent.horizontalCenter
        list: page.rows
        onPulled: bar.reload.tap()
    }

    DayNote {
        id: note
        anchors.centerIn: page
        screen: root.screen
        visible: page.rows.count === 0
    }
}
