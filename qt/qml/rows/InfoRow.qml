pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A value over its caption.
RowBody {
    id: row

    readonly property LabelItem value: cell?.outlet("textLabel") as LabelItem
    readonly property LabelItem caption: cell?.outlet("detailTextLabel") as LabelItem

    spoken: captionText.text + ": " + valueText.text

    implicitHeight: lines.height + 20

    FontMetrics {
        id: metrics
        font: captionText.font
    }
    Column {
        id: lines
        anchors.left: parent.left
        anchors.leftMargin: Theme.margin
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        spacing: Math.round(Math.min(0, 1.2 * Theme.smallSize - metrics.height)) // the rows are low, and some typefaces tall

        PlainText {
            id: valueText
            width: parent.width
            text: row.value?.text ?? ""
            wrapMode: Theme.large ? Text.Wrap : Text.NoWrap
            maximumLineCount: Theme.large ? 4 : 1
            fontSizeMode: Theme.large ? Text.FixedSize : Text.HorizontalFit
            minimumPixelSize: 12
            font.weight: Font.Medium
        }
        PlainText {
            id: captionText
            width: parent.width
            text: row.caption?.text ?? ""
            wrapMode: Theme.large ? Text.Wrap : Text.NoWrap
            maximumLineCount: Theme.large ? 2 : 1
            color: Theme.secondaryText
            font.pixelSize: Theme.smallSize
        }
    }
}
