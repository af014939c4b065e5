import QtQuick
import Fleetor

// A text of a row, in one line or, where that is too little, in more.
PlainText {
    property bool wraps: Theme.large
    property int mostLines: 3

    width: parent.width
    wrapMode: wraps ? Text.Wrap : Text.NoWrap
    maximumLineCount: wraps ? mostLines : 1
}
