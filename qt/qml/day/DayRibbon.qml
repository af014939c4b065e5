pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The 24 hours of a day as one line: drives high, stops low, nothing where nothing is known. A tap, a drag or a key chooses a
// moment.
Item {
    id: root

    property TimeRibbonItem ribbon
    readonly property bool shown: !(ribbon?.empty ?? true)
    readonly property string description: ribbon?.description ?? ""
    readonly property real moment: ribbon?.moment ?? -1
    readonly property real mark: ribbon?.mark ?? -1
    // What assistive technology reads and sets, in seconds.
    readonly property real minimumValue: 0
    readonly property real maximumValue: 86400
    readonly property real stepSize: 60
    property real value

    function place(share) {
        return track.x + track.width * (Theme.mirrored ? 1 - share : share);
    }

    height: shown ? Math.max(Theme.touch, hours.y + hours.height + 4) : 0
    visible: shown
    activeFocusOnTab: true
    onValueChanged: if (moment >= 0 && Math.abs(value - moment * maximumValue) >= 1) ribbon.choose(value / maximumValue)
    Accessible.role: Accessible.Slider
    Accessible.name: description || (ribbon?.accessibleName ?? "")
    Accessible.focusable: true
    Accessible.onIncreaseAction: ribbon.step(true)
    Accessible.onDecreaseAction: ribbon.step(false)
    Keys.onLeftPressed: ribbon.step(Theme.mirrored)
    Keys.onRightPressed: ribbon.step(!Theme.mirrored)

    Binding on value {
        value: Math.max(0, root.moment) * root.maximumValue
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.raised
    }
    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.separator
    }

    Rectangle {
        id: track
        x: Theme.margin
        y: 10
        width: parent.width - 2 * x
        height: 16
        radius: 3
        color: Theme.well
    }
    Binding {
        target: root.ribbon
        property: "columns"
        value: root.shown ? Math.round(track.width) : 0
    }

    Repeater {
        model: root.ribbon?.pieces ?? []
        delegate: Rectangle {
            required property var modelData
            x: Math.min(root.place(modelData.begin), root.place(modelData.end))
            width: Math.max(1, track.width * (modelData.end - modelData.begin))
            y: track.y + (modelData.strong ? 0 : track.height - height)
            height: modelData.strong ? track.height : 6
            color: modelData.strong ? root.ribbon.color : Theme.fieldBorder
        }
    }

    // Each hour, and each sixth with its number.
    Repeater {
        model: 25
        delegate: Rectangle {
            required property int index
            x: Math.round(root.place(index / 24))
            y: track.y + track.height
            width: 1
            height: index % 6 ? 3 : 6
            color: Theme.fieldBorder
        }
    }
    Item {
        id: hours
        y: track.y + track.height + 5
        width: parent.width
        height: Theme.tabSize + 3

        Repeater {
            model: 5
            delegate: PlainText {
                required property int index
                x: Math.max(2, Math.min(hours.width - width - 2, root.place(index / 4) - width / 2))
                text: index * 6
                color: Theme.secondaryText
                font.pixelSize: Theme.tabSize - 1
            }
        }
    }

    // Where the known part of the day ends.
    Rectangle {
        visible: root.mark >= 0
        x: root.place(root.mark) - width / 2
        y: track.y - 3
        width: 3
        height: track.height + 6
        radius: 1.5
        color: Theme.text
    }

    Rectangle {
        visible: root.moment >= 0
        x: root.place(root.moment) - width / 2
        anchors.verticalCenter: track.verticalCenter
        width: 8
        height: track.height + 12
        radius: 4
        color: Theme.accent
        border.width: 1.5
        border.color: Theme.raised
    }

    MouseArea {
        id: finger
        anchors.fill: parent
        preventStealing: true
        onPressed: mouse => {
            root.forceActiveFocus(Qt.MouseFocusReason);
            choose(mouse.x);
        }
        onPositionChanged: mouse => choose(mouse.x)

        function choose(x) {
            const share = Math.max(0, Math.min(1, (x - track.x) / track.width));
            root.ribbon.choose(Theme.mirrored ? 1 - share : share);
        }
    }

    FocusRing {
        anchors.fill: parent
        anchors.margins: 2
        radius: 6
    }

    // What is chosen, while a finger or the keys choose.
    Rectangle {
        readonly property real wanted: root.place(root.moment) - width / 2
        visible: words.text !== "" && (finger.pressed || root.activeFocus && UserPreferences.usesKeys)
        anchors.top: parent.bottom
        anchors.topMargin: 6
        x: Math.max(8, Math.min(root.width - width - 8, wanted))
        width: words.width + 24
        height: words.height + 14
        radius: 10
        color: Theme.toast

        PlainText {
            id: words
            anchors.centerIn: parent
            width: Math.min(implicitWidth, root.width - 40)
            text: root.description
            wrapMode: Text.Wrap
            color: Theme.toastText
            font.pixelSize: Theme.smallSize
        }
    }
}
