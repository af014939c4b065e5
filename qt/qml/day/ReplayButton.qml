pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A round button with a picture, or a short text in its place.
Tappable {
    id: root

    property string picture
    property string symbol
    property bool mirror: false
    property bool checkable: false

    width: Theme.touch
    height: Theme.touch
    ringRadius: Theme.touch / 2
    Accessible.checkable: checkable

    Rectangle {
        anchors.fill: parent
        anchors.margins: 4
        radius: width / 2
        color: root.pressed ? Qt.lighter(Theme.brand, 1.4) : Theme.brand
        border.width: root.checkable && root.checked ? 3 : 1
        border.color: root.checkable && root.checked ? Theme.accent : Theme.mapShade
    }
    Image {
        anchors.centerIn: parent
        source: root.picture && `qrc:/images/${root.picture}.svg`
        mirror: root.mirror
        sourceSize { width: 24; height: 24 }
    }
    PlainText {
        anchors.centerIn: parent
        width: parent.width - 12
        horizontalAlignment: Text.AlignHCenter
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: 10
        text: root.symbol
        color: Theme.menuText
        font.pixelSize: 15
        font.bold: true
    }
}
