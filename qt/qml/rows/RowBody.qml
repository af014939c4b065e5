pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// What fills one row of a table.
Item {
    property CellItem cell
    property string spoken // what assistive technology reads for the row
    // The implicit height is what enlarged text needs; at the normal size the table says how high a row is.
    property bool separated: true // a line parts it from the next one
}
