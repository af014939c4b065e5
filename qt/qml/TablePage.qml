pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A screen that is one table.
FocusScope {
    id: root

    required property ViewControllerItem screen

    TableList {
        anchors.fill: parent
        table: root.screen.outlet("itemsTableView") as TableItem
        label: root.screen.title
        focus: true
    }
}
