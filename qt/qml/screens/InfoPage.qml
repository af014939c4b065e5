pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The readings, below a strip with the speed and what the vehicle does.
FocusScope {
    id: root

    required property ViewControllerItem screen

    StatusStrip {
        id: strip
        width: parent.width
        screen: root.screen
        low: root.height < 300
    }

    TablePage {
        anchors.top: strip.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        screen: root.screen
        focus: true
    }
}
