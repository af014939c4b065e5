import QtQuick

// The long press and the other mouse button, over its parent. It takes no tap from what lies there.
Item {
    id: root

    signal copied

    anchors.fill: parent

    TapHandler {
        acceptedButtons: Qt.LeftButton
        onLongPressed: root.copied()
    }
    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: root.copied()
    }
}
