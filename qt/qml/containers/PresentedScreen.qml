pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The root screen, or one presented over it: full size from below, or as a panel on a tablet.
AccessibleLayer {
    id: presented

    required property WindowItem window
    required property ViewControllerItem screen
    required property int index

    readonly property bool sheet: index > 0 && (screen?.sheet ?? false)
    readonly property bool topmost: index === window.screens.count - 1
    property bool isOpen: index === 0
    property bool leaving: false
    property int duration: 0

    function follow() {
        const milliseconds = Theme.motion(window.presentationDuration());
        if (milliseconds > 0)
            duration = milliseconds;
        leaving = window.leaving(screen);
    }

    focus: true
    visible: !(screen?.covered ?? false)
    Accessible.role: Accessible.Pane
    onEnabledChanged: if (enabled) forceActiveFocus() // what lay over it has gone, and the keys with it

    Component.onCompleted: {
        follow();
        if (index > 0)
            isOpen = true;
        else
            fadeIn.start();
        forceActiveFocus();
    }

    Connections {
        target: presented.window
        function onChanged() {
            presented.follow();
        }
    }

    NumberAnimation {
        id: fadeIn
        target: panel
        property: "opacity"
        from: 0.4
        to: 1
        duration: Theme.motion(150)
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.dim
        visible: presented.sheet
        opacity: presented.isOpen && !presented.leaving ? 1 : 0
        Behavior on opacity {
            NumberAnimation { duration: presented.duration }
        }
        MouseArea {
            anchors.fill: parent
        }
    }

    Rectangle {
        id: panel
        width: presented.sheet ? Math.min(540, parent.width) : parent.width
        height: presented.sheet ? Math.min(620, parent.height - 32) : parent.height
        x: (parent.width - width) / 2
        y: presented.isOpen && !presented.leaving ? (parent.height - height) / 2 : parent.height
        color: Theme.background
        radius: presented.sheet ? 12 : 0

        Behavior on y {
            enabled: presented.index > 0 && presented.duration > 0
            NumberAnimation {
                duration: presented.duration
                easing.type: Easing.OutCubic
            }
        }

        // What a sheet shows has corners of its own: it keeps clear of the round ones, under a lip in the bar's colour.
        Rectangle {
            visible: presented.sheet
            width: parent.width
            height: 2 * panel.radius
            radius: panel.radius
            color: Theme.bar
        }
        ScreenLoader {
            anchors.fill: parent
            anchors.topMargin: presented.sheet ? panel.radius : 0
            // What a keyboard covers stays free.
            anchors.bottomMargin: Math.max(presented.window.keyboardHeight, panel.radius)
            screen: presented.screen
            focus: true
        }
    }
}
