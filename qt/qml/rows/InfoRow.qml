pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A value over its caption; before it a picture of what it is, where there is room, and after it a note on it. Where a tap
// does something, the value is coloured and a picture at the end shows what.
RowBody {
    id: row

    readonly property LabelItem value: cell?.outlet("textLabel") as LabelItem
    readonly property LabelItem caption: cell?.outlet("detailTextLabel") as LabelItem
    readonly property ImageViewItem link: cell?.outlet("linkImageView") as ImageViewItem

    spoken: captionText.text + ": " + valueText.text + (note.visible ? ", " + note.words : "")
    hint: link?.accessibleName ?? ""

    // Even in the smallest letters the value does not fit one line: it takes more.
    readonly property bool overflows: smallest.advanceWidth(valueText.text) > lines.width

    implicitHeight: valueText.wraps ? lines.height + 20 : 0

    FontMetrics {
        id: metrics
        font: captionText.font
    }
    FontMetrics {
        id: smallest
        font.pixelSize: valueText.minimumPixelSize
        font.weight: valueText.font.weight
    }
    Image {
        id: picture
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        visible: row.hint !== ""
        source: row.link?.source ?? ""
        sourceSize { width: 24; height: 24 }
    }
    Column {
        id: lines
        anchors.left: parent.left
        anchors.leftMargin: Theme.margin + (symbol.visible ? 62 : 0) // where the text of a vehicle's row begins
        anchors.right: picture.visible ? picture.left : parent.right
        anchors.rightMargin: picture.visible ? 12 : Theme.margin + (note.visible ? note.width + 8 : 0)
        anchors.verticalCenter: parent.verticalCenter
        spacing: Math.round(Math.min(0, 1.2 * Theme.smallSize - metrics.height)) // the rows are low, and some typefaces tall

        RowText {
            id: valueText
            text: row.value?.text ?? ""
            wraps: Theme.large || row.overflows
            mostLines: 4
            fontSizeMode: wraps ? Text.FixedSize : Text.HorizontalFit
            minimumPixelSize: 12
            color: row.value?.faded ? Theme.secondaryText : picture.visible ? Theme.accent : Theme.text
            font.weight: Font.DemiBold
        }
        RowText {
            id: captionText
            text: row.caption?.text ?? ""
            mostLines: 2
            color: Theme.secondaryText
            font.pixelSize: Theme.smallSize
        }
    }

    AgeMark {
        id: note
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        age: row.cell?.outlet("noteLabel") as LabelItem
        mark: row.cell?.outlet("noteImageView") as ImageViewItem
    }

    Image {
        id: symbol

        readonly property string image: String((row.cell?.outlet("pictureImageView") as ImageViewItem)?.source ?? "")

        anchors.left: parent.left
        anchors.leftMargin: Theme.margin + 13
        anchors.verticalCenter: parent.verticalCenter
        visible: image !== "" && !(Theme.large && row.width < 480)
        source: image
        sourceSize { width: 22; height: 22 }
    }
}
