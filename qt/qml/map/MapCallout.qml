pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The callout of a marker: a bubble that points at the marker and stays within the map.
Item {
    id: root

    property MapMarkerItem marker
    property ButtonItem share // takes the place along
    property ButtonItem card // leads to the card of the place
    property point target // the marker's middle
    property real lowest // where what is at the map's lower edge begins
    property real ground: lowest // where the labels begin there: as far as a tall callout may reach
    property real sideSpace: 8
    property real buttonStrip // the width, at one side of the map, that the buttons take
    property real leadStrip // the width that a button takes in the upper corner of the other side
    property real upperButtons // where the upper ones end
    property real lowerButtons // where the lower ones begin
    readonly property bool besideButtons: y < upperButtons + sideSpace || y + height > lowerButtons - sideSpace
    readonly property real trailing: sideSpace + (besideButtons ? buttonStrip : 0)
    readonly property real leading: sideSpace + (y < sideSpace + Theme.touch ? leadStrip : 0)
    readonly property real leftmost: Theme.mirrored ? trailing : leading
    readonly property real rightmost: parent.width - (Theme.mirrored ? leading : trailing)
    readonly property real gap: 24 // between the marker's middle and the tip
    readonly property real tip: 9
    readonly property real room: ground - 2 * sideSpace - 20 // for its texts
    readonly property bool tall: height > lowest - 2 * sideSpace
    readonly property bool above: aboveY >= sideSpace || target.y > lowest / 2
    readonly property real aboveY: target.y - gap - tip - height
    readonly property real wantedY: above ? aboveY : target.y + gap + tip
    property real presence: 1
    readonly property bool inSight: target.x >= 0 && target.x <= parent.width && target.y >= 0 && target.y <= parent.height

    opacity: presence
    visible: marker !== null && inSight && (title.text !== "" || subtitle.text !== "")
    width: Math.min(parent.width - 2 * sideSpace - buttonStrip, 320 * Theme.scale, Math.max(title.implicitWidth, subtitle.implicitWidth, 48) + 28 + sharing.width + lead.room)
    height: Math.max(texts.height + 20, sharing.height)
    x: Math.round(Math.max(leftmost, Math.min(rightmost - width, target.x - width / 2)))
    y: Math.round(Math.max(sideSpace, Math.min((tall ? ground : lowest) - sideSpace - height, wantedY)))
    Accessible.role: Accessible.StaticText
    Accessible.name: marker?.accessibleName ?? ""

    transformOrigin: above ? Item.Bottom : Item.Top
    scale: 0.8 + 0.2 * presence
    onVisibleChanged: if (visible) appear.restart()

    NumberAnimation {
        id: appear
        target: root
        property: "presence"
        from: 0
        to: 1
        duration: Theme.motion(150)
        easing.type: Easing.OutCubic
    }

    FontMetrics {
        id: titleLine
        font: title.font
    }
    FontMetrics {
        id: subtitleLine
        font: subtitle.font
    }

    Rectangle {
        anchors.fill: parent
        anchors.margins: -1
        radius: 13
        color: "transparent"
        border.width: 1
        border.color: Theme.mapShade
    }

    Rectangle {
        visible: Math.abs(root.y - root.wantedY) < 1
        x: Math.max(16, Math.min(root.width - 16, root.target.x - root.x)) - width / 2
        y: root.above ? root.height - height / 2 - 1 : 1 - height / 2
        width: root.tip * 1.5
        height: width
        rotation: 45
        radius: 2
        color: Theme.raised
        border.width: 1
        border.color: Theme.mapShade
        antialiasing: true
    }

    Rectangle {
        anchors.fill: parent
        radius: 12
        color: Theme.raised
    }

    Column {
        id: texts
        anchors.left: parent.left
        anchors.leftMargin: 14
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width - 28 - sharing.width - lead.room
        spacing: 2

        Text {
            id: title
            width: parent.width
            visible: text !== ""
            text: root.marker?.title ?? ""
            textFormat: Text.PlainText
            color: Theme.text
            font.pixelSize: Theme.bodySize
            font.bold: true
            wrapMode: Text.Wrap
            maximumLineCount: Math.max(1, Math.min(3, Math.floor(root.room / 2 / titleLine.height)))
            elide: Text.ElideRight
            Accessible.ignored: true
        }
        Text {
            id: subtitle
            width: parent.width
            visible: text !== ""
            text: root.marker?.subtitle ?? ""
            textFormat: Text.PlainText
            color: Theme.secondaryText
            font.pixelSize: Theme.smallSize
            wrapMode: Text.Wrap
            maximumLineCount: Math.max(1, Math.min(4, Math.floor((root.room - title.height - texts.spacing) / subtitleLine.height)))
            elide: Text.ElideRight
            Accessible.ignored: true
        }
    }

    Tappable {
        id: sharing
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        visible: enabled
        enabled: root.share?.enabled ?? false
        width: enabled ? Theme.touch : 0
        height: width
        label: root.share?.accessibleName ?? ""
        onTapped: root.share.tap()

        Image {
            anchors.centerIn: parent
            source: root.share?.image ?? ""
            sourceSize { width: 24; height: 24 }
        }
    }

    Tappable {
        anchors.fill: texts
        anchors.margins: -10
        anchors.rightMargin: -10 - lead.room
        visible: enabled
        enabled: root.card?.enabled ?? false
        label: root.card?.accessibleName ?? ""
        onTapped: root.card.tap()

        PlainText {
            id: lead
            readonly property real room: parent.enabled ? implicitWidth + 8 : 0
            anchors.right: parent.right
            anchors.rightMargin: 10
            anchors.verticalCenter: parent.verticalCenter
            text: Theme.mirrored ? "‹" : "›"
            color: Theme.accent
            font.pixelSize: Theme.titleSize
            font.bold: true
        }
    }
}
