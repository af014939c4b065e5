pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A chart: its title with the value at the marked moment, the curve over time, and the marks of both axes. A tap or a drag
// chooses a moment. Time runs from left to right, as on the axes of clocks everywhere.
Item {
    id: root

    property ChartItem chart
    property real titleInset: 0 // room at the end of the title's line
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
        anchors.right: value.left
        anchors.rightMargin: 8
        text: root.chart?.title ?? ""
        font.pixelSize: Theme.smallSize
        font.bold: true
    }
    PlainText {
        id: value
        anchors.right: parent.right
        anchors.rightMargin: root.titleInset
        text: root.chart?.momentText ?? ""
        color: Theme.accent
        font.pixelSize: Theme.smallSize
        font.bold: true
    }

    Item {
        id: area
        visible: !(root.chart?.empty ?? true)
        anchors.fill: parent
        anchors.topMargin: title.height + 8
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
