pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// Above what is known from before: how old that is. Assistive technology hears it when it appears.
Rectangle {
    id: band

    property LabelItem line
    readonly property string words: line?.text ?? ""

    height: age.height + 16
    color: Theme.well

    PlainText {
        id: age
        x: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width - 2 * Theme.margin
        text: band.words
        color: Theme.secondaryText
        font.pixelSize: Theme.smallSize + 1
        font.weight: Font.DemiBold
        wrapMode: Text.Wrap
        Accessible.ignored: false
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    Voice {
        words: band.words
        topic: band.words === "" ? "" : "offline"
        heard: band.visible
    }
    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.separator
    }
}
