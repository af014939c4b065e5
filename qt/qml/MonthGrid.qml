pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The days of one month under the names of the weekdays.
FocusScope {
    id: root

    property DatePickerItem picker
    readonly property int year: picker?.year ?? 0
    readonly property int month: (picker?.month ?? 1) - 1 // as JavaScript counts
    readonly property int chosen: picker?.day ?? 0
    readonly property int lead: picker?.placesBeforeMonth ?? 0
    readonly property int days: picker?.daysInMonth ?? 0
    readonly property real cell: width / 7

    // Keys go to the chosen day. Its place is known once all of the above is.
    function takeKeys() {
        soon.start();
    }

    function follow() {
        if (activeFocus)
            takeKeys();
    }

    Timer {
        id: soon
        interval: 0
        onTriggered: cells.itemAt(root.lead + root.chosen - 1)?.forceActiveFocus()
    }

    implicitHeight: grid.height
    onChosenChanged: follow()
    onMonthChanged: follow()
    onYearChanged: follow()
    Keys.onLeftPressed: picker.turnDays(-Theme.forward)
    Keys.onRightPressed: picker.turnDays(Theme.forward)
    Keys.onUpPressed: picker.turnDays(-7)
    Keys.onDownPressed: picker.turnDays(7)

    Grid {
        id: grid
        columns: 7

        Repeater {
            model: 7
            Text {
                required property int index
                width: root.cell
                height: Theme.smallSize + 11
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                text: Qt.locale().standaloneDayName((index + Qt.locale().firstDayOfWeek) % 7, Locale.NarrowFormat)
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
                readonly property int day: index - root.lead + 1
                readonly property bool inMonth: day >= 1 && day <= root.days
                readonly property bool isChosen: day === root.chosen

                width: root.cell
                height: Math.min(48, root.cell)
                enabled: inMonth
                tabStop: isChosen || activeFocus
                checked: isChosen
                Accessible.ignored: !inMonth
                label: new Date(root.year, root.month, day).toLocaleDateString(Qt.locale(), Locale.LongFormat)
                onTapped: root.picker.turnDays(day - root.chosen)
                Keys.onReturnPressed: root.picker.done()
                Keys.onEnterPressed: root.picker.done()

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
                    text: new Date(root.year, root.month, place.day).toLocaleDateString(Qt.locale(), "d")
                    color: place.isChosen ? Theme.accentText : Theme.text
                    font.pixelSize: Math.min(Theme.bodySize, Math.round(root.cell * 0.55))
                    Accessible.ignored: true
                }
            }
        }
    }
}
