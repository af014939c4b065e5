pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// Above a page that shows one day: the chosen day between arrows, and, while the page shows another one, what it shows.
FocusScope {
    id: root

    required property ViewControllerItem screen
    property bool noted: false // the page itself reports what it does not show
    readonly property string day: (screen.outlet("dayLabel") as LabelItem)?.text ?? ""
    readonly property string note: (screen.outlet("dayNoteLabel") as LabelItem)?.text ?? ""
    readonly property string progress: (screen.outlet("dayProgressLabel") as LabelItem)?.text ?? ""
    readonly property ButtonItem reload: screen.outlet("dayButton") as ButtonItem
    readonly property ButtonItem load: screen.outlet("dayLoadButton") as ButtonItem
    readonly property ButtonItem choose: screen.outlet("chooseDayButton") as ButtonItem

    height: column.height + 1

    Shortcut {
        sequences: ["F5", "Ctrl+R"]
        enabled: root.visible && root.enabled
        onActivated: root.reload?.tap()
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.raised
    }
    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.separator
    }

    Column {
        id: column
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(parent.width, 560)

        Item {
            width: parent.width
            height: Math.max(Theme.touch, words.height)

            DayButton {
                id: previous
                anchors.left: parent.left
                width: Theme.touch
                button: root.screen.outlet("previousDayButton") as ButtonItem
                symbol: Theme.mirrored ? "›" : "‹"
            }
            Tappable {
                anchors.left: previous.right
                anchors.right: next.left
                height: parent.height
                label: root.reload?.accessibleName ?? ""
                onTapped: root.reload.tap()

                Rectangle {
                    anchors.fill: parent
                    radius: 8
                    color: parent.pressed ? Theme.pressed : "transparent"
                }
                Column {
                    id: words
                    anchors.verticalCenter: parent.verticalCenter
                    width: parent.width

                    PlainText {
                        width: parent.width
                        horizontalAlignment: Text.AlignHCenter
                        verticalAlignment: Text.AlignVCenter
                        fontSizeMode: Text.HorizontalFit
                        minimumPixelSize: 12
                        text: root.day
                        font.bold: true
                    }
                    PlainText {
                        width: parent.width
                        horizontalAlignment: Text.AlignHCenter
                        visible: text !== ""
                        text: root.progress
                        color: Theme.secondaryText
                        font.pixelSize: Math.round(Theme.smallSize * 0.85)
                    }
                }
            }
            DayButton {
                id: next
                anchors.right: today.left
                width: Theme.touch
                button: root.screen.outlet("nextDayButton") as ButtonItem
                symbol: Theme.mirrored ? "‹" : "›"
            }
            DayButton {
                id: today
                anchors.right: save.left
                width: Math.min(implicitWidth, parent.width * 0.3)
                button: root.screen.outlet("todayButton") as ButtonItem
                opacity: enabled ? 1 : 0
            }
            Tappable {
                id: save
                readonly property ButtonItem button: root.screen.outlet("exportButton") as ButtonItem
                anchors.right: parent.right
                width: Theme.touch
                height: Theme.touch
                enabled: button?.enabled ?? false
                label: button?.accessibleName ?? ""
                onTapped: button.tap()

                Rectangle {
                    anchors.fill: parent
                    radius: 8
                    color: parent.pressed ? Theme.pressed : "transparent"
                }
                Image {
                    anchors.centerIn: parent
                    source: save.button?.image ?? ""
                    sourceSize { width: 24; height: 24 }
                }
            }
        }

        Item {
            width: parent.width
            height: Math.max(report.height + 12, load.visible ? load.height : 0)
            visible: root.note !== "" && !root.noted

            PlainText {
                id: report
                anchors.left: parent.left
                anchors.leftMargin: Theme.margin
                anchors.right: load.visible ? load.left : parent.right
                anchors.rightMargin: load.visible ? 0 : Theme.margin
                anchors.verticalCenter: parent.verticalCenter
                text: root.note
                wrapMode: Text.Wrap
                color: Theme.secondaryText
                font.pixelSize: Theme.smallSize
                Accessible.ignored: false
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            DayButton {
                id: load
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, parent.width * 0.4)
                visible: enabled
                button: root.load?.enabled ? root.load : root.choose
            }
        }
    }

    Voice {
        words: root.note ? `${root.day}, ${root.note}` : root.day
        heard: root.visible && root.enabled
    }
}
