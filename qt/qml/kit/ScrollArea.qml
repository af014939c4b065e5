pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Window

// Scrolls vertically where its content does not fit, and keeps the item with the keyboard focus in view.
Flickable {
    id: area

    property Item companion // stays in view with the focused item where both fit
    property real margin: 8
    readonly property Item focused: Window.activeFocusItem

    function isWithin(item) {
        while (item && item !== contentItem)
            item = item.parent;
        return item !== null;
    }

    function keepInSight() {
        if (height <= 0 || !focused || !isWithin(focused))
            return;
        const top = focused.mapToItem(contentItem, 0, 0).y - margin;
        let bottom = top + focused.height + 2 * margin;
        if (companion)
            bottom = Math.max(bottom, Math.min(top + height, companion.mapToItem(contentItem, 0, companion.height).y + margin));
        const wanted = Math.min(top, Math.max(contentY, bottom - height));
        contentY = Math.max(0, Math.min(contentHeight - height, wanted));
    }

    interactive: contentHeight > height
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    onFocusedChanged: keepInSight()
    onContentHeightChanged: keepInSight()
    onHeightChanged: {
        returnToBounds();
        keepInSight();
    }
}
