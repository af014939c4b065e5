pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The head of the date picker: the title between Cancel and Done, and the month between arrows.
Column {
    id: root

    property WindowItem window
    property string title
    property string month
    readonly property bool narrow: width < 4 * Theme.touch + 7.5 * Theme.bodySize // the name of the month has a separate line

    signal cancelled
    signal accepted
    signal turned(int months)

    component Arrow: TextButton {
        property string word
        property string pointing // in a left-to-right layout
        property int months
        symbol: !Theme.mirrored ? pointing : { "«": "»", "‹": "›", "›": "‹", "»": "«" }[pointing]
        label: root.window?.word(word) ?? ""
        onTapped: root.turned(months)
    }

    Item {
        id: answers

        readonly property real beside: width - 2 * Math.max(cancel.width, done.width) - 24
        readonly property bool stacked: title.implicitWidth > beside // the title has a separate line
        readonly property real squeeze: Math.min(1, (width - 16) / (cancel.implicitWidth + done.implicitWidth))

        width: parent.width
        height: Theme.barHeight + (stacked ? title.height : 0)
        TextButton {
            id: cancel
            width: implicitWidth * answers.squeeze
            anchors.left: parent.left
            anchors.leftMargin: 8
            anchors.bottom: parent.bottom
            anchors.bottomMargin: (Theme.barHeight - height) / 2
            label: root.window?.word("Cancel") ?? ""
            onTapped: root.cancelled()
        }
        PlainText {
            id: title
            anchors.horizontalCenter: parent.horizontalCenter
            y: answers.stacked ? 8 : (parent.height - height) / 2
            width: answers.stacked ? parent.width - 16 : answers.beside
            horizontalAlignment: Text.AlignHCenter
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 11
            text: root.title
            font.pixelSize: Theme.bodySize + 1
            font.bold: true
        }
        TextButton {
            id: done
            width: implicitWidth * answers.squeeze
            anchors.right: parent.right
            anchors.rightMargin: 8
            anchors.bottom: parent.bottom
            anchors.bottomMargin: (Theme.barHeight - height) / 2
            label: root.window?.word("Done") ?? ""
            onTapped: root.accepted()
        }
    }

    Item {
        width: parent.width
        height: Theme.touch + (root.narrow ? monthName.height : 0)
        Row {
            anchors.left: parent.left
            Arrow { word: "Previous year"; pointing: "«"; months: -12 }
            Arrow { word: "Previous month"; pointing: "‹"; months: -1 }
        }
        PlainText {
            id: monthName
            anchors.horizontalCenter: parent.horizontalCenter
            y: root.narrow ? Theme.touch : (parent.height - height) / 2
            width: parent.width - (root.narrow ? 16 : 4 * Theme.touch - 16) // the arrows leave that much
            horizontalAlignment: Text.AlignHCenter
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 11
            text: root.month
            font.bold: true
            Accessible.ignored: false
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Row {
            anchors.right: parent.right
            Arrow { word: "Next month"; pointing: "›"; months: 1 }
            Arrow { word: "Next year"; pointing: "»"; months: 12 }
        }
    }
}
