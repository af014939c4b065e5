pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// What travels along a line: its picture, and around it an arrow that points where it goes.
Item {
    id: root

    property MapViewItem map

    x: (map?.travellerPlace.x ?? 0) - width / 2
    y: (map?.travellerPlace.y ?? 0) - height / 2
    width: 40
    height: 40
    visible: map?.travels ?? false
    Accessible.ignored: true // its place is read out with the controls

    Rectangle {
        anchors.centerIn: parent
        width: 46
        height: 46
        radius: 23
        color: Theme.mapLabel
        border.width: 2
        border.color: Theme.brand
    }

    Item {
        anchors.centerIn: parent
        width: 46
        height: 46
        rotation: root.map?.travellerCourse ?? 0

        Image {
            anchors.horizontalCenter: parent.horizontalCenter
            y: -13
            source: "qrc:/images/course.svg"
            sourceSize { width: 18; height: 18 }
        }
    }

    OutlinedPicture {
        anchors.fill: parent
        anchors.margins: 3
        picture: root.map?.travellerImage ?? ""
        sourceSize { width: 34; height: 34 }
    }
}
