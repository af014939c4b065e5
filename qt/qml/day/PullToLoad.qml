pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// Shows how far a list is pulled down beyond its beginning, and reports when it is let go far enough.
Item {
    id: root

    required property Flickable list
    readonly property real way: Math.max(0, -list.verticalOvershoot)
    readonly property bool dragging: list.draggingVertically

    signal pulled

    width: 40
    height: 64
    clip: true
    visible: dragging && way > 0
    onDraggingChanged: if (!dragging && way >= height) pulled()

    Rectangle {
        y: Math.min(root.way, root.height) - height - 12
        width: 40
        height: 40
        radius: 20
        color: root.way < root.height ? Theme.raised : Theme.pressed
        border.width: 1
        border.color: Theme.separator

        Image {
            anchors.centerIn: parent
            source: "qrc:/images/RowReload.svg"
            sourceSize { width: 24; height: 24 }
            rotation: 300 * root.way / root.height
        }
    }
}
