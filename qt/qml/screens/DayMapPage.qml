pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A day's track on a map, below the day bar.
FocusScope {
    id: root

    required property ViewControllerItem screen
    readonly property PlayerItem player: screen.outlet("replay") as PlayerItem
    readonly property bool replays: player?.open ?? false
    readonly property bool tight: low || Theme.large && height < 480
    readonly property bool low: height < 320 // a replay then takes the place of the day bar, an opened trip that of the ribbon

    Keys.onEscapePressed: event => {
        event.accepted = replays;
        if (replays)
            player.open = false;
    }

    // Who chooses the day or a moment goes on choosing.
    onReplaysChanged: {
        if (!(bar.focus && bar.visible) && !ribbon.focus)
            (replays ? replay : page).focus = true;
    }

    Column {
        id: head
        width: parent.width
        z: 1 // what the ribbon names lies over the map

        DayBar {
            id: bar
            width: parent.width
            screen: root.screen
            noted: note.visible
            visible: !(root.low && root.replays)
        }
        DayRibbon {
            id: ribbon
            width: parent.width
            ribbon: root.screen.outlet("dayRibbon") as TimeRibbonItem
            visible: shown && !(root.low && trip.visible)
        }
    }

    MapPage {
        id: page
        anchors.top: head.bottom
        anchors.bottom: foot.top
        width: parent.width
        screen: root.screen
        lowestCallout: replayButton.offered ? replayButton.y : lowest
        card: root.screen.outlet("stopCardButton") as ButtonItem
        visible: !charts.visible // nor can it be reached below them
        focus: true

        DayNote {
            id: note
            screen: root.screen
            visible: page.covered && !page.busy
        }

        MapButton {
            id: replayButton
            readonly property bool offered: (root.player?.available ?? false) && !root.replays && !page.covered
            anchors.left: parent.left
            anchors.leftMargin: page.space
            y: page.lowest - height - page.space
            visible: offered && page.calloutEnd <= y
            button: root.screen.outlet("replayButton") as ButtonItem
        }
    }

    DayCharts {
        id: charts
        readonly property bool high: page.height < 200 // over the head, too
        anchors.top: high ? parent.top : page.top
        z: high ? 2 : 0
        anchors.bottom: page.bottom
        width: parent.width
        button: root.screen.outlet("chartsButton") as ButtonItem
        distance: root.screen.outlet("distanceChart") as ChartItem
        speed: root.screen.outlet("speedChart") as ChartItem
    }

    // What lies below the map.
    Column {
        id: foot
        anchors.bottom: parent.bottom
        width: parent.width

        TripStrip {
            id: trip
            width: parent.width
            screen: root.screen
            low: root.tight
            visible: words !== "" && !root.replays
        }
        ReplayBar {
            id: replay
            width: parent.width
            screen: root.screen
            player: root.player
            charts: root.screen.outlet("chartsButton") as ButtonItem
            share: root.screen.outlet("shareMomentButton") as ButtonItem
            tight: root.tight
        }
    }
}
