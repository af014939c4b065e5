pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The card of a vehicle on the board: picture, name and speed, what it does and how old that is, the address, and a button
// that lets the map follow it.
RowBody {
    id: row

    readonly property ImageViewItem photo: cell?.outlet("photoImageView") as ImageViewItem
    readonly property ImageViewItem course: cell?.outlet("courseImageView") as ImageViewItem
    readonly property LabelItem name: cell?.outlet("textLabel") as LabelItem
    readonly property LabelItem address: cell?.outlet("detailTextLabel") as LabelItem
    readonly property LabelItem motion: cell?.outlet("motionLabel") as LabelItem
    readonly property LabelItem speed: cell?.outlet("speedLabel") as LabelItem
    readonly property ButtonItem follow: cell?.outlet("followButton") as ButtonItem

    spoken: cell?.accessibleName ?? ""
    implicitHeight: lines.height + 16

    Rectangle {
        id: disc
        anchors.left: parent.left
        anchors.leftMargin: 14
        anchors.verticalCenter: parent.verticalCenter
        width: 46
        height: 46
        radius: 23
        color: Theme.well
        border.width: 3
        border.color: row.photo?.ringColor ?? "transparent"

        OutlinedPicture {
            anchors.centerIn: parent
            picture: row.photo?.source ?? ""
            sourceSize { width: 32; height: 32 }
        }
        Item {
            anchors.centerIn: parent
            width: 46
            height: 46
            visible: (row.course?.source ?? "") != ""
            rotation: row.course?.rotation ?? 0

            Image {
                anchors.horizontalCenter: parent.horizontalCenter
                y: -9
                source: "qrc:/images/course.svg"
                sourceSize { width: 15; height: 15 }
            }
        }
    }

    Column {
        id: lines
        anchors.left: disc.right
        anchors.leftMargin: 14
        anchors.right: button.left
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        MarkedText {
            label: row.name
            wraps: true
            font.weight: Font.DemiBold
        }
        Flow {
            width: parent.width
            spacing: 8

            PlainText {
                visible: text !== ""
                text: row.speed?.text ?? ""
                color: row.speed?.faded ? Theme.secondaryText : Theme.text
                font.pixelSize: Theme.smallSize + 1
                font.weight: Font.DemiBold
            }
            PlainText {
                visible: text !== ""
                text: row.motion?.text ?? ""
                font.pixelSize: Theme.smallSize + 1
            }
            AgeMark {
                mark: row.cell?.outlet("ageImageView") as ImageViewItem
                age: row.cell?.outlet("ageLabel") as LabelItem
            }
        }
        RowText {
            wraps: true
            mostLines: 5
            visible: text !== ""
            text: row.address?.text ?? ""
            color: Theme.secondaryText
            font.pixelSize: Theme.smallSize
        }
    }

    Tappable {
        id: button
        anchors.right: parent.right
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.touch
        height: Theme.touch
        tabStop: row.current
        label: row.follow?.accessibleName ?? ""
        checked: row.follow?.selected ?? false
        Accessible.checkable: true
        onTapped: row.follow.tap()

        Rectangle {
            anchors.fill: parent
            anchors.margins: 4
            radius: 10
            color: button.pressed || button.checked ? Theme.pressed : "transparent"
        }
        Image {
            anchors.centerIn: parent
            source: row.follow?.image ?? ""
            sourceSize { width: 24; height: 24 }
        }
    }
}
