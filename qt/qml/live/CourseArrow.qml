pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// Where the vehicle heads: an arrow on a disc, north at the top.
Rectangle {
    id: root

    required property ViewControllerItem screen
    readonly property ImageViewItem course: screen.outlet("courseImageView") as ImageViewItem

    height: width
    radius: width / 2
    color: Theme.pressed
    visible: (course?.source ?? "") != ""

    Image {
        anchors.centerIn: parent
        source: root.course?.source ?? ""
        sourceSize { width: Math.round(root.width * 0.6); height: Math.round(root.width * 0.6) }
        rotation: root.course?.rotation ?? 0
    }
}
