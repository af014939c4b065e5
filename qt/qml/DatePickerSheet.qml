pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A month of days in a sheet at the bottom, in a low window beside what stands over them otherwise. The arrows move the
// chosen day by months and years, so that it is always seen.
Overlay {
    id: root

    readonly property DatePickerItem picker: subject as DatePickerItem
    readonly property int shortRow: 44 // the lowest that a finger hits
    readonly property real room: height - 8
    readonly property real lines: Theme.large ? 1.5 * (Theme.titleSize + Theme.bodySize) : 0 // what is not beside others then
    readonly property bool beside: width >= 500 && room < Theme.barHeight + Theme.touch + lines + days.namesHeight + 6 * shortRow + 8

    function follow() {
        if (!picker)
            return;
        head.title = picker.title;
        days.year = picker.year;
        days.month = picker.month;
        days.lead = picker.placesBeforeMonth;
        days.days = picker.daysInMonth;
        days.chosen = picker.day;
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
    onPickerChanged: {
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
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(parent.width, root.beside ? 320 + 300 * Theme.scale : 420 * Theme.scale)
        height: Math.min(content.height + 8, root.room) + radius
        y: root.height - root.presence * (height - radius) // rests at the bottom, its lower corners out of sight
        radius: 14
        color: Theme.raised
        Accessible.role: Accessible.Dialog
        Accessible.name: head.title

        MouseArea {
            anchors.fill: parent
        }

        ScrollArea {
            anchors.fill: parent
            anchors.topMargin: 4
            anchors.bottomMargin: sheet.radius + 4
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
                        return Math.max(root.shortRow, Math.min(Theme.touch, Math.floor(free / 6)));
                    }
                    onTurned: by => root.picker.turnDays(by)
                    onAccepted: root.picker.done()
                }
            }
        }
    }
}
