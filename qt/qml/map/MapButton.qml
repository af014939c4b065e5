pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A round button that lies on a map.
Tappable {
    id: root

    property ButtonItem button

    width: Theme.touch
    height: Theme.touch
    ringRadius: Theme.touch / 2
    visible: button !== null
    enabled: button?.enabled ?? false
    label: button?.accessibleName ?? ""
    onTapped: button.tap()

    Rectangle {
        anchors.fill: parent
        anchors.margins: 2
        radius: width / 2
        color: Theme.bar
        border.width: 1
        border.color: Theme.mapShade
        opacity: root.pressed ? 0.7 : 1
    }
    OutlinedPicture {
        anchors.centerIn: parent
        picture: root.button?.image ?? ""
        ground: String(picture).includes("Selected") ? "" : Theme.barGround // those are dark
        sourceSize { width: 26; height: 26 }
    }
}
