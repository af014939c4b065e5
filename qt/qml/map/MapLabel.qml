pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A line of text at a map's edge.
Rectangle {
    id: root

    property string text
    property int role: Accessible.StaticText

    width: Math.min(words.implicitWidth + 12, parent.width)
    height: words.height + 6
    visible: text !== ""
    color: Theme.mapLabel
    Accessible.role: role
    Accessible.name: text

    PlainText {
        id: words
        anchors.centerIn: parent
        width: Math.min(implicitWidth, root.parent.width - 12)
        text: root.text
        font.pixelSize: Math.round(13 * Math.min(Theme.scale, 1.4)) - 2 // the map has to stay in sight
        wrapMode: Text.Wrap
    }
}
