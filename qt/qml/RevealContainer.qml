pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The side-menu container: the front screen moves to the right and lets the rear one be seen.
FocusScope {
    id: container

    required property ViewControllerItem screen
    readonly property RevealControllerItem reveal: screen as RevealControllerItem
    readonly property real place: reveal.front?.frameX ?? 0

    function follow() {
        if (drag.dragging)
            return;
        if (reveal.animating && front.x !== place) {
            slide.duration = reveal.duration;
            slide.to = place;
            slide.restart();
        } else if (!slide.running || slide.to !== place) {
            slide.stop();
            front.x = place;
        }
    }

    function giveKeys() {
        if (enabled)
            (menuOpen ? rear : front).forceActiveFocus();
    }

    // Keys go to the menu while the screen beside it takes nothing.
    readonly property bool menuOpen: reveal.open && !(reveal.front?.interactive ?? true)
    onMenuOpenChanged: giveKeys()

    clip: true
    onPlaceChanged: follow()

    Rectangle {
        anchors.fill: parent
        color: Theme.background
    }

    ScreenLoader {
        id: rear
        width: Math.min(container.reveal.rearWidth, container.width)
        height: parent.height
        visible: front.x > 0
        enabled: container.reveal.open
        screen: container.reveal.rear
    }

    FocusScope {
        id: front
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
            width: container.reveal.draggableBorderWidth || parent.width
            height: parent.height
            // Further in on a deeper screen, a drag turns pages or goes back.
            enabled: container.reveal.panShouldBegin(1) && ((container.reveal.front as NavigationControllerItem)?.depth ?? 1) === 1
            onBegun: {
                container.reveal.beginPan();
                slide.stop();
                drag.from = front.x;
            }
            onMovedChanged: front.x = Math.max(0, Math.min(container.reveal.rearWidth, drag.from + moved))
            onEnded: {
                const open = front.x > container.reveal.rearWidth / 2;
                container.reveal.pan(open);
                slide.duration = 200;
                slide.to = open ? container.reveal.rearWidth : 0;
                slide.restart();
            }
        }
    }

    NumberAnimation {
        id: slide
        target: front
        property: "x"
        easing.type: Easing.OutCubic
    }
}
