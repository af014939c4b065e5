pragma ComponentBehavior: Bound
import QtQuick
import Fleetor
import QtQuick.Window

// A table. Rows are made as they come into sight and not before: the row for data still to come asks for it.
ListView {
    id: list

    property TableItem table
    property string label

    function step(by) {
        const next = currentIndex + by;
        if (next < 0 || next >= count)
            return false;
        currentIndex = next;
        positionViewAtIndex(next, ListView.Contain);
        return true;
    }

    model: table?.model ?? null
    cacheBuffer: 0
    currentIndex: -1
    boundsBehavior: Flickable.DragAndOvershootBounds
    flickableDirection: Flickable.VerticalFlick
    keyNavigationEnabled: false
    activeFocusOnTab: true
    clip: true
    Accessible.role: Accessible.List
    Accessible.name: label
    Keys.onDownPressed: event => event.accepted = step(1)
    Keys.onUpPressed: event => event.accepted = step(-1)
    Keys.onPressed: event => {
        const page = Math.max(1, Math.floor(height / 68) - 1);
        if (event.key === Qt.Key_PageDown)
            event.accepted = step(Math.min(page, count - 1 - currentIndex));
        else if (event.key === Qt.Key_PageUp)
            event.accepted = step(-Math.min(page, currentIndex));
        else if (event.key === Qt.Key_Home)
            event.accepted = count > 0 && step(-currentIndex);
        else if (event.key === Qt.Key_End)
            event.accepted = count > 0 && step(count - 1 - currentIndex);
    }
    Keys.onReturnPressed: if (currentIndex >= 0) table.tap(currentIndex)
    Keys.onEnterPressed: if (currentIndex >= 0) table.tap(currentIndex)
    Keys.onSpacePressed: if (currentIndex >= 0) table.tap(currentIndex)

    delegate: Tappable {
        id: row

        required property int index
        required property CellItem cell
        required property real rowHeight
        property int shownRow: -1
        property TableItem shownTable: null
        // What was chosen of a narrow list is there to be seen beside it.
        readonly property bool shownBeside: index === (list.table?.selectedRow ?? -1) && list.width < list.Window.width

        width: ListView.view.width
        height: rowHeight
        role: Accessible.ListItem
        tabStop: false
        enabled: cell?.selectable ?? false
        label: {
            const content = body.item as RowBody;
            return content ? content.spoken : cell?.accessibleName ?? "";
        }
        onTapped: list.table.tap(index)
        Component.onCompleted: {
            shownRow = index;
            shownTable = list.table;
            shownTable.beginDisplaying(shownRow);
        }
        Component.onDestruction: if (shownTable) shownTable.endDisplaying(shownRow)

        Rectangle {
            anchors.fill: parent
            color: row.pressed || row.shownBeside ? Theme.pressed : "transparent"
        }

        Loader {
            id: body
            anchors.fill: parent
            source: {
                switch (row.cell?.reuseIdentifier) {
                case "VehicleCell":
                    return "VehicleRow.qml";
                case "InfoCell":
                    return "InfoRow.qml";
                case "RouteCell":
                    return "RouteRow.qml";
                case "LoadingCell":
                    return "LoadingRow.qml";
                }
                return "";
            }
            onLoaded: item.cell = Qt.binding(() => row.cell)
        }

        Rectangle {
            visible: (body.item as RowBody)?.separated ?? false
            anchors.bottom: parent.bottom
            anchors.left: parent.left
            anchors.leftMargin: Theme.margin
            anchors.right: parent.right
            height: 1
            color: Theme.separator
        }

        Rectangle {
            anchors.fill: parent
            anchors.margins: 2
            visible: list.activeFocus && list.currentIndex === row.index
            color: "transparent"
            radius: 8
            border.width: 2
            border.color: Theme.focusRing
        }
    }

    Rectangle {
        parent: list
        anchors.right: parent.right
        anchors.rightMargin: 2
        y: list.visibleArea.yPosition * list.height
        width: 4
        height: Math.max(24, list.visibleArea.heightRatio * list.height)
        radius: 2
        color: Theme.secondaryText
        opacity: list.moving && list.visibleArea.heightRatio < 1 ? 0.6 : 0
        Behavior on opacity {
            NumberAnimation { duration: 200 }
        }
    }
}
