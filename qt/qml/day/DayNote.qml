pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// In the middle of a page that has nothing to show of its day: why, and what to do next.
Column {
    id: root

    required property ViewControllerItem screen
    readonly property string note: (screen.outlet("dayNoteLabel") as LabelItem)?.text ?? ""

    anchors.centerIn: parent
    width: Math.min(parent.width, 400) - 2 * Theme.margin
    spacing: 8

    PlainText {
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        text: root.note
        wrapMode: Text.Wrap
        Accessible.ignored: false
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    DayButton {
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(implicitWidth, parent.width)
        visible: enabled
        button: root.screen.outlet("dayLoadButton") as ButtonItem
    }
    DayButton {
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(implicitWidth, parent.width)
        visible: enabled
        button: root.screen.outlet("chooseDayButton") as ButtonItem
    }
}
