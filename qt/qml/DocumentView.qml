pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// One document, to read and to scroll; a link in it goes to the component.
Flickable {
    id: flick

    property WebViewItem view
    property string label
    property string document: view?.document ?? ""
    readonly property string style: `<style>a { color: ${Theme.accent}; }</style>` // the only way to their colour

    contentWidth: width
    contentHeight: page.height + 2 * Theme.margin
    clip: true
    flickableDirection: Flickable.VerticalFlick
    activeFocusOnTab: true
    Accessible.role: Accessible.WebDocument
    Accessible.name: label
    Accessible.focusable: true
    Keys.onDownPressed: contentY = Math.min(contentY + 60, Math.max(0, contentHeight - height))
    Keys.onUpPressed: contentY = Math.max(0, contentY - 60)
    Keys.onPressed: event => {
        if (event.key === Qt.Key_PageDown || event.key === Qt.Key_Space)
            contentY = Math.min(contentY + height * 0.9, Math.max(0, contentHeight - height));
        else if (event.key === Qt.Key_PageUp)
            contentY = Math.max(0, contentY - height * 0.9);
    }

    Text {
        id: page
        x: Theme.margin + Math.max(0, (flick.width - 720) / 2)
        y: Theme.margin
        width: Math.min(flick.width, 720) - 2 * Theme.margin
        text: flick.style + flick.document
        textFormat: Text.RichText
        wrapMode: Text.Wrap
        color: Theme.text
        font.pixelSize: Theme.bodySize
        lineHeight: 1.15
        onLinkActivated: link => flick.view.tapLink(link)
        Accessible.role: Accessible.StaticText
        Accessible.name: text.replace(/<(head|style)[^]*?<\/\1>|<[^>]*>/g, " ").replace(/\s+/g, " ").trim()
        HoverHandler {
            cursorShape: page.hoveredLink ? Qt.PointingHandCursor : Qt.ArrowCursor
        }
    }

    Rectangle {
        parent: flick
        anchors.right: parent.right
        anchors.rightMargin: 2
        y: flick.visibleArea.yPosition * flick.height
        width: 4
        height: Math.max(24, flick.visibleArea.heightRatio * flick.height)
        radius: 2
        color: Theme.secondaryText
        opacity: flick.moving ? 0.6 : 0
        Behavior on opacity {
            NumberAnimation { duration: 200 }
        }
    }

    Rectangle {
        parent: flick
        anchors.fill: parent
        visible: flick.activeFocus && Person.usesKeys
        color: "transparent"
        border.width: 2
        border.color: Theme.focusRing
    }
}
