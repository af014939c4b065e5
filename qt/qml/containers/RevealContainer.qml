pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The side-menu container: the front screen moves aside and reveals the rear one.
FocusScope {
    id: container

    required property ViewControllerItem screen
    readonly property RevealControllerItem reveal: screen as RevealControllerItem
    readonly property real place: reveal.front?.frameX ?? 0
    property real shift: 0 // how far the front screen has moved

    function follow() {
        if (!drag.dragging)
            slide.moveTo(place, reveal.duration);
    }

    function giveKeys() {
        if (enabled)
            (menuOpen ? rear : front).forceActiveFocus();
    }

    // Keys go to the menu while the screen beside it takes nothing.
    readonly property bool menuOpen: reveal.open && !(reveal.front?.interactive ?? true)
    onMenuOpenChanged: giveKeys()

    // Beside a list from which nothing has been opened yet there is nothing for them.
    readonly property bool listAlone: reveal.open && !(reveal.front instanceof NavigationControllerItem)
    onListAloneChanged: if (listAlone) rear.focus = true

    clip: true
    onPlaceChanged: follow()

    Rectangle {
        anchors.fill: parent
        color: Theme.background
    }

    ScreenLoader {
        id: rear
        anchors.left: parent.left
        width: Math.min(container.reveal.rearWidth, container.width)
        height: parent.height
        visible: container.shift > 0
        enabled: container.reveal.open
        screen: container.reveal.rear
    }

    FocusScope {
        id: front
        x: Theme.mirrored ? container.width - width - container.shift : container.shift
        width: (container.reveal.front?.frameWidth ?? 0) || container.width
        height: parent.height
        focus: true

        Rectangle {
            anchors.fill: parent
            anchors.leftMargin: -1
            color: Theme.separator
        }
        ScreenLoader {
            anchors.fill: parent
            screen: container.reveal.front
            enabled: (screen?.interactive ?? false) && !drag.dragging
            focus: true
        }
        MouseArea {
            anchors.fill: parent
            enabled: container.reveal.open && container.reveal.tapShouldBegin() && !drag.dragging
            visible: enabled
            onClicked: container.reveal.tapFront()
        }
        EdgeDrag {
            id: drag
            property real from: 0
            anchors.left: parent.left
            width: container.reveal.draggableBorderWidth || parent.width
            height: parent.height
            // Further in on a deeper screen, a drag turns pages or goes back.
            enabled: container.reveal.panShouldBegin(1) && ((container.reveal.front as NavigationControllerItem)?.depth ?? 1) === 1
            onBegun: {
                container.reveal.beginPan();
                slide.stop();
                drag.from = container.shift;
            }
            onMovedChanged: container.shift = Math.max(0, Math.min(container.reveal.rearWidth, drag.from + moved))
            onEnded: speed => {
                container.reveal.endPan(container.shift - container.place, speed);
                slide.moveTo(container.place, 200);
            }
        }
    }

    Slide {
        id: slide
        target: container
        property: "shift"
    }
}
