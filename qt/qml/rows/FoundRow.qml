pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A vehicle that was found.
RowBody {
    id: row

    spoken: vehicle.spoken
    implicitHeight: vehicle.implicitHeight

    VehicleRow {
        id: vehicle
        anchors.fill: parent
        cell: row.cell
    }
}
