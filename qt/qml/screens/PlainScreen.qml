pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A screen that has nothing to show.
Rectangle {
    required property ViewControllerItem screen

    color: Theme.background
    Accessible.role: Accessible.Pane
    Accessible.name: screen?.title ?? ""
}
