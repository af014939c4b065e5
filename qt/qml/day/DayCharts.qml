pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The charts of the day that is replayed, one below the other, or side by side where that is too low.
Rectangle {
    id: root

    property ButtonItem button
    property ChartItem distance
    property ChartItem speed
    readonly property real inset: 12
    readonly property bool low: height < 280

    visible: button?.selected ?? false
    color: Theme.raised

    Grid {
        id: charts
        anchors.fill: parent
        anchors.margins: root.inset
        columns: root.low ? 2 : 1
        spacing: root.inset

        Repeater {
            id: views
            readonly property bool crowded: count > 1 && ((itemAt(0) as ChartView).crowded || (itemAt(1) as ChartView).crowded)
            model: [root.speed, root.distance]
            delegate: ChartView {
                required property ChartItem modelData

                chart: modelData
                stacked: crowded || root.low && views.crowded // side by side they are drawn alike
                width: root.low ? (charts.width - charts.spacing) / 2 : charts.width
                height: root.low ? charts.height : (charts.height - charts.spacing) / 2
            }
        }
    }
}
