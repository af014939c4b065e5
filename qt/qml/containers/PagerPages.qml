pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// Pages side by side, in reading order; a horizontal drag turns them, and beyond the ends it gets heavy. A page is loaded
// when it first comes into view.
FocusScope {
    id: pager

    required property ViewControllerItem screen
    readonly property SwipeTabBarControllerItem pages: screen as SwipeTabBarControllerItem
    property int shown: pages.selectedIndex
    property bool turning: false

    function follow() {
        if (!drag.active)
            turn.moveTo(-Theme.forward * pages.selectedIndex * width, turning || pages.animating ? 300 : 0);
    }

    clip: true
    onShownChanged: follow()
    onWidthChanged: {
        turn.stop();
        strip.x = -Theme.forward * pages.selectedIndex * width;
    }

    Item {
        id: strip
        height: parent.height

        Repeater {
            model: pager.pages.children
            delegate: FocusScope {
                id: page

                required property ViewControllerItem screen
                required property int index
                readonly property bool current: index === pager.shown
                readonly property bool seen: x + strip.x < pager.width && x + strip.x > -pager.width
                property bool wasSeen: false

                x: Theme.forward * index * pager.width
                width: pager.width
                height: strip.height
                visible: seen
                enabled: current
                focus: current
                onSeenChanged: wasSeen = wasSeen || seen
                Component.onCompleted: wasSeen = wasSeen || seen

                ScreenLoader {
                    anchors.fill: parent
                    screen: page.wasSeen ? page.screen : null
                    focus: true
                }
            }
        }
    }

    Slide {
        id: turn
        target: strip
        property: "x"
    }

    DragSpeed {
        id: speed
    }

    DragHandler {
        id: drag
        enabled: pager.enabled // not during a drag from the window's edge
        target: null
        yAxis.enabled: false
        property real from: 0
        onActiveChanged: {
            if (active) {
                turn.stop();
                from = strip.x;
                return;
            }
            const moved = Theme.forward * strip.x + pager.pages.selectedIndex * pager.width;
            pager.turning = true;
            pager.pages.endDrag(moved, Theme.forward * speed.atRelease(), pager.width);
            pager.follow();
            pager.turning = false;
        }
        onTranslationChanged: {
            if (!active)
                return;
            speed.follow(centroid.velocity);
            const wanted = Theme.forward * (from + translation.x);
            const x = Math.max(-(pager.pages.count - 1) * pager.width, Math.min(0, wanted));
            const beyond = Math.abs(wanted - x) / pager.width;
            strip.x = Theme.forward * (x + Math.sign(wanted - x) * pager.width * beyond / (1 + 2 * beyond) / 2);
        }
    }
}
