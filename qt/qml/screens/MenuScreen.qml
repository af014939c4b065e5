pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The side menu of a phone.
FocusScope {
    id: root

    required property ViewControllerItem screen
    readonly property bool low: height < 460 // in landscape

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
            topPadding: root.low ? 10 : 28
            bottomPadding: 12

            Grid {
                anchors.left: parent.left
                anchors.leftMargin: 22
                columns: root.low ? 2 : 1
                spacing: 10
                verticalItemAlignment: Grid.AlignVCenter
                bottomPadding: root.low ? 8 : 22
                Image {
                    source: "qrc:/images/fleetor.svg"
                    sourceSize { width: root.low ? 40 : 64; height: root.low ? 40 : 64 }
                }
                PlainText {
                    text: "Fleetor"
                    color: Theme.menuText
                    font.pixelSize: Theme.titleSize + 4
                    font.bold: true
                    Accessible.ignored: false
                    Accessible.role: Accessible.Heading
                    Accessible.name: text
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
