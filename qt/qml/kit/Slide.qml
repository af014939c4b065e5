import QtQuick
import Fleetor

// Brings a property of an item to its value: in some milliseconds, or, when these are 0, at once.
NumberAnimation {
    easing.type: Easing.OutCubic

    function moveTo(value, milliseconds) {
        if (milliseconds > 0 && target[property] !== value) {
            duration = Theme.motion(milliseconds);
            to = value;
            restart();
        } else if (!running || to !== value) {
            stop();
            target[property] = value;
        }
    }
}
