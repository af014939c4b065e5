pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The list of vehicles. After a failed request: a text and a button below the list, or in place of an empty one, with a picture.
// While the service cannot be reached, what is known from before lies over the empty part of the list.
FocusScope {
    id: root

    required property ViewControllerItem screen

    readonly property LabelItem offline: screen.outlet("offlineLabel") as LabelItem
    readonly property bool isOffline: (offline?.text ?? "") !== ""
    readonly property ButtonItem fleet: screen.outlet("fleetButton") as ButtonItem

    Shortcut {
        sequences: ["Ctrl+F"]
        enabled: root.visible && root.enabled
        onActivated: (root.screen.outlet("findButton") as ButtonItem)?.tap()
    }

    TableList {
        id: list
        width: parent.width
        height: parent.height - (offer.visible ? offer.height : 0) - bar.height
        table: root.screen.outlet("itemsTableView") as TableItem
        label: root.screen.accessibleName
        focus: true
    }

    Rectangle {
        y: list.count > 0 ? list.contentHeight : 0
        width: parent.width
        height: list.height - y
        visible: root.isOffline
        color: Theme.background

        OfflineBand {
            id: band
            width: parent.width
            line: root.offline
        }
        TableList {
            anchors.top: band.bottom
            anchors.bottom: parent.bottom
            width: parent.width
            table: root.screen.outlet("offlineTableView") as TableItem
            label: band.words
        }
    }

    ListOffer {
        id: offer
        width: parent.width
        alone: list.count === 0 && !root.isOffline
        y: alone ? (parent.height - height) / 2 : parent.height - height - bar.height
        image: root.screen.outlet("noVehiclesImageView") as ImageViewItem
        line: root.screen.outlet("failureLabel") as LabelItem
        button: root.screen.outlet("reloadButton") as ButtonItem
    }

    // As high as the tabs of the vehicle beside it, and in their layout.
    Rectangle {
        id: bar
        anchors.bottom: parent.bottom
        width: parent.width
        height: visible ? Theme.tabHeight : 0
        visible: root.fleet?.enabled ?? false
        color: Theme.bar

        Tappable {
            anchors.fill: parent
            label: root.fleet?.accessibleName ?? ""
            ringColor: Theme.barMark
            opacity: pressed ? 0.6 : 1
            onTapped: root.fleet.tap()

            Grid {
                anchors.centerIn: parent
                columns: Theme.sideways ? 2 : 1
                spacing: Theme.sideways ? 6 : 2
                horizontalItemAlignment: Grid.AlignHCenter
                verticalItemAlignment: Grid.AlignVCenter
                OutlinedPicture {
                    picture: root.fleet?.image ?? ""
                    ground: Theme.barGround
                    sourceSize { width: Theme.sideways ? 22 : 26; height: Theme.sideways ? 22 : 26 }
                }
                PlainText {
                    text: root.fleet?.title ?? ""
                    color: Theme.barButton
                    style: Text.Outline
                    styleColor: Theme.barEdge
                    font.pixelSize: Theme.tabSize
                    font.bold: true
                }
            }
        }
    }
}
