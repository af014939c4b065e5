import QtQuick
import Fleetor

// A text as it arrives. It is part of something that has an accessible name; a text that stands alone sets its own.
Text {
    textFormat: Text.PlainText
    horizontalAlignment: Text.AlignLeft
    elide: Text.ElideRight
    color: Theme.text
    font.pixelSize: Theme.bodySize
    Accessible.ignored: true
}
