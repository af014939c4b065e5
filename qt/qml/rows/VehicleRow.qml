pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A vehicle: picture, name and, on a second line, registration.
RowBody {
    id: row

    readonly property LabelItem nameLabel: cell?.outlet("nameLabel") as LabelItem
    readonly property ImageViewItem photo: cell?.outlet("photoImageView") as ImageViewItem
    readonly property string name: nameLabel?.text ?? ""
    readonly property int cut: name.indexOf("\n")

    spoken: name.replace("\n", " ")

    Rectangle {
        id: disc
        anchors.left: parent.left
        anchors.leftMargin: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        width: 48
        height: 48
        radius: 24
        color: Theme.well
        Image {
            anchors.centerIn: parent
            source: row.photo?.source ?? ""
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
        RowText {
            text: row.cut < 0 ? row.name : row.name.substring(0, row.cut)
            font.weight: Font.DemiBold
        }
        RowText {
            visible: row.cut >= 0
            text: row.name.substring(row.cut + 1)
            color: Theme.secondaryText
            font.pixelSize: Theme.smallSize + 1
        }
    }
}
