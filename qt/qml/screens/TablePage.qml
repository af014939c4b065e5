pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A screen that is one table.
FocusScope {
    id: root

    required property ViewControllerItem screen
    property string tableName: "itemsTableView"
    readonly property alias rows: list

    TableList {
        id: list
        anchors.fill: parent
        table: root.screen.outlet(root.tableName) as TableItem
        label: root.screen.accessibleName
        focus: true
    }
}
