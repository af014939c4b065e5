pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The ground, over a map that has nothing to show: a spinner while something is to come, and a word.
Rectangle {
    id: root

    property bool busy: false
    property string words

    color: Theme.mapGround

    Column {
        anchors.centerIn: parent
        width: parent.width - 2 * Theme.margin
        spacing: Theme.margin

        Spinner {
            anchors.horizontalCenter: parent.horizontalCenter
            running: root.busy
        }
        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: root.words
            textFormat: Text.PlainText
            color: Theme.text
            font.pixelSize: Theme.bodySize
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}
