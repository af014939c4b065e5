pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The root screen, or one presented over it: full size from below, or as a panel on a tablet.
FocusScope {
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
        const milliseconds = window.presentationDuration();
        if (milliseconds > 0)
            duration = milliseconds;
        leaving = window.leaving(screen);
    }

    focus: true
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
        duration: 150
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
        clip: presented.sheet

        Behavior on y {
            enabled: presented.index > 0 && presented.duration > 0
            NumberAnimation {
                duration: presented.duration
                easing.type: Easing.OutCubic
            }
        }

        ScreenLoader {
            anchors.fill: parent
            anchors.margins: presented.sheet ? 1 : 0
            anchors.bottomMargin: presented.window.keyboardHeight // what a keyboard covers stays free
            screen: presented.screen
            focus: true
        }
    }
}
