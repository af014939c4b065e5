pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A vehicle: its picture, its name and its registration.
RowBody {
    id: row

    readonly property LabelItem fullName: cell?.outlet("nameLabel") as LabelItem
    readonly property LabelItem name: cell?.outlet("textLabel") as LabelItem
    readonly property LabelItem registration: cell?.outlet("detailTextLabel") as LabelItem
    readonly property ImageViewItem photo: cell?.outlet("photoImageView") as ImageViewItem

    readonly property LabelItem reading: cell?.outlet("readingLabel") as LabelItem // may be empty

    spoken: [fullName?.text.replace("\n", " ") ?? "", reading?.text ?? ""].filter(Boolean).join(", ")

    Rectangle {
        id: disc
        anchors.left: parent.left
        anchors.leftMargin: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        width: 48
        height: 48
        radius: 24
        color: Theme.disc
        OutlinedPicture {
            anchors.centerIn: parent
            picture: row.photo?.source ?? ""
            sourceSize { width: 36; height: 36 }
        }
    }

    implicitHeight: Theme.large ? lines.height + 20 : 0

    Column {
        id: lines
        anchors.left: disc.right
        anchors.leftMargin: 14
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2
        MarkedText {
            visible: text !== ""
            label: row.name
            font.weight: Font.DemiBold
        }
        Item {
            width: parent.width
            readonly property real secondHeight: second.text === "" ? 0 : second.height
            readonly property real latestHeight: latest.text === "" ? 0 : latest.height
            height: Theme.large ? secondHeight + latestHeight : Math.max(secondHeight, latestHeight)
            visible: second.text !== "" || latest.text !== ""

            MarkedText {
                id: second
                anchors.left: parent.left
                width: parent.width - (latest.text === "" || Theme.large ? 0 : latest.width + 8)
                visible: text !== ""
                label: row.registration
                color: Theme.secondaryText
                font.pixelSize: Theme.smallSize + 1
            }
            PlainText {
                id: latest
                anchors.right: parent.right
                y: Theme.large ? parent.secondHeight : 0
                width: Theme.large ? parent.width : implicitWidth
                visible: text !== ""
                text: row.reading?.text ?? ""
                color: Theme.secondaryText
                font.pixelSize: Theme.smallSize
            }
        }
    }
}
