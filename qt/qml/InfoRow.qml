pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// One reading: its caption at the left, its value at the right.
RowBody {
    id: row

    readonly property LabelItem value: cell?.outlet("textLabel") as LabelItem
    readonly property LabelItem caption: cell?.outlet("detailTextLabel") as LabelItem

    spoken: captionText.text + ": " + valueText.text

    Text {
        id: captionText
        anchors.left: parent.left
        anchors.leftMargin: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, parent.width * 0.45)
        text: row.caption?.text ?? ""
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: Theme.secondaryText
        font.pixelSize: Theme.smallSize + 1
        Accessible.ignored: true
    }

    Text {
        id: valueText
        anchors.left: captionText.right
        anchors.leftMargin: 12
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        height: parent.height - 4
        horizontalAlignment: Text.AlignRight
        verticalAlignment: Text.AlignVCenter
        text: row.value?.text ?? ""
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        elide: Text.ElideRight
        maximumLineCount: 2
        fontSizeMode: Text.Fit
        minimumPixelSize: 11
        color: Theme.text
        font.pixelSize: Theme.bodySize
        font.weight: Font.Medium
        Accessible.ignored: true
    }
}
