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

        DayBar {
            id: bar
            width: parent.width
            screen: root.screen
            noted: note.visible
        }
    }

    TablePage {
        id: page
        anchors.top: head.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        screen: root.screen
        focus: true
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
