pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// Texts that are copied by a long press, the other mouse button, the menu key or Ctrl+C. What lies on it keeps its own taps.
Item {
    id: root

    property ViewControllerItem screen
    property string text // what is copied
    property string label: text
    property int role: Accessible.StaticText
    property bool holdable: true // false: its parts are copied each by itself, and all of them by keys

    activeFocusOnTab: text !== ""
    Accessible.role: role
    Accessible.name: label
    Accessible.focusable: true
    Keys.onPressed: event => {
        event.accepted = event.matches(StandardKey.Copy) || event.key === Qt.Key_Menu;
        if (event.accepted)
            screen.copy(text);
    }

    CopyTaps {
        enabled: root.holdable
        onCopied: root.screen.copy(root.text)
    }

    FocusRing {
        anchors.fill: parent
        anchors.margins: -4
        radius: 8
    }
}
