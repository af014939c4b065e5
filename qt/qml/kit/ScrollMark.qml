import QtQuick
import Fleetor

// Shows which part of a view is in sight, while it moves. It stays in place while the content scrolls.
Rectangle {
    required property Flickable view

    parent: view
    anchors.right: parent.right
    anchors.rightMargin: 2
    y: view.visibleArea.yPosition * view.height
    width: 4
    height: Math.max(24, view.visibleArea.heightRatio * view.height)
    radius: 2
    color: Theme.secondaryText
    opacity: view.moving && view.visibleArea.heightRatio < 1 ? 0.6 : 0
    Behavior on opacity {
        NumberAnimation { duration: Theme.motion(200) }
    }
}
