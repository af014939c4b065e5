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
    Component.onCompleted: Theme.forceDark = forceDark

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

        Loader {
            anchors.fill: parent
            active: main.content.datePicker !== null
            source: active ? "DatePickerSheet.qml" : ""
            onLoaded: {
                item.window = main.content;
                item.picker = main.content.datePicker;
                item.forceActiveFocus();
            }
        }

        Loader {
            id: alertLoader
            anchors.fill: parent
            active: main.content.alert !== null
            source: active ? "AlertPanel.qml" : ""
            onLoaded: {
                item.alert = Qt.binding(() => main.content.alert);
                item.forceActiveFocus();
            }
        }

        ProgressLine {
            width: parent.width
            overlay: main.content.progressOverlay
        }

        Loader {
            anchors.fill: parent
            active: main.content.toast !== null
            source: active ? "ToastView.qml" : ""
            onLoaded: item.toast = Qt.binding(() => main.content.toast)
        }
    }
}
