pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The terms of service, and the button that accepts them.
FocusScope {
    id: root

    required property ViewControllerItem screen
    readonly property ButtonItem agree: screen.outlet("agreeButton") as ButtonItem

    Rectangle {
        anchors.fill: parent
        color: Theme.background
    }

    DocumentView {
        anchors.fill: parent
        anchors.bottomMargin: foot.height
        view: root.screen.outlet("tosWebView") as WebViewItem
        label: root.screen.title
        focus: true
    }

    Rectangle {
        id: foot
        anchors.bottom: parent.bottom
        width: parent.width
        height: agreement.height + 30
        color: Theme.raised
        Rectangle {
            width: parent.width
            height: 1
            color: Theme.separator
        }
        FilledButton {
            id: agreement
            anchors.centerIn: parent
            width: Math.min(parent.width - 2 * Theme.margin, 420)
            button: root.agree
        }
    }
}
