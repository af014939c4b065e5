import QtQuick
import Fleetor

// A text of a row, of which parts may stand out.
RowText {
    property LabelItem label
    readonly property var pieces: label?.pieces ?? []

    function styled(piece, i) {
        return i % 2 ? `<font color="${Theme.accent}"><u>${piece}</u></font>` : piece;
    }

    text: pieces.length === 0 ? label?.text ?? "" : pieces.map(styled).join("")
    textFormat: pieces.length === 0 ? Text.PlainText : Text.StyledText
}
