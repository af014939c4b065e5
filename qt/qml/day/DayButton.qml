pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A button of the day bar or of the note about a day.
TextButton {
    id: root

    property ButtonItem button

    enabled: button?.enabled ?? false
    label: button?.accessibleName ?? ""
    onTapped: button.tap()
    onButtonChanged: if (button) button.drawing = root
}
