pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A map that fills its page, with its buttons and, where there is something to load, a spinner. The tab order is:
// buttons, map, markers.
FocusScope {
    id: root

    required property ViewControllerItem screen
    readonly property MapViewItem map: screen.outlet("mapView") as MapViewItem
    readonly property ActivityIndicatorItem loading: screen.outlet("loadingIndicator") as ActivityIndicatorItem
    readonly property LabelItem note: screen.outlet("noteLabel") as LabelItem
    property ButtonItem card // in a callout: leads further
    property bool markersGrow: false // when they appear
    readonly property bool busy: loading?.animating ?? false
    readonly property bool covered: map?.covered ?? false

    property real lowestCallout: lowest
    property real leadStrip: 0 // that a button takes in the upper corner across from the others
    readonly property real calloutEnd: callout.visible ? callout.y + callout.height : 0
    readonly property real lowest: height - Math.max(attribution.height, message.height) // above the labels
    // The buttons lie in two corners, or all in one, or there in one row.
    readonly property real space: 12
    readonly property bool roomy: lowest >= 4 * Theme.touch + 4 * space
    readonly property bool low: lowest < 2 * Theme.touch + 2 * space
    readonly property real buttonStrip: space + upperButtons.width + (roomy ? 0 : 4 + lowerButtons.width)

    clip: true

    Grid {
        id: upperButtons
        anchors.right: parent.right
        anchors.rightMargin: root.space
        y: root.space
        z: 1
        columns: root.low ? 2 : 1
        spacing: 4

        MapButton {
            button: root.screen.outlet("changeTypeButton") as ButtonItem
            checked: button?.selected ?? false
            Accessible.checkable: true
        }
        MapButton {
            button: root.screen.outlet("wholeTrackButton") as ButtonItem
            visible: button !== null && !root.covered
        }
    }

    Grid {
        id: lowerButtons
        anchors.right: root.roomy ? parent.right : upperButtons.left
        anchors.rightMargin: root.roomy ? root.space : 4
        y: root.roomy ? root.lowest - height - root.space : root.space
        z: 1
        visible: !root.covered
        columns: root.low ? 2 : 1
        spacing: 4

        MapButton {
            button: root.screen.outlet("zoomInButton") as ButtonItem
        }
        MapButton {
            button: root.screen.outlet("zoomOutButton") as ButtonItem
        }
    }

    MapSurface {
        id: surface
        anchors.fill: parent
        visible: root.map?.placed ?? false
        enabled: !root.covered
        map: root.map
        dark: Theme.dark
        animated: UserPreferences.wantsMotion
        ground: Theme.mapGround
        grid: Theme.mapGrid
        // A drag from the outer half of the wide edge leaves the screen.
        leftEdge: Theme.mirrored ? 24 : 48
        rightEdge: Theme.mirrored ? 48 : 24
        callout: callout
        focus: true
        activeFocusOnTab: true
        Accessible.role: Accessible.Graphic
        Accessible.name: root.map?.accessibleName ?? ""
        Accessible.focusable: true

        Item {
            x: root.map?.markerOrigin.x ?? 0
            y: root.map?.markerOrigin.y ?? 0

            Repeater {
                id: markers
                model: root.map?.markers ?? null
                delegate: MapMarker {
                    required property int index

                    open: root.map.selected === marker
                    grows: root.markersGrow
                    satellite: root.map.satellite
                    tabStop: root.map.current === marker
                    onActivated: root.map.toggle(marker)
                    onFocused: root.map.reveal(marker)
                    onStepped: by => {
                        const next = markers.itemAt(index + by) as MapMarker;
                        root.map.reveal(next?.marker ?? null);
                        next?.forceActiveFocus(Qt.TabFocusReason);
                    }
                }
            }
        }

        MapTraveller {
            map: root.map
        }

        MapCallout {
            id: callout
            marker: root.map?.selected ?? null
            share: root.screen.outlet("sharePositionButton") as ButtonItem
            card: root.card
            lowest: root.lowestCallout
            ground: root.lowest
            buttonStrip: root.buttonStrip
            leadStrip: root.leadStrip
            upperButtons: upperButtons.y + upperButtons.height
            lowerButtons: root.roomy ? lowerButtons.y : root.height
            target: Qt.point((root.map?.markerOrigin.x ?? 0) + (marker?.place.x ?? 0), (root.map?.markerOrigin.y ?? 0) + (marker?.place.y ?? 0))
        }
    }

    Rectangle {
        anchors.fill: surface
        visible: surface.activeFocus && UserPreferences.usesKeys
        color: "transparent"
        border.width: 2
        border.color: Theme.focusRing
    }

    MapLabel {
        id: attribution
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        text: root.covered ? "" : surface.attribution
    }

    MapLabel {
        id: message

        property bool shown: false
        property bool announced: false // to assistive technology; once is enough

        anchors.right: parent.right
        anchors.bottom: parent.bottom
        text: root.covered ? "" : surface.message
        role: announced ? Accessible.StaticText : Accessible.AlertMessage
        onVisibleChanged: {
            announced = announced || shown && !visible;
            shown = visible;
        }
    }

    MapCover {
        anchors.fill: parent
        visible: root.covered
        busy: root.busy
        words: (root.note?.text ?? "") || (root.busy ? root.loading.accessibleName : "")
    }

    Rectangle {
        anchors.horizontalCenter: parent.horizontalCenter
        y: root.space
        width: 48
        height: 48
        radius: 24
        visible: root.busy && !root.covered
        color: Theme.mapLabel

        Spinner {
            anchors.centerIn: parent
            running: parent.visible
            color: Theme.text
        }
    }
}
