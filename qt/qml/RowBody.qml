pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// What fills one row of a table.
Item {
    property CellItem cell
    property string spoken // what assistive technology reads for the row
}
