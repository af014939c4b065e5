pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// One entry of the side menu: a picture and a text.
Tappable {
    id: entry

    property ButtonItem button

    height: Math.max(56, words.implicitHeight + 24)
    label: button?.accessibleName ?? ""
    enabled: button?.enabled ?? false
    ringColor: Theme.menuText
    checked: button?.selected ?? false
    Accessible.checkable: checked
    onTapped: button.tap()

    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: 8
        anchors.rightMargin: 8
        radius: 10
        color: Theme.menuText
        opacity: entry.pressed ? 0.24 : entry.checked ? 0.14 : 0
    }

    Image {
        id: picture
        anchors.left: parent.left
        anchors.leftMargin: 24
        anchors.verticalCenter: parent.verticalCenter
        source: entry.button?.image ?? ""
        mirror: Theme.turns(source)
        sourceSize { width: 26; height: 26 }
    }

    PlainText {
        id: words
        anchors.left: picture.right
        anchors.leftMargin: 18
        anchors.right: parent.right
        anchors.rightMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        text: entry.button?.title ?? ""
        wrapMode: Text.Wrap
        color: Theme.menuText
        font.pixelSize: Theme.bodySize + 1
    }
}
