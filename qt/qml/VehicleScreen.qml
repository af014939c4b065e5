pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// One vehicle: its pages and their tabs.
FocusScope {
    id: root

    required property ViewControllerItem screen
    readonly property TabBarItem tabs: screen.outlet("pagesTabBar") as TabBarItem

    Keys.onPressed: event => {
        if (!(event.modifiers & Qt.ControlModifier))
            return;
        event.accepted = true;
        if (event.key === Qt.Key_PageDown || event.key === Qt.Key_Tab)
            strip.turn(1);
        else if (event.key === Qt.Key_PageUp || event.key === Qt.Key_Backtab)
            strip.turn(-1);
        else
            event.accepted = false;
    }

    ScreenLoader {
        anchors.fill: parent
        anchors.bottomMargin: strip.height
        screen: root.screen.lastChild()
        focus: true
    }

    TabStrip {
        id: strip
        anchors.bottom: parent.bottom
        width: parent.width
        tabBar: root.tabs
    }
}
