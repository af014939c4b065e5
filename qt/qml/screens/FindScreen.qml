pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The search: a field in the bar, and below it the vehicles that were found. The arrow keys go from the field to the rows and
// back.
FocusScope {
    id: root

    required property ViewControllerItem screen
    readonly property string empty: (screen.outlet("emptyLabel") as LabelItem)?.text ?? ""
    readonly property string found: (screen.outlet("foundLabel") as LabelItem)?.text ?? ""
    readonly property string typed: entry.field?.text ?? ""
    readonly property ButtonItem clear: screen.outlet("clearButton") as ButtonItem

    // The rows are others.
    onTypedChanged: {
        list.currentIndex = -1;
        list.positionViewAtBeginning();
    }
    Keys.onDownPressed: event => {
        event.accepted = list.count > 0 && !list.activeFocus;
        if (event.accepted) {
            list.forceActiveFocus(Qt.TabFocusReason);
            list.go(0);
        }
    }
    Keys.onUpPressed: event => {
        event.accepted = list.activeFocus;
        if (event.accepted)
            entry.forceActiveFocus(Qt.BacktabFocusReason);
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.background
    }

    NavigationBar {
        id: bar
        width: parent.width
        leftItems: root.screen?.leftItems ?? []
        z: 2

        TextEntry {
            id: entry
            anchors.fill: parent
            anchors.leftMargin: Theme.touch + 4
            anchors.rightMargin: Theme.touch + 8
            anchors.topMargin: 4
            anchors.bottomMargin: 4
            field: root.screen.outlet("searchTextField") as TextFieldItem
            hint: root.found || root.empty
            spare: erase.visible ? erase.width : 0
            focus: true

            TextButton {
                id: erase
                anchors.right: parent.right
                height: parent.height
                visible: root.clear?.enabled ?? false
                symbol: "×"
                label: root.clear?.accessibleName ?? ""
                onTapped: root.clear.tap()
            }
        }
        BarButton {
            anchors.right: parent.right
            anchors.rightMargin: 4
            anchors.verticalCenter: parent.verticalCenter
            button: (root.screen?.rightItems[0] ?? null) as ButtonItem
        }
    }

    PlainText {
        id: count
        anchors.top: bar.bottom
        anchors.topMargin: visible ? 6 : 0
        x: Theme.margin
        width: parent.width - 2 * x
        height: visible ? implicitHeight : 0
        visible: text !== ""
        wrapMode: Text.Wrap
        text: root.found
        color: Theme.secondaryText
        font.pixelSize: Theme.smallSize
        Accessible.ignored: false
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    TableList {
        id: list
        anchors.top: count.bottom
        anchors.bottom: missing.visible ? missing.top : parent.bottom
        width: parent.width
        table: root.screen.outlet("foundTableView") as TableItem
        label: root.screen.title

        Connections {
            target: list.table
            function onRowWanted() {
                list.forceActiveFocus(Qt.TabFocusReason);
            }
        }
    }

    ListOffer {
        id: missing
        anchors.bottom: parent.bottom
        width: parent.width
        line: root.screen.outlet("progressLabel") as LabelItem
        button: root.screen.outlet("progressButton") as ButtonItem
    }

    PlainText {
        anchors.centerIn: list
        width: Math.min(parent.width, 400) - 2 * Theme.margin
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        visible: text !== ""
        text: root.empty
        color: Theme.secondaryText
        Accessible.ignored: false
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
