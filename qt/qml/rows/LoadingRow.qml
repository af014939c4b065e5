pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A placeholder for data that is still to come.
RowBody {
    id: row

    readonly property ActivityIndicatorItem indicator: cell?.outlet("activityIndicator") as ActivityIndicatorItem

    spoken: cell?.accessibleName ?? ""

    Spinner {
        anchors.centerIn: parent
        running: row.indicator?.animating ?? false
    }
}
