pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// Sign-in: logo, two fields and a button, beside the logo where the window is low. The focused field and the button stay in view.
FocusScope {
    id: root

    required property ViewControllerItem screen
    readonly property LabelItem refusalLabel: screen.outlet("refusalLabel") as LabelItem
    readonly property LabelItem capsLockLabel: screen.outlet("capsLockLabel") as LabelItem
    readonly property bool low: height < 460 // in landscape, or above an on-screen keyboard
    readonly property bool beside: low && width >= 500

    // Only with a hardware keyboard: an on-screen keyboard would cover half of the screen.
    Component.onCompleted: if (UserPreferences.usesKeys) user.focus = true

    Rectangle {
        anchors.fill: parent
        color: Theme.well
    }

    ScrollArea {
        id: area
        anchors.fill: parent
        contentHeight: Math.max(root.beside ? height : 0, form.y + form.height + (root.low ? 12 : 28))
        companion: button

        Rectangle {
            id: head
            anchors.left: parent.left
            width: root.beside ? Math.max(mark.width + 32, parent.width * 0.28) : parent.width
            height: root.beside ? area.contentHeight : Math.max(mark.height + 16, Math.min(240, root.height * 0.28))
            color: Theme.bar
            Grid {
                id: mark
                anchors.centerIn: parent
                columns: root.low && !root.beside ? 2 : 1
                spacing: 6
                horizontalItemAlignment: Grid.AlignHCenter
                verticalItemAlignment: Grid.AlignVCenter
                Image {
                    source: "qrc:/images/fleetor.svg"
                    sourceSize { width: root.low ? 40 : 72; height: root.low ? 40 : 72 }
                }
                PlainText {
                    text: "Fleetor"
                    color: Theme.barMark
                    font.pixelSize: Theme.titleSize + 8
                    font.bold: true
                    Accessible.ignored: false
                    Accessible.role: Accessible.Heading
                    Accessible.name: text
                }
            }
        }

        Column {
            id: form
            readonly property real aside: root.beside ? head.width : 0
            x: (Theme.mirrored ? 0 : aside) + (parent.width - aside - width) / 2
            y: root.beside ? Math.max(12, (area.height - height) / 2) : head.height + (root.low ? 12 : 28)
            width: Math.min(root.width - aside - 2 * 24, 420)
            spacing: 14
            TextEntry {
                id: user
                width: parent.width
                captioned: true
                hint: refusal.text
                field: root.screen.outlet("loginTextField") as TextFieldItem
            }
            TextEntry {
                id: password
                width: parent.width
                captioned: true
                hint: refusal.text || (capsLock.visible ? capsLock.text : "") // typing ends the refusal
                field: root.screen.outlet("passwordTextField") as TextFieldItem
            }
            PlainText {
                id: refusal
                width: parent.width
                visible: text !== ""
                text: root.refusalLabel?.text ?? ""
                color: Theme.alert
                font.pixelSize: Theme.smallSize + 1
                wrapMode: Text.Wrap
                Accessible.ignored: false
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            PlainText {
                id: capsLock
                width: parent.width
                visible: password.capsLock && password.activeFocus
                text: root.capsLockLabel?.text ?? ""
                color: Theme.secondaryText
                font.pixelSize: Theme.smallSize
                wrapMode: Text.Wrap
            }
            Item {
                width: 1
                height: 4
            }
            FilledButton {
                id: button
                width: parent.width
                button: root.screen.outlet("loginButton") as ButtonItem
            }
        }
    }
}
