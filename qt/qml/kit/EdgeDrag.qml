pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A strip from which a sideways drag moves what lies beneath it. It only looks on: taps and lengthwise drags go through.
// What lies beneath has to be disabled while it is dragging.
Item {
    id: edge

    property bool dragging: false
    property real moved: 0 // points, along the line

    signal begun
    signal ended

    PointHandler {
        id: finger
        enabled: edge.enabled
        property bool decided: false

        onActiveChanged: {
            const wasDragging = edge.dragging;
            decided = false;
            edge.dragging = false;
            if (wasDragging)
                edge.ended();
        }
        onTranslationChanged: {
            if (!active)
                return;
            // In the scene, since the strip moves with what it drags.
            const x = point.scenePosition.x - point.scenePressPosition.x;
            const y = point.scenePosition.y - point.scenePressPosition.y;
            // A little less than others take for a drag, so that this comes first.
            if (!decided && Math.max(Math.abs(x), Math.abs(y)) > 8) {
                decided = true;
                if (Math.abs(x) > Math.abs(y)) {
                    edge.begun();
                    edge.dragging = true;
                }
            }
            if (edge.dragging)
                edge.moved = x * Theme.forward;
        }
    }
}
