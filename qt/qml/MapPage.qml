pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A map that fills its page, with the button for its type and, where there is something to load, a spinner.
FocusScope {
    id: root

    required property ViewControllerItem screen
    readonly property MapViewItem map: screen.outlet("mapView") as MapViewItem
    readonly property ButtonItem typeButton: screen.outlet("changeTypeButton") as ButtonItem
    readonly property ActivityIndicatorItem loading: screen.outlet("loadingIndicator") as ActivityIndicatorItem

    clip: true

    MapSurface {
        id: surface
        anchors.fill: parent
        map: root.map
        dark: Theme.dark
        ground: Theme.mapGround
        grid: Theme.mapGrid
        // The outer half of the wide one takes a screen off the stack.
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
                model: root.map?.markers ?? null
                delegate: MapMarker {
                    id: one
                    open: root.map.selected === marker
                    onActivated: root.map.toggle(marker)
                    onFocused: root.map.reveal(marker)
                }
            }
        }

        MapCallout {
            id: callout
            marker: root.map?.selected ?? null
            target: Qt.point((root.map?.markerOrigin.x ?? 0) + (marker?.place.x ?? 0), (root.map?.markerOrigin.y ?? 0) + (marker?.place.y ?? 0))
        }
    }

    Rectangle {
        anchors.fill: surface
        visible: surface.activeFocus && Person.usesKeys
        color: "transparent"
        border.width: 2
        border.color: Theme.focusRing
    }

    Rectangle {
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        width: Math.min(attribution.implicitWidth + 12, parent.width)
        height: attribution.height + 6
        visible: attribution.text !== ""
        color: Theme.mapLabel

        Text {
            id: attribution
            anchors.centerIn: parent
            width: Math.min(implicitWidth, root.width - 12)
            text: root.map?.attribution ?? ""
            textFormat: Text.PlainText
            color: Theme.text
            font.pixelSize: Math.max(11, Theme.smallSize - 2)
            wrapMode: Text.Wrap
        }
    }

    Tappable {
        id: type

        anchors.right: parent.right
        anchors.rightMargin: 12
        y: 12
        width: Theme.touch
        height: Theme.touch
        ringRadius: Theme.touch / 2
        label: root.typeButton?.accessibleName ?? ""
        checked: root.typeButton?.selected ?? false
        enabled: root.typeButton?.enabled ?? false
        Accessible.checkable: true
        onTapped: root.typeButton.tap()

        Rectangle {
            anchors.fill: parent
            anchors.margins: 2
            radius: width / 2
            color: Theme.bar
            border.width: 1
            border.color: Theme.mapShade
            opacity: type.pressed ? 0.7 : 1
        }
        Image {
            anchors.centerIn: parent
            source: root.typeButton?.image ?? ""
            sourceSize { width: 26; height: 26 }
        }
    }

    Rectangle {
        anchors.horizontalCenter: parent.horizontalCenter
        y: 12
        width: 48
        height: 48
        radius: 24
        visible: root.loading?.animating ?? false
        color: Theme.mapLabel

        Spinner {
            anchors.centerIn: parent
            running: parent.visible
            color: Theme.text
        }
    }
}
