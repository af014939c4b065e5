import QtQuick
import Fleetor

// A picture with an outline that stands out from its ground.
Image {
    property url picture
    property string ground: Theme.dark ? "dark" : "light" // or "bar"; empty: no outline

    source: ground === "" ? picture : String(picture).replace("qrc:/images/", `image://outlined/${ground}/`)
}
