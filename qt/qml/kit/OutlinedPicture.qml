import QtQuick
import Fleetor

// A picture of a vehicle or a place, with an outline that stands out from its ground.
Image {
    property url picture
    property bool onDark: Theme.dark

    source: String(picture).replace("qrc:/images/", `image://outlined/${onDark ? "on-dark" : "on-light"}/`)
}
