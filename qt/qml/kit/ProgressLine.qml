pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The activity indicator: a light with a dark edge that runs along the top edge of the window while data is transferred; for
// users who have turned animations off the whole edge is lit.
Item {
    id: line

    property ProgressOverlayItem overlay

    height: 5
    visible: overlay?.showing ?? false
    clip: true
    Accessible.ignored: true

    Rectangle {
        anchors.fill: parent
        color: line.overlay?.backgroundColor ?? "transparent"
    }
    Rectangle {
        id: edge
        objectName: "progressEdge"
        width: parent.width * (UserPreferences.wantsMotion ? 0.35 : 1)
        height: parent.height
        radius: height / 2
        color: Theme.barMark
        NumberAnimation on x {
            running: line.visible && UserPreferences.wantsMotion
            from: -edge.width
            to: line.width
            duration: 900
            loops: Animation.Infinite
        }

        Rectangle {
            anchors.fill: parent
            anchors.margins: 1
            radius: height / 2
            color: line.overlay?.foregroundColor ?? "transparent"
        }
    }
}
