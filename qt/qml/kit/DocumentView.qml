pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A document that scrolls. A tap on a link goes to the component.
Flickable {
    id: flick

    property WebViewItem view
    property string label
    property string document: view?.document ?? ""
    readonly property string style: `<style>a { color: ${Theme.accent}; } p, li, h2, h3, td, th { line-height: 115%; }</style>`
    property var links: []

    function scrollTo(top) {
        contentY = Math.max(0, Math.min(top, contentHeight - height));
    }

    // Scrolls the link into view, with one line above or below it.
    function show(link) {
        const top = page.y + link.y;
        scrollTo(Math.max(Math.min(contentY, top - Theme.bodySize), top + link.height + Theme.bodySize - height));
    }

    contentWidth: width
    contentHeight: page.height + 2 * Theme.margin
    clip: true
    flickableDirection: Flickable.VerticalFlick
    activeFocusOnTab: true
    Accessible.role: Accessible.WebDocument
    Accessible.name: label
    Accessible.focusable: true
    Keys.onDownPressed: scrollTo(contentY + 60)
    Keys.onUpPressed: scrollTo(contentY - 60)
    Keys.onPressed: event => {
        if (event.key === Qt.Key_PageDown || event.key === Qt.Key_Space)
            scrollTo(contentY + height * 0.9);
        else if (event.key === Qt.Key_PageUp)
            scrollTo(contentY - height * 0.9);
    }

    TextEdit {
        id: page

        function findLinks() {
            flick.links = flick.view?.linksOf(textDocument) ?? [];
        }

        x: Theme.margin + Math.max(0, (flick.width - 720) / 2)
        y: Theme.margin
        width: Math.min(flick.width, 720) - 2 * Theme.margin
        text: flick.style + flick.document
        textFormat: TextEdit.RichText
        wrapMode: TextEdit.Wrap
        readOnly: true
        selectByMouse: false
        activeFocusOnPress: false
        color: Theme.text
        font.pixelSize: Theme.bodySize
        Accessible.role: Accessible.StaticText
        Accessible.name: text.replace(/<(head|style)[^]*?<\/\1>|<[^>]*>/g, " ").replace(/\s+/g, " ").trim()
        onWidthChanged: findLinks()
        onContentSizeChanged: findLinks()
        TapHandler {
            onTapped: point => {
                const url = page.linkAt(point.position.x, point.position.y);
                if (url)
                    flick.view.tapLink(url);
            }
        }
        HoverHandler {
            cursorShape: page.hoveredLink ? Qt.PointingHandCursor : Qt.ArrowCursor
        }

        // For keys and assistive technology each link is a separate item that lies over its text.
        Repeater {
            model: flick.links.length
            delegate: Item {
                id: link
                required property int index
                readonly property var target: flick.links[index]
                readonly property var places: target?.places ?? []
                readonly property real end: Math.max(0, ...places.map(place => place.right))

                function open() {
                    flick.view.tapLink(target.url);
                }

                x: Math.min(page.width, ...places.map(place => place.left))
                y: places[0]?.top ?? 0
                width: end - x
                height: (places[places.length - 1]?.bottom ?? y) - y
                activeFocusOnTab: true
                onActiveFocusChanged: if (activeFocus) flick.show(link)
                Accessible.role: Accessible.Link
                Accessible.name: target?.text ?? ""
                Accessible.focusable: true
                Accessible.onPressAction: open()
                Keys.onReturnPressed: open()
                Keys.onEnterPressed: open()
                Keys.onSpacePressed: open()

                Repeater {
                    model: link.places
                    delegate: FocusRing {
                        required property rect modelData
                        target: link
                        x: modelData.x - link.x - 3
                        y: modelData.y - link.y - 1
                        width: modelData.width + 6
                        height: modelData.height + 2
                        radius: 4
                    }
                }
            }
        }
    }

    ScrollMark {
        view: flick
    }

    FocusRing {
        parent: flick
        anchors.fill: parent
    }
}
