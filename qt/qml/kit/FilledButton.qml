pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The main button of a screen. A spinner replaces its title while it is loading.
Tappable {
    id: root

    property ButtonItem button

    implicitHeight: Math.max(50, Theme.bodySize * 2.4)
    label: button?.accessibleName ?? ""
    enabled: button?.enabled ?? false
    ringRadius: plate.radius + 4
    ringMargin: -4 // outside: on the plate it would not be visible
    onTapped: button.tap()

    Rectangle {
        id: plate
        anchors.fill: parent
        radius: root.button?.cornerRadius || 8
        color: root.pressed ? Theme.accentPressed : Theme.accent
    }

    PlainText {
        anchors.centerIn: parent
        visible: !spinner.running
        width: parent.width - 24
        horizontalAlignment: Text.AlignHCenter
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: 14
        text: root.button?.title ?? ""
        color: Theme.accentText
        font.pixelSize: Theme.bodySize + 1
        font.bold: true
    }

    Spinner {
        id: spinner
        anchors.centerIn: parent
        running: root.button?.loading ?? false
        color: Theme.accentText
    }
}
