pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// Covers a map that has nothing to show yet: the ground, a spinner while something loads, and a note.
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
        PlainText {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: root.words
            wrapMode: Text.Wrap
            Accessible.ignored: false
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}
