pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The days of one month below the names of the weekdays, with a ring around today and those to come paler. A button for today
// takes the places that no month needs.
FocusScope {
    id: root

    property int year
    property int month: 1
    property int lead // empty cells before the first day
    property int days
    property int chosen
    property int today // as a day of this month
    property string todayWord
    property int rowHeight: Theme.touch
    readonly property int namesHeight: Theme.smallSize + 11
    readonly property string title: `${Qt.locale().standaloneMonthName(month - 1)} ${new Date(year, 0).toLocaleDateString(Qt.locale(), "yyyy")}`
    readonly property real cell: width / 7

    signal turned(int by)
    signal accepted

    function takeKeys() {
        cells.itemAt(lead + chosen - 1)?.forceActiveFocus();
    }

    function keepKeys() {
        if (activeFocus)
            takeKeys();
    }

    implicitHeight: grid.height
    Keys.onLeftPressed: turned(-Theme.forward)
    Keys.onRightPressed: turned(Theme.forward)
    Keys.onUpPressed: turned(-7)
    Keys.onDownPressed: turned(7)

    Grid {
        id: grid
        columns: 7

        Repeater {
            model: 7
            PlainText {
                required property int index
                width: root.cell
                height: root.namesHeight
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                text: Qt.locale().standaloneDayName((index + Qt.locale().firstDayOfWeek) % 7, Locale.NarrowFormat)
                color: Theme.secondaryText
                font.pixelSize: Theme.smallSize
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
                height: root.rowHeight
                enabled: inMonth
                tabStop: isChosen || activeFocus
                checked: isChosen
                Accessible.ignored: !inMonth
                label: new Date(root.year, root.month - 1, day).toLocaleDateString(Qt.locale(), Locale.LongFormat)
                onTapped: root.turned(day - root.chosen)
                Keys.onReturnPressed: root.accepted()
                Keys.onEnterPressed: root.accepted()

                Rectangle {
                    id: ring
                    anchors.centerIn: parent
                    width: Math.min(parent.width, parent.height) - 6
                    height: width
                    radius: width / 2
                    visible: place.isChosen || place.pressed || place.inMonth && place.day === root.today
                    color: "transparent"
                    border.width: place.day === root.today ? 2 : 0
                    border.color: Theme.accent

                    Rectangle {
                        anchors.fill: parent
                        anchors.margins: 2 * ring.border.width // a gap between today's ring and the plate of the chosen day
                        radius: width / 2
                        color: place.isChosen ? Theme.accent : place.pressed ? Theme.pressed : "transparent"
                    }
                }
                PlainText {
                    anchors.centerIn: parent
                    visible: place.inMonth
                    text: new Date(root.year, root.month - 1, place.day).toLocaleDateString(Qt.locale(), "d")
                    color: place.isChosen ? Theme.accentText : place.day > root.today ? Theme.secondaryText : Theme.text
                    font.bold: place.day === root.today
                    font.pixelSize: Math.min(Theme.bodySize, Math.round(root.cell * 0.55))
                }
            }
        }
    }

    TextButton {
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        width: Math.min(implicitWidth, 5 * root.cell)
        height: root.rowHeight
        label: root.todayWord
        onTapped: root.turned(root.today - root.chosen)
    }
}
