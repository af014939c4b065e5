pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A strip at an edge where a horizontal drag starts. It grabs nothing: taps and vertical drags reach the items below, so
// these have to be disabled while it is dragging.
Item {
    id: edge

    property bool dragging: false
    property real moved: 0 // points, in reading direction

    signal begun
    signal ended(real speed) // points a second, in reading direction

    DragSpeed {
        id: speed
    }

    PointHandler {
        id: finger
        enabled: edge.enabled
        property bool decided: false

        onActiveChanged: {
            const wasDragging = edge.dragging;
            decided = false;
            edge.dragging = false;
            if (wasDragging)
                edge.ended(speed.atRelease() * Theme.forward);
        }
        onTranslationChanged: {
            if (!active)
                return;
            // In scene coordinates: the strip moves with what it drags.
            const x = point.scenePosition.x - point.scenePressPosition.x;
            const y = point.scenePosition.y - point.scenePressPosition.y;
            // Below the threshold of other handlers, so that this one decides first.
            if (!decided && Math.max(Math.abs(x), Math.abs(y)) > 8) {
                decided = true;
                if (Math.abs(x) > Math.abs(y)) {
                    edge.begun();
                    edge.dragging = true;
                }
            }
            if (edge.dragging) {
                edge.moved = x * Theme.forward;
                speed.follow(point.velocity);
            }
        }
    }
}
