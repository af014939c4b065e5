pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// Twelve spokes that turn; hidden while it does not run.
Item {
    id: spinner

    property bool running: false
    property color color: Theme.secondaryText

    implicitWidth: 28
    implicitHeight: 28
    visible: running

    Repeater {
        model: 12
        Rectangle {
            id: spoke
            required property int index
            x: spinner.width / 2 - width / 2
            y: 0
            width: spinner.width * 0.09
            height: spinner.height * 0.28
            radius: width / 2
            color: spinner.color
            opacity: 0.15 + 0.85 * index / 11
            transform: Rotation {
                origin.x: spinner.width * 0.045
                origin.y: spinner.height / 2
                angle: spoke.index * 30
            }
        }
    }

    // In twelve steps: a smooth turn would redraw the window at every frame.
    Timer {
        interval: 83
        repeat: true
        running: spinner.running && spinner.visible
        onTriggered: spinner.rotation = (spinner.rotation + 30) % 360
    }
}
