pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// What was at the moment that is replayed: its time, the average speed, the distance so far, the nearest address, and a button
// to take the place along. Where it folds, only the time shows until the user unfolds it.
Row {
    id: root

    property ViewControllerItem screen
    property PlayerItem player
    property ButtonItem share
    property bool folds: false
    readonly property bool folded: folds && !unfolding.checked

    layoutDirection: Theme.mirrored ? Qt.RightToLeft : Qt.LeftToRight

    component Reading: Row {
        property string value
        property string caption

        spacing: 4
        visible: value !== "" && !root.folded

        PlainText {
            id: number
            text: parent.value
            font.pixelSize: Theme.bodySize
            font.bold: true
            Accessible.ignored: false
            Accessible.role: Accessible.StaticText
            Accessible.name: `${parent.caption}, ${text}`
        }
        PlainText {
            anchors.baseline: number.baseline
            text: parent.caption
            color: Theme.secondaryText
            font.pixelSize: Math.round(11 * Theme.scale)
        }
    }

    component Note: PlainText {
        width: texts.width
        font.pixelSize: Theme.smallSize
        Accessible.ignored: false
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    Copyable {
        id: texts
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width - sharing.width - (unfolding.visible ? unfolding.width : 0)
        height: lines.height
        screen: root.screen
        text: [root.player?.time, root.player?.speed, root.player?.distance, root.player?.note, root.player?.address].filter(Boolean).join("\n")
        role: Accessible.Grouping

        Column {
            id: lines
            width: parent.width

            Flow {
                width: parent.width
                spacing: 12
                layoutDirection: Theme.mirrored ? Qt.RightToLeft : Qt.LeftToRight

                PlainText {
                    text: root.player?.time ?? ""
                    font.pixelSize: Theme.bodySize + 2
                    font.bold: true
                    Accessible.ignored: false
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
                Reading {
                    value: root.player?.speed ?? ""
                    caption: root.player?.word("average") ?? ""
                }
                Reading {
                    value: root.player?.distance ?? ""
                    caption: root.player?.word("so far") ?? ""
                }
            }

            Note {
                visible: !gap.visible && !root.folded
                text: root.player?.note || root.player?.address || ""
                color: Theme.secondaryText
            }
            Note {
                id: gap
                visible: root.player?.gap ?? false
                text: root.player?.note ?? ""
                font.bold: true
                Accessible.role: Accessible.AlertMessage
            }
        }
    }

    TextButton {
        id: unfolding
        anchors.verticalCenter: parent.verticalCenter
        visible: root.folds
        width: Theme.touch
        symbol: checked ? "−" : "+"
        label: root.player?.word("Details") ?? ""
        Accessible.checkable: true
        onTapped: checked = !checked
    }
    Tappable {
        id: sharing
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.touch
        height: Theme.touch
        enabled: root.share?.enabled ?? false
        opacity: enabled ? 1 : 0.4
        label: root.share?.accessibleName ?? ""
        onTapped: root.share.tap()

        Image {
            anchors.centerIn: parent
            source: root.share?.image ?? ""
            sourceSize { width: 24; height: 24 }
        }
    }
}
