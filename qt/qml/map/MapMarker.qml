pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// One marker. The map handles taps, so that a drag may start on a marker.
Item {
    id: root

    required property MapMarkerItem marker
    property bool open: false
    property bool grows: false // when it appears
    property bool tabStop: false // one for all markers; the arrow keys go on from there
    readonly property string label: marker?.accessibleName ?? ""

    signal activated
    signal focused
    signal stepped(int by)

    x: (marker?.place.x ?? 0) - width / 2
    y: (marker?.place.y ?? 0) - height / 2
    z: marker?.zPosition ?? 0
    width: 40
    height: 40
    visible: tabStop || (marker?.nearby ?? false)
    activeFocusOnTab: (tabStop || activeFocus) && (marker?.tappable ?? false)
    onActiveFocusChanged: if (activeFocus) focused()
    Accessible.role: Accessible.Button
    Accessible.name: label
    Accessible.focusable: true
    Accessible.ignored: !(marker?.tappable ?? false)
    Accessible.checkable: true
    Accessible.checked: open
    Accessible.onPressAction: activated()
    Keys.onReturnPressed: activated()
    Keys.onEnterPressed: activated()
    Keys.onSpacePressed: activated()
    Keys.onUpPressed: stepped(-1)
    Keys.onDownPressed: stepped(1)
    Keys.onLeftPressed: stepped(-Theme.forward)
    Keys.onRightPressed: stepped(Theme.forward)

    Image {
        anchors.fill: parent
        source: root.marker?.image ?? ""
        sourceSize { width: 40; height: 40 }
    }

    Rectangle {
        readonly property int count: root.marker?.stacked ?? 0

        anchors.horizontalCenter: parent.right
        y: 4 - height / 2
        visible: count > 1
        width: Math.max(height, number.implicitWidth + 8)
        height: number.implicitHeight + 4
        radius: height / 2
        color: Theme.menu
        border.width: 1
        border.color: Theme.menuText

        PlainText {
            id: number
            anchors.centerIn: parent
            text: parent.count
            color: Theme.menuText
            font.pixelSize: Math.round(11 * Math.min(Theme.scale, 1.5))
            font.bold: true
        }
    }

    NumberAnimation on scale {
        running: root.grows
        from: 0.3
        to: 1
        duration: Theme.motion(250)
        easing.type: Easing.OutBack
    }

    FocusRing {
        anchors.fill: parent
        anchors.margins: -3
        radius: 10
    }
}
