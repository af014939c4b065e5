pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The date picker: on a tablet a popover at its button, elsewhere a sheet at the bottom. In a low window the days are beside
// the head instead of below it. The arrows change the chosen day, so that it is always visible.
Overlay {
    id: root

    readonly property DatePickerItem picker: subject as DatePickerItem
    readonly property int lowestRow: 44 // the lowest that a finger can hit
    property bool popover: false
    property ButtonItem button
    property rect at // the place of the button
    readonly property real room: height - 8 - (popover ? at.bottom + 10 : 0)
    readonly property real lines: Theme.large ? 1.5 * (Theme.titleSize + Theme.bodySize) : 0 // lines that enlarged text adds
    readonly property bool beside: width >= 500 && room < Theme.barHeight + Theme.touch + lines + days.namesHeight + 6 * lowestRow + 8

    function follow() {
        head.title = picker.title;
        days.year = picker.year;
        days.month = picker.month;
        days.lead = picker.placesBeforeMonth;
        days.days = picker.daysInMonth;
        days.chosen = picker.day;
        days.today = picker.today;
    }

    function place() {
        if (button?.drawing)
            at = button.drawing.mapToItem(root, 0, 0, button.drawing.width, button.drawing.height);
    }

    Connections {
        target: root.picker
        enabled: root.shown
        function onChanged() {
            root.follow();
            days.keepKeys();
        }
    }

    Keys.onPressed: event => {
        if (event.key === Qt.Key_PageUp || event.key === Qt.Key_PageDown)
            picker.turnMonths((event.key === Qt.Key_PageUp ? -1 : 1) * (event.modifiers & Qt.ShiftModifier ? 12 : 1));
    }

    Timer {
        id: settled // after the layout of a resized window
        interval: 0
        onTriggered: root.place()
    }

    onWidthChanged: settled.start()
    onHeightChanged: settled.start()
    onPickerChanged: {
        if (!picker)
            return;
        button = picker.origin;
        popover = window.pad && (button?.drawing ?? null) !== null;
        place();
        follow();
        days.takeKeys();
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.dim
        opacity: root.presence
        MouseArea {
            anchors.fill: parent
            onClicked: root.picker.cancel()
        }
    }

    Rectangle {
        id: sheet

        readonly property real middle: root.at.x + root.at.width / 2
        readonly property real below: root.popover ? 0 : radius // the window: the lower corners of a sheet are not visible

        x: root.popover ? Math.max(8, Math.min(root.width - width - 8, middle - width / 2)) : (root.width - width) / 2
        y: root.popover ? root.at.bottom + 10 : root.height - root.presence * (height - below)
        width: Math.min(parent.width - (root.popover ? 16 : 0), root.beside ? 320 + 300 * Theme.scale : (root.popover ? 360 : 420) * Theme.scale)
        height: Math.min(content.height + 8, root.room) + below
        opacity: root.popover ? root.presence : 1
        radius: 14
        color: Theme.raised
        Accessible.role: Accessible.Dialog
        Accessible.name: head.title

        MouseArea {
            anchors.fill: parent
        }
        Rectangle {
            visible: root.popover
            x: sheet.middle - sheet.x - width / 2
            y: -width / 2
            width: 14
            height: 14
            rotation: 45
            color: sheet.color
        }

        ScrollArea {
            anchors.fill: parent
            anchors.topMargin: 4
            anchors.bottomMargin: sheet.below + 4
            contentHeight: content.height

            Grid {
                id: content
                width: parent.width
                columns: root.beside ? 2 : 1
                horizontalItemAlignment: Grid.AlignHCenter
                verticalItemAlignment: Grid.AlignVCenter

                DatePickerHead {
                    id: head
                    width: parent.width - (root.beside ? days.width + 4 : 0)
                    window: root.window
                    month: days.title
                    onCancelled: root.picker.cancel()
                    onAccepted: root.picker.done()
                    onTurned: months => root.picker.turnMonths(months)
                }
                MonthGrid {
                    id: days
                    width: root.beside ? 7 * 46 : parent.width - 8
                    rowHeight: {
                        const free = root.room - 8 - namesHeight - (root.beside ? 0 : head.height);
                        return Math.max(root.lowestRow, Math.min(Theme.touch, Math.floor(free / 6)));
                    }
                    todayWord: root.window?.word("Today") ?? ""
                    onTurned: by => root.picker.turnDays(by)
                    onAccepted: root.picker.done()
                }
            }
        }
    }
}
