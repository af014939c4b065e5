pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The document about this program.
FocusScope {
    id: root

    required property ViewControllerItem screen

    Rectangle {
        anchors.fill: parent
        color: Theme.background
    }

    DocumentView {
        anchors.fill: parent
        view: root.screen.outlet("aboutWebView") as WebViewItem
        label: root.screen.title
        focus: true
    }
}
