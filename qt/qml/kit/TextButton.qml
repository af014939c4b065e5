pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A button that is a text, or a symbol in its place.
Tappable {
    id: root

    property string symbol

    implicitWidth: Math.max(Theme.touch, word.implicitWidth + 24)
    height: Theme.touch

    Rectangle {
        anchors.fill: parent
        radius: 8
        color: root.pressed ? Theme.pressed : "transparent"
    }

    PlainText {
        id: word
        anchors.centerIn: parent
        width: parent.width - 24
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: 12
        text: root.symbol || root.label
        color: Theme.accent
        font.pixelSize: root.symbol ? Theme.titleSize + 2 : Theme.bodySize
        font.bold: true
    }
}
