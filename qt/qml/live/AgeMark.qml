pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// How old something is: a dot in the colour of the freshness, and the age.
Row {
    id: root

    property ImageViewItem mark
    property LabelItem age
    readonly property string words: age?.text ?? ""

    spacing: 6
    visible: words !== ""

    Image {
        anchors.verticalCenter: parent.verticalCenter
        source: root.mark?.source ?? ""
        sourceSize { width: 12; height: 12 }
    }
    PlainText {
        anchors.verticalCenter: parent.verticalCenter
        text: root.words
        color: Theme.secondaryText
        font.pixelSize: Theme.smallSize
    }
}
