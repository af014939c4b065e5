pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A chart: its title with the value at the marked moment, the curve over time, and the marks of both axes. A tap or a drag
// chooses a moment. Time runs from left to right, as on the axes of clocks everywhere.
Item {
    id: root

    property ChartItem chart
    property real titleInset: 0 // room at the end of the title's line
    // The value stands below the title where one line has no room for both.
    readonly property bool crowded: title.implicitWidth + 8 + widest > width - titleInset
    property bool stacked: crowded
    property real widest: 0 // of the values so far: the curve must not jump from one to the next
    readonly property real titleHeight: title.height
    readonly property int markSize: Math.round(11 * Math.min(Theme.scale, 1.5))
    readonly property real momentShare: chart?.momentShare ?? -1

    implicitHeight: 150
    Accessible.role: Accessible.Chart
    Accessible.name: chart?.accessibleName ?? ""
    Accessible.description: chart?.momentText ?? ""

    PlainText {
        id: title
        anchors.left: parent.left
        width: Math.max(0, root.width - root.titleInset - (root.stacked ? 0 : root.widest + 8))
        verticalAlignment: Text.AlignVCenter
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: 12
        text: root.chart?.title ?? ""
        onTextChanged: root.widest = value.implicitWidth
        font.pixelSize: Theme.smallSize
        font.bold: true
    }
    PlainText {
        id: value
        readonly property real inset: root.stacked ? 0 : root.titleInset
        x: root.stacked !== Theme.mirrored ? inset : root.width - width - inset
        y: root.stacked ? title.height : 0
        onImplicitWidthChanged: root.widest = Math.max(root.widest, implicitWidth)
        text: root.chart?.momentText ?? ""
        color: Theme.accent
        font.pixelSize: Theme.smallSize
        font.bold: true
    }

    Item {
        id: area
        visible: !(root.chart?.empty ?? true)
        anchors.fill: parent
        anchors.topMargin: value.y + value.height + 8
        anchors.bottomMargin: root.markSize + 8
        anchors.leftMargin: root.markSize * 2.6
        anchors.rightMargin: 4
        LayoutMirroring.enabled: false
        LayoutMirroring.childrenInherit: true

        Repeater {
            model: root.chart?.valueTicks ?? []
            delegate: Rectangle {
                id: level

                required property var modelData

                y: Math.round(area.height * (1 - modelData.share))
                width: area.width
                height: 1
                color: Theme.separator

                PlainText {
                    anchors.right: parent.left
                    anchors.rightMargin: 6
                    anchors.verticalCenter: parent.verticalCenter
                    text: level.modelData.text
                    color: Theme.secondaryText
                    font.pixelSize: root.markSize
                }
            }
        }
        Repeater {
            model: root.chart?.empty ?? true ? [] : root.chart.timeTicks(Math.max(2, area.width / (5 * root.markSize)))
            delegate: PlainText {
                required property var modelData

                x: Math.max(-area.x, Math.min(area.width - width, area.width * modelData.share - width / 2))
                y: area.height + 4
                text: modelData.text
                color: Theme.secondaryText
                font.pixelSize: root.markSize
            }
        }
        ChartCurve {
            anchors.fill: parent
            chart: root.chart
            color: Theme.accent
        }
        Rectangle {
            x: Math.round(area.width * root.momentShare)
            width: 2
            height: parent.height
            visible: root.momentShare >= 0
            color: Theme.text
            opacity: 0.6
        }
    }

    MouseArea {
        anchors.fill: area
        anchors.leftMargin: -12
        anchors.rightMargin: -4
        LayoutMirroring.enabled: false
        preventStealing: true
        onPressed: mouse => root.chart.choose((mouse.x - 12) / area.width)
        onPositionChanged: mouse => root.chart.choose((mouse.x - 12) / area.width)
    }
}
