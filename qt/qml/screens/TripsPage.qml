// A day's trips and stops, one card each.
import QtQuick
import Fleetor

TablePage {
    Rectangle {
        anchors.fill: parent
        z: -1
        color: Theme.well
    }
}
