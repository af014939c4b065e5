pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The replay of a day: what was at the moment that the ribbon of hours marks, and the buttons. Space plays and pauses, left and
// right step from point to point.
FocusScope {
    id: root

    property ViewControllerItem screen
    property PlayerItem player
    property ButtonItem charts
    property ButtonItem share // of the moment's place
    property bool tight: false // there is little room for the map
    readonly property bool wide: width >= 560
    readonly property real inset: 6

    function word(text) {
        return player?.word(text) ?? "";
    }

    implicitHeight: visible ? column.height + inset : 0
    visible: player?.open ?? false
    Keys.onLeftPressed: player.step(-Theme.forward)
    Keys.onRightPressed: player.step(Theme.forward)
    Keys.onSpacePressed: player.togglePlaying()

    // Costs a frame each, so it runs only while there is something to move.
    FrameAnimation {
        running: root.visible && (root.player?.playing ?? false)
        onTriggered: root.player.advance(frameTime)
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.raised

        Rectangle {
            width: parent.width
            height: 1
            color: Theme.separator
        }
    }

    Column {
        id: column
        y: 4
        x: root.inset
        width: parent.width - 2 * root.inset

        Grid {
            width: parent.width
            columns: root.wide ? 2 : 1
            layoutDirection: Theme.mirrored ? Qt.RightToLeft : Qt.LeftToRight
            verticalItemAlignment: Grid.AlignVCenter
            horizontalItemAlignment: Grid.AlignHCenter

            ReplayCard {
                screen: root.screen
                player: root.player
                share: root.share
                folds: root.tight
                width: root.wide ? parent.width - buttons.width - root.inset : parent.width
            }

            Row {
                id: buttons

                readonly property real size: Math.min(Theme.touch, (root.width - 2 * root.inset) / children.length)

                layoutDirection: Theme.mirrored ? Qt.RightToLeft : Qt.LeftToRight

                ReplayButton {
                    width: buttons.size
                    picture: "BtnStepBack"
                    label: root.word("Previous point")
                    mirror: Theme.mirrored
                    onTapped: root.player.step(-1)
                }
                ReplayButton {
                    width: buttons.size
                    id: play
                    focus: true
                    picture: root.player?.playing ? "BtnPause" : "BtnPlay"
                    label: root.player?.playing ? root.word("Pause") : root.word("Play")
                    mirror: Theme.mirrored
                    onTapped: root.player.togglePlaying()
                }
                ReplayButton {
                    width: buttons.size
                    picture: "BtnStepForward"
                    label: root.word("Next point")
                    mirror: Theme.mirrored
                    onTapped: root.player.step(1)
                }
                ReplayButton {
                    width: buttons.size
                    symbol: `${root.player?.rate ?? ""}×`
                    label: `${root.word("Replay speed")}, ${symbol}`
                    onTapped: root.player.nextRate()
                }
                ReplayButton {
                    width: buttons.size
                    picture: "BtnFollow"
                    label: root.word("Follow the vehicle")
                    checkable: true
                    checked: root.player?.following ?? false
                    onTapped: root.player.follow()
                }
                ReplayButton {
                    width: buttons.size
                    picture: "BtnCharts"
                    label: root.charts?.accessibleName ?? ""
                    checkable: true
                    checked: root.charts?.selected ?? false
                    onTapped: root.charts.tap()
                }
                ReplayButton {
                    width: buttons.size
                    picture: "BtnClose"
                    label: root.word("Close the replay")
                    onTapped: root.player.open = false
                }
            }
        }
    }
}
