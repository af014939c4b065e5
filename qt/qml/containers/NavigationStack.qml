pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A stack of screens. Pushed ones slide in against the reading direction; a drag from the opposite edge pops the top one.
FocusScope {
    id: stack

    required property ViewControllerItem screen
    readonly property NavigationControllerItem navigation: screen as NavigationControllerItem
    property real drag: 0 // points by which a drag has moved the top screen
    readonly property bool dragging: edge.dragging

    clip: true

    Repeater {
        model: stack.navigation.children
        delegate: FocusScope {
            id: page

            required property ViewControllerItem screen
            property int place: -1
            readonly property bool onTop: place === stack.navigation.depth - 1

            function target() {
                if (place < 0)
                    return Theme.forward * width;
                return onTop ? 0 : -0.3 * Theme.forward * width;
            }

            function follow() {
                place = stack.navigation.indexOf(screen);
                slide.moveTo(target(), stack.navigation.duration);
                if (onTop)
                    focus = true; // within the stack; its container decides whether the stack has it
            }

            width: stack.width
            height: stack.height
            z: place < 0 ? 1000 : place
            visible: onTop || slide.running || stack.dragging
            enabled: onTop && !stack.dragging
            onWidthChanged: if (!slide.running) x = target()

            Component.onCompleted: {
                if (stack.navigation.animating && stack.navigation.indexOf(screen) > 0)
                    x = Theme.forward * width;
                follow();
            }

            Connections {
                target: stack.navigation
                function onChanged() {
                    page.follow();
                }
            }

            Connections {
                target: stack
                function onDragChanged() {
                    if (!stack.dragging && stack.drag > 0)
                        return;
                    if (page.onTop)
                        page.x = Theme.forward * stack.drag;
                    else if (page.place === stack.navigation.depth - 2)
                        page.x = 0.3 * Theme.forward * (stack.drag - page.width);
                }
            }

            Slide {
                id: slide
                target: page
                property: "x"
            }

            Rectangle {
                anchors.fill: parent
                color: Theme.background
            }

            // The screen that lies higher throws a shadow on the lower one, which is dimmer the more of it is covered.
            Rectangle {
                anchors.right: parent.left
                width: 12
                height: parent.height
                visible: page.x !== 0
                rotation: Theme.mirrored ? 180 : 0
                gradient: Gradient {
                    orientation: Gradient.Horizontal
                    GradientStop { position: 0; color: "transparent" }
                    GradientStop { position: 1; color: Theme.shadow }
                }
            }
            Rectangle {
                anchors.fill: parent
                z: 3
                visible: opacity > 0
                opacity: Math.max(0, -Theme.forward * page.x / (0.3 * page.width))
                color: Theme.shadow
            }

            NavigationBar {
                id: bar
                width: parent.width
                z: 2
                title: page.screen?.title ?? ""
                leftItems: page.screen?.leftItems ?? []
                rightItems: page.screen?.rightItems ?? []
                backButton: page.place > 0
                backLabel: stack.navigation.backLabel
                onBackTapped: stack.navigation.pop()
            }

            ScreenLoader {
                anchors.fill: parent
                anchors.topMargin: bar.height
                screen: page.screen
                focus: true
            }
        }
    }

    EdgeDrag {
        id: edge
        anchors.left: parent.left
        width: 24
        height: parent.height
        z: 2000
        enabled: stack.navigation.depth > 1
        onMovedChanged: stack.drag = Math.max(0, moved)
        // The pages follow the stack again: after the pop the one below is on top.
        onEnded: speed => {
            if (!stack.navigation.endDrag(stack.drag, speed, stack.width))
                stack.drag = 0;
        }
    }
}
