pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The side menu of a phone.
FocusScope {
    id: root

    required property ViewControllerItem screen
    readonly property LabelItem account: screen.outlet("accountLabel") as LabelItem
    readonly property bool low: height < 460 // in landscape
    readonly property bool tight: !low && Theme.large && height < 700 // the entries need the room

    focus: true
    Accessible.role: Accessible.PopupMenu
    Accessible.name: screen?.title ?? ""

    Rectangle {
        anchors.fill: parent
        color: Theme.menu
    }

    ScrollArea {
        anchors.fill: parent
        contentHeight: column.height

        Column {
            id: column
            width: parent.width
            topPadding: root.low ? 10 : root.tight ? 16 : 28
            bottomPadding: 12

            Grid {
                anchors.left: parent.left
                anchors.leftMargin: 22
                columns: root.low ? 2 : 1
                spacing: 10
                verticalItemAlignment: Grid.AlignVCenter
                bottomPadding: root.low ? 8 : root.tight ? 12 : 22
                Image {
                    source: "qrc:/images/fleetor.svg"
                    sourceSize { width: root.low || root.tight ? 40 : 64; height: root.low || root.tight ? 40 : 64 }
                }
                Column {
                    PlainText {
                        text: "Fleetor"
                        color: Theme.menuText
                        font.pixelSize: Theme.titleSize + 4
                        font.bold: true
                        Accessible.ignored: false
                        Accessible.role: Accessible.Heading
                        Accessible.name: text
                    }
                    PlainText {
                        width: root.width - 44 - (root.low ? 50 : 0)
                        visible: text !== ""
                        text: root.account?.text ?? ""
                        color: Theme.menuText
                        wrapMode: Text.Wrap
                        maximumLineCount: root.tight ? 1 : 3
                        font.pixelSize: Theme.smallSize + 1
                        Accessible.ignored: false
                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                    }
                }
            }

            Repeater {
                id: entries
                model: ["vehiclesButton", "fleetButton", "accountButton", "aboutButton", "logoutButton"]
                delegate: Item {
                    id: place

                    required property int index
                    required property string modelData
                    readonly property bool apart: modelData === "logoutButton" // below a line

                    function takeFocus() {
                        line.forceActiveFocus();
                    }

                    width: root.width
                    height: line.height + (apart ? 25 : 0)

                    Rectangle {
                        visible: place.apart
                        x: 24
                        y: 12
                        width: parent.width - 48
                        height: 1
                        color: Theme.menuText
                        opacity: 0.25
                    }
                    MenuEntry {
                        id: line
                        anchors.bottom: parent.bottom
                        width: parent.width
                        button: root.screen.outlet(place.modelData) as ButtonItem
                        focus: place.index === 0
                        Keys.onDownPressed: entries.itemAt(place.index + 1)?.takeFocus()
                        Keys.onUpPressed: entries.itemAt(place.index - 1)?.takeFocus()
                    }
                }
            }
        }
    }
}
