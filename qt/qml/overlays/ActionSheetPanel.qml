pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A sheet of things to do, at the bottom of the window; what does not fit scrolls. The arrow keys go through the entries.
Overlay {
    id: root

    readonly property ActionSheetItem sheet: subject as ActionSheetItem
    property var titles: []
    property var details: []
    property var images: []

    onSheetChanged: {
        if (!sheet)
            return;
        title.text = sheet.title;
        message.text = sheet.message;
        code.show(sheet);
        details = sheet.details;
        images = sheet.images;
        titles = sheet.titles;
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.dim
        opacity: root.presence
        MouseArea {
            anchors.fill: parent
            onClicked: root.sheet.cancel()
        }
    }

    Rectangle {
        id: panel

        width: Math.min(parent.width, 420 * Math.max(1, Math.min(Theme.scale, 1.5)))
        height: Math.min(content.height, root.height - 24) + radius // the lower corners are not visible
        anchors.horizontalCenter: parent.horizontalCenter
        y: root.height - root.presence * (height - radius)
        radius: 14
        color: Theme.raised
        Accessible.role: Accessible.Dialog
        Accessible.name: title.text
        Accessible.description: message.text

        MouseArea {
            anchors.fill: parent
        }

        ScrollArea {
            anchors.fill: parent
            anchors.bottomMargin: panel.radius
            contentHeight: content.height

            Column {
                id: content
                width: parent.width
                topPadding: 16
                bottomPadding: 8

                PlainText {
                    id: title
                    x: Theme.margin
                    width: parent.width - 2 * x
                    wrapMode: Text.Wrap
                    font.pixelSize: Theme.bodySize + 1
                    font.bold: true
                }
                PlainText {
                    id: message
                    x: Theme.margin
                    width: parent.width - 2 * x
                    visible: text !== ""
                    topPadding: 4
                    wrapMode: Text.Wrap
                    color: Theme.secondaryText
                    font.pixelSize: Theme.smallSize + 1
                    Accessible.ignored: false
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
                Item {
                    width: 1
                    height: 8
                }
                // Dark on light in the dark, too: cameras expect it.
                Rectangle {
                    anchors.horizontalCenter: parent.horizontalCenter
                    visible: code.filled
                    width: code.width + 16
                    height: width
                    radius: 8
                    color: "white"
                    CellPictureView {
                        id: code
                        anchors.centerIn: parent
                        width: Math.max(120, Math.min(260, panel.width - 64, root.height - 220))
                        height: width
                        Accessible.role: Accessible.Graphic
                        Accessible.name: title.text
                    }
                }
                Repeater {
                    model: root.titles
                    delegate: Tappable {
                        id: entry

                        required property int index
                        required property string modelData
                        readonly property string detail: root.details[index] ?? ""

                        width: content.width
                        height: Math.max(Theme.touch + 4, words.height + 16)
                        label: modelData
                        hint: detail
                        focus: index === 0
                        onTapped: root.sheet.tapEntry(index)
                        Keys.onUpPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
                        Keys.onDownPressed: nextItemInFocusChain().forceActiveFocus(Qt.TabFocusReason)

                        Rectangle {
                            anchors.fill: parent
                            color: entry.pressed ? Theme.pressed : "transparent"
                        }
                        Image {
                            id: picture
                            anchors.left: parent.left
                            anchors.leftMargin: Theme.margin
                            anchors.verticalCenter: parent.verticalCenter
                            source: root.images[entry.index] ?? ""
                            sourceSize { width: 24; height: 24 }
                        }
                        Column {
                            id: words
                            anchors.left: picture.right
                            anchors.leftMargin: 16
                            anchors.right: parent.right
                            anchors.rightMargin: Theme.margin
                            anchors.verticalCenter: parent.verticalCenter
                            PlainText {
                                width: parent.width
                                wrapMode: Text.Wrap
                                text: entry.modelData
                            }
                            PlainText {
                                width: parent.width
                                visible: text !== ""
                                wrapMode: Text.Wrap
                                text: entry.detail
                                color: Theme.secondaryText
                                font.pixelSize: Theme.smallSize
                            }
                        }
                    }
                }
                TextButton {
                    anchors.right: parent.right
                    anchors.rightMargin: 8
                    focus: root.titles.length === 0
                    label: root.window?.word("Close") ?? ""
                    onTapped: root.sheet.cancel()
                }
            }
        }
    }
}
