pragma ComponentBehavior: Bound
import QtQuick
import Fleetor
import QtQuick.Window

// The window: screens and overlays.
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
    minimumWidth: content.pad ? 620 : 240 // the list on a tablet takes 300
    minimumHeight: 240
    Component.onCompleted: {
        Theme.forceDark = forceDark;
        Theme.appearance = content.appearance;
    }

    Binding {
        target: Theme
        property: "sideways"
        value: main.height < 480 && main.width > main.height
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
            subject: main.content.actionSheet
            enabled: main.content.alert === null
            source: "ActionSheetPanel.qml"
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
