pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A value over its caption.
RowBody {
    id: row

    readonly property LabelItem value: cell?.outlet("textLabel") as LabelItem
    readonly property LabelItem caption: cell?.outlet("detailTextLabel") as LabelItem

    spoken: captionText.text + ": " + valueText.text

    // Somewhat smaller letters do, or it takes more lines.
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
    Column {
        id: lines
        anchors.left: parent.left
        anchors.leftMargin: Theme.margin
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        spacing: Math.round(Math.min(0, 1.2 * Theme.smallSize - metrics.height)) // the rows are low, and some typefaces tall

        RowText {
            id: valueText
            text: row.value?.text ?? ""
            wraps: Theme.large || row.overflows
            mostLines: 4
            fontSizeMode: wraps ? Text.FixedSize : Text.HorizontalFit
            minimumPixelSize: 12
            font.weight: Font.Medium
        }
        RowText {
            id: captionText
            text: row.caption?.text ?? ""
            mostLines: 2
            color: Theme.secondaryText
            font.pixelSize: Theme.smallSize
        }
    }
}
