pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A vehicle that was found, and a button that pins it.
RowBody {
    id: row

    readonly property ButtonItem button: cell?.outlet("pinButton") as ButtonItem

    spoken: cell?.accessibleName.replace("\n", " ") ?? ""
    implicitHeight: vehicle.implicitHeight

    VehicleRow {
        id: vehicle
        anchors.fill: parent
        anchors.rightMargin: pin.width - 8
        cell: row.cell
    }
    Tappable {
        id: pin
        anchors.right: parent.right
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.touch
        height: Theme.touch
        tabStop: row.current
        label: row.button?.accessibleName ?? ""
        onTapped: row.button.tap()

        Rectangle {
            anchors.fill: parent
            radius: 8
            color: pin.pressed ? Theme.pressed : "transparent"
        }
        Image {
            anchors.centerIn: parent
            source: row.button?.image ?? ""
            sourceSize { width: 24; height: 24 }
        }
    }
}
