pragma ComponentBehavior: Bound
import QtQuick
import Fleetor
import QtQuick.Window

// A table. Rows are made only when they come into view: the loading row requests the next page.
ListView {
    id: list

    property TableItem table
    property string label
    property int openedRow: -1 // the one whose tap has covered the table
    property real glow: 0 // of that row once the table has come back
    property int pointedRow: -1 // the one that the program has brought into view

    // Moves the current row there, or to the first row in view when there is none yet. False when nothing changes.
    function go(to) {
        const next = currentIndex < 0 ? Math.max(0, indexAt(0, contentY)) : Math.max(0, Math.min(count - 1, to));
        if (count === 0 || next === currentIndex)
            return false;
        currentIndex = next;
        keepCurrent();
        return true;
    }

    // Brings the current row into view.
    function keepCurrent() {
        positionViewAtIndex(currentIndex, ListView.Contain);
        again.start();
    }

    Timer {
        id: again // once the row's text has given it its height
        interval: 0
        onTriggered: list.positionViewAtIndex(list.currentIndex, ListView.Contain)
    }

    function open(row) {
        glowing.stop();
        glow = 0;
        table.tap(row);
        openedRow = enabled ? -1 : row;
    }

    SequentialAnimation {
        id: glowing
        PropertyAction { target: list; property: "glow"; value: 1 }
        PauseAnimation { duration: Theme.motion(300) }
        NumberAnimation { target: list; property: "glow"; to: 0; duration: Theme.motion(300) }
        PropertyAction { target: list; property: "openedRow"; value: -1 }
    }

    function meetKeys() {
        if (activeFocus && UserPreferences.usesKeys && currentIndex < 0)
            go(0);
    }

    model: table?.model ?? null
    cacheBuffer: 0
    currentIndex: -1
    boundsBehavior: Flickable.DragAndOvershootBounds
    flickableDirection: Flickable.VerticalFlick
    keyNavigationEnabled: false
    highlightFollowsCurrentItem: false
    activeFocusOnTab: true
    clip: true
    Accessible.role: Accessible.List
    Accessible.name: label
    onActiveFocusChanged: meetKeys()
    onCountChanged: {
        pointedRow = -1;
        meetKeys();
    }
    onMovementStarted: pointedRow = -1
    onEnabledChanged: if (enabled && openedRow >= 0) glowing.restart()
    Keys.onDownPressed: event => event.accepted = go(currentIndex + 1)
    Keys.onUpPressed: event => event.accepted = go(currentIndex - 1)
    Keys.onPressed: event => {
        const page = Math.max(1, Math.floor(height / (currentItem?.height ?? height)) - 1);
        if (event.key === Qt.Key_PageDown)
            event.accepted = go(currentIndex + page);
        else if (event.key === Qt.Key_PageUp)
            event.accepted = go(currentIndex - page);
        else if (event.key === Qt.Key_Home)
            event.accepted = go(0);
        else if (event.key === Qt.Key_End)
            event.accepted = go(count - 1);
        else if (event.matches(StandardKey.Copy) || event.key === Qt.Key_Menu)
            event.accepted = table.copy(currentIndex);
    }

    delegate: Tappable {
        id: row

        required property int index
        required property CellItem cell
        required property real rowHeight
        property bool lit: false
        property int shownRow: -1 // the index that the table knows, while the row is in view
        property TableItem shownTable: null
        // In a list that fills only a part of the window, the selected item is shown beside it.
        readonly property bool shownBeside: index === (list.table?.selectedRow ?? -1) && list.width < list.Window.width

        // The view keeps some rows that are out of view. No binding: displaying a row may move it.
        function followView() {
            const removed = index < 0; // a row that the view still has to delete
            const seen = !removed && y < list.contentY + list.height && y + height > list.contentY;
            if (seen === (shownRow >= 0))
                return;
            if (seen) {
                shownRow = index;
                shownTable = list.table;
                shownTable.beginDisplaying(shownRow);
            } else {
                hide();
            }
        }
        function hide() {
            shownTable?.endDisplaying(shownRow);
            shownRow = -1;
        }

        width: ListView.view.width
        height: Math.max(Math.round(rowHeight * Theme.scale), body.item?.implicitHeight ?? 0)
        role: Accessible.ListItem
        tabStop: false
        ringMargin: 2
        holdable: true
        hint: (body.item as RowBody)?.hint ?? ""
        label: {
            const content = body.item as RowBody;
            return content ? content.spoken : cell?.accessibleName ?? "";
        }
        onTapped: {
            list.currentIndex = index; // arrow keys continue from here
            list.open(index);
        }
        onHeld: list.table.copy(index)
        onPressedChanged: lit = false
        onYChanged: followView()
        onHeightChanged: followView()
        Component.onCompleted: followView()
        Component.onDestruction: hide()

        Connections {
            target: list
            function onContentYChanged() {
                row.followView();
            }
            function onHeightChanged() {
                row.followView();
            }
        }

        Timer {
            interval: 70 // a touch that starts a scroll highlights nothing
            running: row.pressed
            onTriggered: row.lit = true
        }

        Rectangle {
            anchors.fill: parent
            color: Theme.pressed
            visible: opacity > 0
            opacity: row.lit && row.cell?.tappable || row.shownBeside || row.index === list.pointedRow ? 1 : row.index === list.openedRow ? list.glow : 0
        }

        Loader {
            id: body
            anchors.fill: parent
            source: {
                const kind = row.cell?.reuseIdentifier ?? "";
                switch (kind) {
                case "VehicleCell":
                    return "VehicleRow.qml";
                case "FoundCell":
                    return "FoundRow.qml";
                case "BoardCell":
                    return "BoardRow.qml";
                case "InfoCell":
                    return "InfoRow.qml";
                case "RouteCell":
                    return "RouteRow.qml";
                case "LoadingCell":
                    return "LoadingRow.qml";
                }
                if (kind)
                    console.warn(`TableList.qml: no row for cells of the kind "${kind}"`);
                return "";
            }
            onLoaded: {
                item.cell = Qt.binding(() => row.cell);
                item.current = Qt.binding(() => row.index === list.currentIndex);
            }
        }

        Rectangle {
            readonly property bool closing: row.index === list.count - 1 && (list.table?.emptyFooter ?? false)
            visible: ((body.item as RowBody)?.separated ?? false) && !closing
            anchors.bottom: parent.bottom
            anchors.left: parent.left
            anchors.leftMargin: Theme.margin
            anchors.right: parent.right
            height: 1
            color: Theme.separator
        }
    }

    Connections {
        target: list.table
        function onRowWanted(row) {
            list.pointedRow = row;
            list.positionViewAtIndex(row, ListView.Beginning);
        }
    }

    TableUpdates {
        parent: list
        table: list.table
    }

    ScrollMark {
        view: list
    }
}
