pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The list in which the user chooses the widget's vehicle, below a separate bar.
FocusScope {
    id: root

    required property ViewControllerItem screen

    Rectangle {
        anchors.fill: parent
        color: Theme.background
    }

    NavigationBar {
        id: bar
        width: parent.width
        title: root.screen.title
        leftItems: root.screen?.leftItems ?? []
        z: 2
    }

    TableList {
        anchors.fill: parent
        anchors.topMargin: bar.height
        table: root.screen.outlet("itemsTableView") as TableItem
        label: root.screen.title
        focus: true
    }
}
