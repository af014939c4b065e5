pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// One picture that fills the screen. The dark variants are in a folder with the same names.
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
        source: (root.picture?.source.toString() ?? "").replace("/images/", Theme.dark ? "/images/dark/" : "/images/")
        sourceSize { width: width; height: height }
        fillMode: Image.PreserveAspectCrop
    }
}
