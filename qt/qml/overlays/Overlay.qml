pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// Base of what appears over the screens. Its subject may be destroyed before it has disappeared, so it draws copies of the
// subject's properties.
AccessibleLayer {
    id: overlay

    property WindowItem window
    property ComponentItem subject
    property bool shown: false
    property real presence: 0 // 0 to 1: fully visible

    signal gone

    function come() {
        motion.to = shown ? 1 : 0;
        motion.restart();
    }

    enabled: shown
    Accessible.role: Accessible.Pane
    onShownChanged: come()

    NumberAnimation {
        id: motion
        target: overlay
        property: "presence"
        duration: Theme.motion(200)
        easing.type: Easing.OutCubic
        onFinished: if (!overlay.shown) overlay.gone()
    }
}
