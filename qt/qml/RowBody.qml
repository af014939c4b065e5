pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// What fills one row of a table.
Item {
    property CellItem cell
    property string spoken // what assistive technology reads for the row
    property bool separated: true // a line parts it from the next one
}
