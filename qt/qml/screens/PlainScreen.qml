pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// Drawn for a screen without a QML file.
Rectangle {
    required property ViewControllerItem screen

    color: Theme.background
    Accessible.role: Accessible.Pane
    Accessible.name: screen?.title ?? ""
}
