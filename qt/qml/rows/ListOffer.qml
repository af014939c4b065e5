pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// Below a list, or alone where it would be: what it lacks, and a button to do something about it.
Rectangle {
    id: offer

    property ImageViewItem image // shown where the offer is alone
    property LabelItem line
    property ButtonItem button
    property bool alone: false
    readonly property bool pictured: alone && String(image?.source ?? "") !== ""

    visible: words.text !== "" || pictured
    height: content.height + 16
    color: alone ? "transparent" : Theme.raised

    Rectangle {
        visible: !offer.alone
        width: parent.width
        height: 1
        color: Theme.separator
    }
    // Side by side while there is room.
    Grid {
        id: content
        anchors.centerIn: parent
        columns: !offer.alone && words.implicitWidth + again.implicitWidth < offer.width ? 2 : 1
        horizontalItemAlignment: Grid.AlignHCenter
        verticalItemAlignment: Grid.AlignVCenter
        Image {
            visible: offer.pictured
            source: offer.image?.source ?? ""
            sourceSize { width: 96; height: 96 }
        }
        PlainText {
            id: words
            visible: text !== ""
            width: Math.min(implicitWidth, offer.width - 2 * Theme.margin)
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: offer.line?.text ?? ""
            color: Theme.secondaryText
            Accessible.ignored: false
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        TextButton {
            id: again
            width: Math.min(implicitWidth, offer.width)
            label: offer.button?.title ?? ""
            onTapped: offer.button.tap()
        }
    }
}
