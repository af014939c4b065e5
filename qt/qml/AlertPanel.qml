pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A question over everything; nothing else can be touched until it is answered.
FocusScope {
    id: root

    property AlertViewItem alert

    Rectangle {
        anchors.fill: parent
        color: Theme.dim
        NumberAnimation on opacity {
            from: 0
            to: 1
            duration: 150
        }
        MouseArea {
            anchors.fill: parent
        }
    }

    Rectangle {
        anchors.centerIn: parent
        width: Math.min(parent.width - (Theme.large ? 24 : 48), 340 * Theme.scale)
        height: column.height + 32
        radius: 14
        color: Theme.raised
        Accessible.role: Accessible.AlertMessage
        Accessible.name: root.alert?.title ?? ""
        Accessible.description: root.alert?.message ?? ""

        Column {
            id: column
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.margins: 20
            y: 20
            spacing: 8
            Flickable {
                width: parent.width
                height: Math.min(texts.height, root.height - choices.height - 80)
                contentHeight: texts.height
                interactive: contentHeight > height
                clip: interactive
                Column {
                    id: texts
                    width: parent.width
                    spacing: 8
                    Text {
                        width: texts.width
                        text: root.alert?.title ?? ""
                        textFormat: Text.PlainText
                        wrapMode: Text.WordWrap
                        color: Theme.text
                        font.pixelSize: Theme.titleSize - 1
                        fontSizeMode: Text.HorizontalFit
                        minimumPixelSize: 16
                        font.bold: true
                        Accessible.ignored: true
                    }
                    Text {
                        width: texts.width
                        text: root.alert?.message ?? ""
                        textFormat: Text.PlainText
                        wrapMode: Text.Wrap
                        color: Theme.secondaryText
                        font.pixelSize: Theme.bodySize
                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                    }
                }
            }
            // Side by side while there is room.
            Grid {
                id: choices
                property real needed: -spacing
                anchors.right: parent.right
                spacing: 4
                columns: needed > parent.width ? 1 : Math.max(1, buttons.count)
                horizontalItemAlignment: Grid.AlignRight
                Repeater {
                    id: buttons
                    onItemAdded: (index, item) => choices.needed += item.width + choices.spacing
                    onItemRemoved: (index, item) => choices.needed -= item.width + choices.spacing
                    model: root.alert?.buttonTitles ?? []
                    delegate: Tappable {
                        id: choice
                        required property int index
                        required property string modelData
                        width: Math.min(column.width, Math.max(Theme.touch, word.implicitWidth + 28))
                        height: Theme.touch
                        label: modelData
                        focus: index === 0
                        onTapped: root.alert.tapButton(index)
                        Keys.onLeftPressed: nextItemInFocusChain(false).forceActiveFocus()
                        Keys.onRightPressed: nextItemInFocusChain().forceActiveFocus()
                        Rectangle {
                            anchors.fill: parent
                            radius: 8
                            color: choice.pressed ? Theme.pressed : "transparent"
                        }
                        Text {
                            id: word
                            anchors.centerIn: parent
                            width: parent.width - 28
                            horizontalAlignment: Text.AlignHCenter
                            fontSizeMode: Text.HorizontalFit
                            minimumPixelSize: 12
                            text: choice.modelData
                            textFormat: Text.PlainText
                            color: Theme.accent
                            font.pixelSize: Theme.bodySize
                            font.bold: true
                            Accessible.ignored: true
                        }
                    }
                }
            }
        }
    }
}
