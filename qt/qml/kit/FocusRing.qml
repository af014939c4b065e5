import QtQuick
import Fleetor

// Marks the item that has the keyboard focus, while keys are in use.
Rectangle {
    property Item target: parent as Item

    visible: (target?.activeFocus ?? false) && UserPreferences.usesKeys
    color: "transparent"
    border.width: 2
    border.color: Theme.focusRing
}
