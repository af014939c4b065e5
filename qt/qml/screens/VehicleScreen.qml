pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// One vehicle: its pages and their tabs.
FocusScope {
    id: root

    required property ViewControllerItem screen
    readonly property TabBarItem tabs: screen.outlet("pagesTabBar") as TabBarItem

    Shortcut {
        sequences: ["Ctrl+Tab", "Ctrl+PgDown"]
        enabled: root.visible && root.enabled
        onActivated: strip.turn(1)
    }
    Shortcut {
        sequences: ["Ctrl+Shift+Tab", "Ctrl+PgUp"]
        enabled: root.visible && root.enabled
        onActivated: strip.turn(-1)
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
