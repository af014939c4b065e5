pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The activity indicator: a light that runs along the top edge of the window while data is transferred; for users who have
// turned animations off the whole edge is lit.
Item {
    id: line

    property ProgressOverlayItem overlay

    height: 3
    visible: overlay?.showing ?? false
    clip: true
    Accessible.ignored: true

    Rectangle {
        anchors.fill: parent
        color: line.overlay?.backgroundColor ?? "transparent"
    }
    Rectangle {
        id: light
        width: parent.width * (UserPreferences.wantsMotion ? 0.35 : 1)
        height: parent.height
        radius: height / 2
        color: line.overlay?.foregroundColor ?? "transparent"
        NumberAnimation on x {
            running: line.visible && UserPreferences.wantsMotion
            from: -light.width
            to: line.width
            duration: 900
            loops: Animation.Infinite
        }
    }
}
