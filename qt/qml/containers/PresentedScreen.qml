pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The root screen, or one presented over it: it slides in from below, full size or, on a tablet, as a sheet.
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
    onEnabledChanged: if (enabled) forceActiveFocus() // the screen over it had the focus

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

        // The content of a sheet has square corners: it starts below the round ones, under a strip in the bar's
        // colour where it has a bar.
        Rectangle {
            visible: presented.sheet && (presented.screen instanceof NavigationControllerItem || presented.screen?.identifier === "FindVC")
            width: parent.width
            height: 2 * panel.radius
            radius: panel.radius
            color: Theme.bar
        }
        ScreenLoader {
            anchors.fill: parent
            anchors.topMargin: presented.sheet ? panel.radius : 0
            // Above an on-screen keyboard.
            anchors.bottomMargin: Math.max(presented.window.keyboardHeight, panel.radius)
            screen: presented.screen
            focus: true
        }
    }
}
