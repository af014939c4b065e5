pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// Base of everything that can be tapped: by finger, mouse, keyboard or assistive technology.
Item {
    id: tappable

    property string label
    property string hint // what a tap does, where the label does not tell
    property bool holdable: false // a long press, or the other button, means something else than a tap
    property int role: Accessible.Button
    property bool tabStop: true
    readonly property alias pressed: area.pressed
    property real ringRadius: 8
    property real ringMargin: 1 // negative: outside
    property color ringColor: Theme.focusRing
    property bool checked: false

    signal tapped
    signal held

    function activate() {
        if (enabled)
            tapped();
    }

    activeFocusOnTab: tabStop
    Accessible.role: role
    Accessible.name: label
    Accessible.description: hint
    Accessible.focusable: true
    Accessible.checkable: role === Accessible.PageTab
    Accessible.checked: checked
    Accessible.selected: checked
    Accessible.onPressAction: activate()
    Keys.onReturnPressed: activate()
    Keys.onEnterPressed: activate()
    Keys.onSpacePressed: activate()

    MouseArea {
        id: area
        anchors.fill: parent
        acceptedButtons: tappable.holdable ? Qt.LeftButton | Qt.RightButton : Qt.LeftButton
        onClicked: event => event.button === Qt.RightButton ? tappable.held() : tappable.activate()
        onPressAndHold: event => {
            event.accepted = tappable.holdable; // otherwise the release still counts as a tap
            if (tappable.holdable)
                tappable.held();
        }
    }

    FocusRing {
        anchors.fill: parent
        anchors.margins: tappable.ringMargin
        z: 10
        radius: tappable.ringRadius
        border.color: tappable.ringColor
    }
}
