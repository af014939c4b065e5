pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The days of one month under the names of the weekdays.
Grid {
    id: grid

    property int year
    property int month // 0 to 11
    property int lead // empty places before the first day
    property int firstWeekday
    property date chosen
    readonly property int days: new Date(year, month + 1, 0).getDate()
    readonly property real cell: width / 7

    signal picked(int day)
    signal accepted

    function takeKeys() {
        cells.itemAt(lead + chosen.getDate() - 1).forceActiveFocus();
    }

    columns: 7

    Repeater {
        model: 7
        Text {
            required property int index
            width: grid.cell
            height: Theme.smallSize + 11
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            text: Qt.locale().standaloneDayName((index + grid.firstWeekday) % 7, Locale.NarrowFormat)
            color: Theme.secondaryText
            font.pixelSize: Theme.smallSize
            Accessible.ignored: true
        }
    }

    Repeater {
        id: cells
        model: 42
        Tappable {
            id: place
            required property int index
            readonly property int day: index - grid.lead + 1
            readonly property bool inMonth: day >= 1 && day <= grid.days
            readonly property bool isChosen: inMonth && grid.chosen.getFullYear() === grid.year && grid.chosen.getMonth() === grid.month && grid.chosen.getDate() === day

            width: grid.cell
            height: Math.min(48, grid.cell)
            enabled: inMonth
            tabStop: isChosen || activeFocus
            checked: isChosen
            Accessible.ignored: !inMonth
            label: new Date(grid.year, grid.month, day).toLocaleDateString(Qt.locale(), Locale.LongFormat)
            onTapped: grid.picked(day)
            Keys.onReturnPressed: grid.accepted()
            Keys.onEnterPressed: grid.accepted()

            Rectangle {
                anchors.centerIn: parent
                width: Math.min(parent.width, parent.height) - 6
                height: width
                radius: width / 2
                visible: place.isChosen || place.pressed
                color: place.isChosen ? Theme.accent : Theme.pressed
            }
            Text {
                anchors.centerIn: parent
                visible: place.inMonth
                text: new Date(grid.year, grid.month, place.day).toLocaleDateString(Qt.locale(), "d")
                color: place.isChosen ? Theme.accentText : Theme.text
                font.pixelSize: Math.min(Theme.bodySize, Math.round(grid.cell * 0.55))
                Accessible.ignored: true
            }
        }
    }
}
