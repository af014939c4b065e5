pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A button of a bar: a picture or a text.
Tappable {
    id: root

    property ButtonItem button
    readonly property bool hasImage: (button?.image.toString() ?? "") !== ""

    width: hasImage ? Theme.touch : word.implicitWidth + 24
    height: Theme.touch
    visible: button !== null && !(button?.flexibleSpace ?? false)
    enabled: button?.enabled ?? false
    label: button?.accessibleName ?? ""
    ringColor: Theme.barMark
    opacity: pressed ? 0.5 : 1
    onTapped: button.tap()
    onButtonChanged: if (button) button.drawing = root

    OutlinedPicture {
        anchors.centerIn: parent
        visible: root.hasImage
        picture: root.button?.image ?? ""
        ground: Theme.barGround
        mirror: Theme.turns(picture)
        sourceSize { width: 28; height: 28 }
    }

    PlainText {
        id: word
        anchors.centerIn: parent
        visible: !root.hasImage
        text: root.button?.title ?? ""
        color: Theme.barButton
        style: Text.Outline
        styleColor: Theme.barEdge
        font.pixelSize: Theme.bodySize + 1
        font.bold: true
    }
}
