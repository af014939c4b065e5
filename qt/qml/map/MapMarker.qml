pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// One marker. The map handles taps, so that a drag may start on a marker.
Item {
    id: root

    required property MapMarkerItem marker
    property bool open: false
    property bool grows: false // when it appears
    property bool satellite: false // what the map shows
    property bool tabStop: false // one for all markers; the arrow keys go on from there
    readonly property string label: marker?.accessibleName ?? ""

    readonly property bool ringed: (root.marker?.ringColor.a ?? 0) > 0

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

    Rectangle {
        anchors.fill: parent
        visible: root.ringed
        radius: width / 2
        color: Theme.raised
        border.width: 3
        border.color: root.marker?.ringColor ?? "transparent"
    }
    Item {
        anchors.centerIn: parent
        visible: !isNaN(root.marker?.course ?? NaN)
        width: 46
        height: 46
        rotation: visible ? root.marker.course : 0

        Image {
            anchors.horizontalCenter: parent.horizontalCenter
            y: -10
            source: "qrc:/images/course.svg"
            sourceSize { width: 16; height: 16 }
        }
    }
    OutlinedPicture {
        anchors.fill: parent
        anchors.margins: root.ringed ? 7 : 0
        picture: root.marker?.image ?? ""
        ground: Theme.dark || root.satellite && !root.ringed ? "dark" : "light"
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
