pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// Loads an overlay as long as there is a subject for it, and until it has disappeared.
Loader {
    id: loader

    required property WindowItem window
    property ComponentItem subject
    property bool modal: true // takes the keyboard focus

    function takeKeys() {
        if (enabled && modal && subject)
            (item as Overlay).forceActiveFocus();
    }

    function follow() {
        if (subject)
            active = true;
        const overlay = item as Overlay;
        if (overlay === null)
            return;
        overlay.shown = subject !== null;
        if (subject)
            overlay.subject = subject;
        takeKeys();
    }

    active: false
    onSubjectChanged: follow()
    onEnabledChanged: takeKeys() // the overlay above it has gone
    onLoaded: {
        const overlay = item as Overlay;
        overlay.window = window;
        overlay.gone.connect(() => active = false);
    }
}
