pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A modal question.
Overlay {
    id: root

    readonly property AlertViewItem alert: subject as AlertViewItem
    property var titles: []

    opacity: presence
    onAlertChanged: {
        if (!alert)
            return;
        title.text = alert.title;
        message.text = alert.message;
        titles = alert.buttonTitles;
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.dim
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
        Accessible.name: title.text
        Accessible.description: message.text

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
                    PlainText {
                        id: title
                        width: texts.width
                        wrapMode: Text.WordWrap
                        font.pixelSize: Theme.titleSize - 1
                        fontSizeMode: Text.HorizontalFit
                        minimumPixelSize: 16
                        font.bold: true
                    }
                    PlainText {
                        id: message
                        width: texts.width
                        wrapMode: Text.Wrap
                        color: Theme.secondaryText
                        Accessible.ignored: false
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
                    model: root.titles
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
                        PlainText {
                            id: word
                            anchors.centerIn: parent
                            width: parent.width - 28
                            horizontalAlignment: Text.AlignHCenter
                            fontSizeMode: Text.HorizontalFit
                            minimumPixelSize: 12
                            text: choice.modelData
                            color: Theme.accent
                            font.bold: true
                        }
                    }
                }
            }
        }
    }
}
