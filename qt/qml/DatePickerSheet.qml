pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A month of days in a sheet at the bottom. The arrows move the chosen day by months and years, so that it is always seen.
Overlay {
    id: root

    readonly property DatePickerItem picker: subject as DatePickerItem

    function follow() {
        if (!picker)
            return;
        title.text = picker.title;
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
        width: Math.min(parent.width, 420 * Theme.scale)
        height: column.height + 24
        radius: 14
        color: Theme.raised
        Accessible.role: Accessible.Dialog
        Accessible.name: title.text

        y: root.height - root.presence * (height - 12) // rests at the bottom, its lower corners out of sight
        MouseArea {
            anchors.fill: parent
        }

        Column {
            id: column
            width: parent.width

            Item {
                id: head

                readonly property real beside: width - 2 * Math.max(cancel.width, done.width) - 24
                readonly property bool stacked: title.implicitWidth > beside // the title has a line of its own
                readonly property real squeeze: Math.min(1, (width - 16) / (cancel.implicitWidth + done.implicitWidth))

                width: parent.width
                height: Theme.barHeight + (stacked ? title.height : 0)
                TextButton {
                    id: cancel
                    width: implicitWidth * head.squeeze
                    anchors.left: parent.left
                    anchors.leftMargin: 8
                    anchors.bottom: parent.bottom
                    anchors.bottomMargin: (Theme.barHeight - height) / 2
                    label: root.window?.word("Cancel") ?? ""
                    onTapped: root.picker.cancel()
                }
                Text {
                    id: title
                    anchors.horizontalCenter: parent.horizontalCenter
                    y: head.stacked ? 8 : (parent.height - height) / 2
                    width: head.stacked ? parent.width - 16 : head.beside
                    horizontalAlignment: Text.AlignHCenter
                    fontSizeMode: Text.HorizontalFit
                    minimumPixelSize: 11
                    elide: Text.ElideRight
                    textFormat: Text.PlainText
                    color: Theme.text
                    font.pixelSize: Theme.bodySize + 1
                    font.bold: true
                    Accessible.ignored: true
                }
                TextButton {
                    id: done
                    width: implicitWidth * head.squeeze
                    anchors.right: parent.right
                    anchors.rightMargin: 8
                    anchors.bottom: parent.bottom
                    anchors.bottomMargin: (Theme.barHeight - height) / 2
                    label: root.window?.word("Done") ?? ""
                    onTapped: root.picker.done()
                }
            }

            Item {
                width: parent.width
                height: Theme.touch + (Theme.large ? monthName.height : 0)
                Row {
                    anchors.left: parent.left
                    TextButton { sign: Theme.mirrored ? "»" : "«"; label: root.window?.word("Previous year") ?? ""; onTapped: root.picker.turnMonths(-12) }
                    TextButton { sign: Theme.mirrored ? "›" : "‹"; label: root.window?.word("Previous month") ?? ""; onTapped: root.picker.turnMonths(-1) }
                }
                Text {
                    id: monthName
                    anchors.horizontalCenter: parent.horizontalCenter
                    y: Theme.large ? Theme.touch : (parent.height - height) / 2
                    width: parent.width - (Theme.large ? 16 : 4 * Theme.touch - 16) // the arrows leave that much
                    horizontalAlignment: Text.AlignHCenter
                    fontSizeMode: Text.HorizontalFit
                    minimumPixelSize: 11
                    text: days.title
                    color: Theme.text
                    font.pixelSize: Theme.bodySize
                    font.bold: true
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
                Row {
                    anchors.right: parent.right
                    TextButton { sign: Theme.mirrored ? "‹" : "›"; label: root.window?.word("Next month") ?? ""; onTapped: root.picker.turnMonths(1) }
                    TextButton { sign: Theme.mirrored ? "«" : "»"; label: root.window?.word("Next year") ?? ""; onTapped: root.picker.turnMonths(12) }
                }
            }

            MonthGrid {
                id: days
                width: parent.width - 16
                x: 8
                onTurned: by => root.picker.turnDays(by)
                onAccepted: root.picker.done()
            }
            Item {
                width: 1
                height: 8
            }
        }
    }
}
