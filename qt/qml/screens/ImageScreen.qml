pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// One picture that fills the screen, in a light and a dark version.
Rectangle {
    id: root

    required property ViewControllerItem screen
    readonly property ImageViewItem picture: screen.outlet("launchImageView") as ImageViewItem

    color: Theme.bar
    clip: true
    Accessible.role: Accessible.Graphic
    Accessible.name: "Fleetor"

    Image {
        anchors.fill: parent
        source: (Theme.dark ? root.picture?.darkSource : root.picture?.source) ?? ""
        sourceSize { width: width; height: height }
        fillMode: Image.PreserveAspectCrop
    }
}
