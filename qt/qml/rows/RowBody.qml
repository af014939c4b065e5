pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// Base of the content of a table row.
Item {
    property CellItem cell
    property bool current: false // the row that the keys have chosen
    property string spoken // what assistive technology reads out
    property string hint // and then what a tap does, where that is not to open the row
    // The implicit height is what a text needs that takes more than its usual lines; otherwise it is 0, and the table gives
    // the height.
    property bool separated: true // has a line below it
}
