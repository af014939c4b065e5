pragma ComponentBehavior: Bound
import QtQuick
import Fleetor
import QtQuick.Window

// The one window: screens, what lies over them, and the way back.
Window {
    id: main

    required property WindowItem content
    property bool forceDark: false

    function back() {
        return content.goBack();
    }

    title: "Fleetor"
    visible: true
    color: Theme.background
    minimumWidth: content.pad ? 620 : 240 // a tablet's list has 300 of them
    minimumHeight: 240
    Component.onCompleted: {
        Theme.forceDark = forceDark;
        Theme.appearance = content.appearance;
    }

    Item {
        id: base
        anchors.fill: parent
        focus: true
        LayoutMirroring.enabled: Theme.mirrored
        LayoutMirroring.childrenInherit: true
        Keys.onEscapePressed: event => event.accepted = main.back()
        Keys.onBackPressed: event => event.accepted = main.back()

        Repeater {
            model: main.content.screens
            delegate: PresentedScreen {
                window: main.content
                anchors.fill: parent
                enabled: !main.content.blocked && topmost
            }
        }

        OverlayLoader {
            anchors.fill: parent
            window: main.content
            subject: main.content.datePicker
            enabled: main.content.alert === null
            source: "DatePickerSheet.qml"
        }

        OverlayLoader {
            anchors.fill: parent
            window: main.content
            subject: main.content.alert
            source: "AlertPanel.qml"
        }

        ProgressLine {
            width: parent.width
            overlay: main.content.progressOverlay
        }

        OverlayLoader {
            anchors.fill: parent
            window: main.content
            subject: main.content.toast
            modal: false
            source: "ToastView.qml"
        }
    }
}
