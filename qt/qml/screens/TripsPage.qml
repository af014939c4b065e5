// A day's trips and stops as cards.
import QtQuick
import Fleetor

TablePage {
    Rectangle {
        anchors.fill: parent
        z: -1
        color: Theme.well
    }
}
