pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// One trip or stop as a card: when, which of the two, both addresses, duration and distance.
RowBody {
    id: row

    readonly property string status: text("statusLabel")
    readonly property string clock: text("clockLabel")
    readonly property string time: text("timeLabel")
    readonly property string duration: text("durationLabel")
    readonly property string distance: text("distanceLabel")
    readonly property string from: text("fromLabel")
    readonly property string to: text("toLabel")
    readonly property string picture: String((cell?.outlet("kindImageView") as ImageViewItem)?.source ?? "")
    readonly property bool known: picture !== ""
    readonly property bool parking: picture.includes("parking")
    readonly property color tint: !known ? Theme.accent : parking ? Theme.parking : Theme.driving

    function text(name) {
        return (cell?.outlet(name) as LabelItem)?.text ?? "";
    }

    separated: false
    implicitHeight: !Theme.large ? 0 : card.anchors.topMargin + head.y + head.height + 2 * way.anchors.topMargin + ends.count * way.needed + foot.height
    spoken: [status, time, ...ends.model, duration, distance].join(", ")

    Rectangle {
        id: card
        anchors.fill: parent
        anchors.leftMargin: 12
        anchors.rightMargin: 12
        anchors.topMargin: 12
        radius: 14
        color: row.parking ? Theme.parkingPlate : Theme.raised
        border.width: 1
        border.color: Theme.separator

        Rectangle {
            anchors.left: parent.left
            anchors.leftMargin: 8
            y: 14
            width: 5
            height: parent.height - 28
            radius: 2.5
            color: row.tint
        }

        Item {
            id: head
            anchors.left: parent.left
            anchors.leftMargin: 24
            anchors.right: parent.right
            anchors.rightMargin: Theme.margin
            y: 14
            height: Math.max(32, timeText.height) + (Theme.large ? pill.height + 6 : 0) // the status has a separate line

            Image {
                id: kind
                anchors.left: parent.left
                anchors.verticalCenter: timeText.verticalCenter
                width: row.known ? 32 : 0
                height: 32
                source: row.picture
                sourceSize { width: 32; height: 32 }
            }
            PlainText {
                id: timeText
                anchors.left: kind.right
                anchors.leftMargin: row.known ? 8 : 0
                width: Math.min(implicitWidth, parent.width - kind.width - 8 - (Theme.large ? 0 : Math.min(pill.wanted, parent.width * 0.4) + 8))
                height: Math.max(32, implicitHeight)
                verticalAlignment: Text.AlignVCenter
                fontSizeMode: Text.HorizontalFit
                minimumPixelSize: 12
                text: row.clock || row.time
                font.pixelSize: Theme.titleSize + 2
                font.bold: true
            }
            Rectangle {
                id: pill
                readonly property real wanted: statusText.implicitWidth + 24
                anchors.left: Theme.large ? parent.left : undefined
                anchors.right: Theme.large ? undefined : parent.right
                y: Theme.large ? parent.height - height : (parent.height - height) / 2
                width: Math.min(wanted, parent.width - (Theme.large ? 0 : kind.width + timeText.width + 16))
                height: statusText.implicitHeight + 10
                radius: height / 2
                color: row.parking ? Theme.raised : Theme.well
                PlainText {
                    id: statusText
                    anchors.centerIn: parent
                    width: Math.min(implicitWidth, pill.width - 24)
                    text: row.status
                    color: row.tint
                    font.pixelSize: Theme.smallSize + 1
                    font.bold: true
                }
            }
        }

        // The two addresses, joined by a line; a stop has one.
        Item {
            id: way
            readonly property real needed: Math.max(ends.itemAt(0)?.implicitHeight ?? 0, ends.itemAt(1)?.implicitHeight ?? 0)
            anchors.top: head.bottom
            anchors.bottom: foot.top
            anchors.topMargin: 10
            anchors.bottomMargin: 10
            anchors.left: head.left
            anchors.right: head.right

            Rectangle {
                visible: !row.parking
                anchors.horizontalCenter: start.horizontalCenter
                anchors.top: start.bottom
                anchors.bottom: end.top
                width: 2
                color: row.tint
                opacity: 0.45
            }
            Rectangle {
                id: start
                visible: !row.parking
                anchors.left: parent.left
                anchors.leftMargin: 3
                y: parent.height * 0.25 - height / 2
                width: 14
                height: 14
                radius: 7
                color: "transparent"
                border.width: 3
                border.color: row.tint
            }
            Rectangle {
                id: end
                visible: !row.parking
                anchors.left: parent.left
                anchors.leftMargin: 3
                y: parent.height * 0.75 - height / 2
                width: 14
                height: 14
                radius: 7
                color: row.tint
            }
            Repeater {
                id: ends
                model: row.parking ? [row.from] : [row.from, row.to]
                delegate: PlainText {
                    required property int index
                    required property string modelData
                    anchors.left: way.left
                    anchors.leftMargin: row.parking ? 0 : 28
                    anchors.right: way.right
                    y: index * height
                    height: way.height / ends.count
                    verticalAlignment: Text.AlignVCenter
                    text: modelData
                    wrapMode: Text.Wrap
                    maximumLineCount: Theme.large ? 5 : 3
                    font.pixelSize: Theme.bodySize
                }
            }
        }

        Grid {
            id: foot
            readonly property real line: Theme.large ? Theme.bodySize * 1.75 : 56
            columns: Theme.large ? 1 : 2
            anchors.bottom: parent.bottom
            anchors.left: head.left
            anchors.right: head.right
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
        PlainText {
            visible: row.cell?.tappable ?? false
            anchors.right: head.right
            anchors.verticalCenter: foot.verticalCenter
            text: Theme.mirrored ? "‹" : "›"
            color: Theme.accent
            font.pixelSize: Theme.titleSize + 2
            font.bold: true
        }
        Rectangle {
            anchors.bottom: foot.top
            anchors.left: head.left
            anchors.right: head.right
            height: 1
            color: Theme.separator
        }
    }
}
