pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// What comes over the screens and leaves again. The subject may be gone before it has left, so what it shows until then
// is copied from it.
AccessibleLayer {
    id: overlay

    property WindowItem window
    property ComponentItem subject
    property bool shown: false
    property real presence: 0 // 1: all there

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
