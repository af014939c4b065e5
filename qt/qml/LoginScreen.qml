pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// Sign-in: the mark, two fields and a button; scrolls where the screen is too short for them.
FocusScope {
    id: root

    required property ViewControllerItem screen

    // By finger the first field waits for its tap: a keyboard on the screen would cover half of it.
    Component.onCompleted: if (Person.usesKeys) user.focus = true

    Rectangle {
        anchors.fill: parent
        color: Theme.well
    }

    Rectangle {
        id: head
        width: parent.width
        height: Math.max(120, mark.height + 16, Math.min(240, parent.height * 0.28))
        color: Theme.bar
        Column {
            id: mark
            anchors.centerIn: parent
            spacing: 6
            Image {
                anchors.horizontalCenter: parent.horizontalCenter
                source: "qrc:/images/fleetor.svg"
                sourceSize { width: 72; height: 72 }
            }
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                text: "Fleetor"
                color: Theme.tabSelected
                font.pixelSize: Theme.titleSize + 8
                font.bold: true
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
        }
    }

    Flickable {
        anchors.fill: parent
        anchors.topMargin: head.height
        contentHeight: form.height + 56
        clip: true
        interactive: contentHeight > height

        Column {
            id: form
            x: (parent.width - width) / 2
            y: 28
            width: Math.min(root.width - 2 * 24, 420)
            spacing: 14
            TextEntry {
                id: user
                width: parent.width
                field: root.screen.outlet("loginTextField") as TextFieldItem
            }
            TextEntry {
                width: parent.width
                field: root.screen.outlet("passwordTextField") as TextFieldItem
            }
            Item {
                width: 1
                height: 4
            }
            FilledButton {
                width: parent.width
                button: root.screen.outlet("loginButton") as ButtonItem
            }
        }
    }
}
