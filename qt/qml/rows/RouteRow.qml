pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// One trip or stop as a card: kind, time, both addresses, duration and distance.
RowBody {
    id: row

    readonly property string status: text("statusLabel")
    readonly property string time: text("timeLabel")
    readonly property string duration: text("durationLabel")
    readonly property string distance: text("distanceLabel")
    readonly property string from: text("fromLabel")
    readonly property string to: text("toLabel")

    function text(name) {
        return (cell?.outlet(name) as LabelItem)?.text ?? "";
    }

    separated: false
    implicitHeight: !Theme.large ? 0 : card.anchors.topMargin + head.y + head.height + 2 * way.anchors.topMargin + 2 * way.needed + foot.height
    spoken: `${status}, ${time}, ${from}, ${to}, ${duration}, ${distance}`

    Rectangle {
        id: card
        anchors.fill: parent
        anchors.leftMargin: 12
        anchors.rightMargin: 12
        anchors.topMargin: 12
        radius: 14
        color: Theme.raised
        border.width: 1
        border.color: Theme.separator

        Item {
            id: head
            x: Theme.margin
            y: 14
            width: parent.width - 2 * x
            height: pill.height + (Theme.large ? timeText.height + 6 : 0) // the time has a separate line

            Rectangle {
                id: pill
                anchors.left: parent.left
                width: Math.min(statusText.implicitWidth + 24, parent.width - (Theme.large ? 0 : timeText.width + 8))
                height: statusText.implicitHeight + 10
                radius: height / 2
                color: Theme.well
                PlainText {
                    id: statusText
                    anchors.centerIn: parent
                    width: Math.min(implicitWidth, pill.width - 24)
                    text: row.status
                    color: Theme.accent
                    font.pixelSize: Theme.smallSize + 1
                    font.bold: true
                }
            }
            PlainText {
                id: timeText
                anchors.left: Theme.large ? parent.left : undefined
                anchors.right: Theme.large ? undefined : parent.right
                y: Theme.large ? parent.height - height : (parent.height - height) / 2
                width: Theme.large ? parent.width : Math.min(implicitWidth, parent.width * 0.65)
                fontSizeMode: Theme.large ? Text.HorizontalFit : Text.FixedSize
                minimumPixelSize: 12
                text: row.time
                color: Theme.secondaryText
                font.pixelSize: Theme.smallSize + 1
            }
        }

        // The two addresses, joined by a line.
        Item {
            id: way
            readonly property real needed: Math.max(ends.itemAt(0)?.implicitHeight ?? 0, ends.itemAt(1)?.implicitHeight ?? 0)
            anchors.top: head.bottom
            anchors.bottom: foot.top
            anchors.topMargin: 10
            anchors.bottomMargin: 10
            x: Theme.margin
            width: parent.width - 2 * x

            Rectangle {
                anchors.horizontalCenter: start.horizontalCenter
                anchors.top: start.bottom
                anchors.bottom: end.top
                width: 2
                color: Theme.accent
                opacity: 0.45
            }
            Rectangle {
                id: start
                anchors.left: parent.left
                anchors.leftMargin: 3
                y: parent.height * 0.25 - height / 2
                width: 14
                height: 14
                radius: 7
                color: "transparent"
                border.width: 3
                border.color: Theme.accent
            }
            Rectangle {
                id: end
                anchors.left: parent.left
                anchors.leftMargin: 3
                y: parent.height * 0.75 - height / 2
                width: 14
                height: 14
                radius: 7
                color: Theme.accent
            }
            Repeater {
                id: ends
                model: [row.from, row.to]
                delegate: PlainText {
                    required property int index
                    required property string modelData
                    anchors.left: way.left
                    anchors.leftMargin: 32
                    anchors.right: way.right
                    y: index * way.height / 2
                    height: way.height / 2
                    verticalAlignment: Text.AlignVCenter
                    text: modelData
                    wrapMode: Text.Wrap
                    maximumLineCount: Theme.large ? 5 : 3
                    font.weight: Font.Medium
                }
            }
        }

        Grid {
            id: foot
            readonly property real line: Theme.large ? Theme.bodySize * 1.75 : 56
            columns: Theme.large ? 1 : 2
            anchors.bottom: parent.bottom
            x: Theme.margin
            width: parent.width - 2 * x
            height: Theme.large ? 2 * line : line
            Repeater {
                model: [{ icon: "qrc:/images/RowDuration.svg", words: row.duration }, { icon: "qrc:/images/RowDistance.svg", words: row.distance }]
                delegate: Item {
                    id: measure
                    required property var modelData
                    width: foot.width / foot.columns
                    height: foot.line
                    Image {
                        id: icon
                        anchors.verticalCenter: parent.verticalCenter
                        anchors.left: parent.left
                        anchors.leftMargin: -1
                        source: measure.modelData.icon
                        sourceSize { width: 22; height: 22 }
                    }
                    PlainText {
                        anchors.left: icon.right
                        anchors.leftMargin: 11
                        anchors.right: parent.right
                        anchors.verticalCenter: parent.verticalCenter
                        text: measure.modelData.words
                        fontSizeMode: Theme.large ? Text.FixedSize : Text.HorizontalFit
                        minimumPixelSize: 12
                        font.bold: true
                    }
                }
            }
        }
        Rectangle {
            anchors.bottom: foot.top
            x: Theme.margin
            width: parent.width - 2 * x
            height: 1
            color: Theme.separator
        }
    }
}
