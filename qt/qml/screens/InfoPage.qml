pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The readings, below a strip with the speed and what the vehicle does, and above the chart of one of them.
FocusScope {
    id: root

    required property ViewControllerItem screen
    readonly property bool tight: height - strip.height < 300 // for both readings and a chart

    Keys.onEscapePressed: event => {
        event.accepted = panel.open;
        if (panel.open)
            panel.closing.tap();
    }

    StatusStrip {
        id: strip
        width: parent.width
        screen: root.screen
        low: root.height < 300
    }

    TablePage {
        id: table
        anchors.top: strip.bottom
        anchors.bottom: panel.open && !root.tight ? panel.top : parent.bottom
        width: parent.width
        visible: !(panel.open && root.tight)
        screen: root.screen
        focus: true
    }

    ReadingPanel {
        id: panel
        anchors.bottom: parent.bottom
        width: parent.width
        height: root.tight ? parent.height - strip.height : Math.min(300, Math.round(parent.height / 2))
        screen: root.screen
        onOpenChanged: {
            (open ? panel : table).focus = true;
            if (open)
                table.rows.keepCurrent();
        }
    }
}
