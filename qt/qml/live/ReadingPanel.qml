pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The chart of one reading, or why there is none yet, with a button that closes it. Left and right move the marked moment.
FocusScope {
    id: root

    required property ViewControllerItem screen
    readonly property ChartItem chart: screen.outlet("readingChart") as ChartItem
    readonly property ButtonItem closing: screen.outlet("closeChartButton") as ButtonItem
    readonly property string note: (screen.outlet("readingChartLabel") as LabelItem)?.text ?? ""
    readonly property bool open: closing?.enabled ?? false

    visible: open

    Rectangle {
        anchors.fill: parent
        color: Theme.raised

        Rectangle {
            width: parent.width
            height: 1
            color: Theme.separator
        }
    }
    MouseArea {
        anchors.fill: parent // what lies below is covered
    }

    ChartView {
        id: view
        anchors.fill: parent
        anchors.margins: 12
        anchors.topMargin: Math.round((close.height - titleHeight) / 2)
        titleInset: close.width - 12
        chart: root.chart
        focus: true
        activeFocusOnTab: true
        Accessible.focusable: true
        Keys.onLeftPressed: chart.choose(momentShare - 0.02)
        Keys.onRightPressed: chart.choose(momentShare + 0.02)

        FocusRing {
            anchors.fill: parent
            anchors.margins: -6
        }
    }
    PlainText {
        anchors.centerIn: parent
        width: parent.width - 2 * Theme.margin
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        visible: text !== ""
        text: root.note
        color: Theme.secondaryText
        Accessible.ignored: false
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }
    TextButton {
        id: close
        anchors.right: parent.right
        symbol: "×"
        label: root.closing?.accessibleName ?? ""
        onTapped: root.closing.tap()
    }
}
