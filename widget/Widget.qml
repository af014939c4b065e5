import QtQuick
import QtQuick.Window

// A card for the desktop: the vehicle's name, how fast it is, when and where that was. A tap asks for another vehicle.
Window {
    id: window

    required property var vehicle
    required property var texts // English text to translation
    readonly property bool dark: palette.window.hslLightness < 0.5
    readonly property color ink: dark ? "#f2f5f7" : "#22303c"
    readonly property color paleInk: dark ? "#b4c0c8" : "#55646f"
    readonly property string headline: !vehicle.chosen ? word("No vehicle chosen") : vehicle.name || word("Chosen vehicle")

    readonly property int needed: Math.ceil(lines.implicitHeight) + 48 // what its texts take at the system's font size

    function word(english) {
        return texts[english] ?? english
    }

    function change() {
        problem.visible = !vehicle.change()
    }

    visible: true
    width: 320
    height: 168
    minimumWidth: 240
    minimumHeight: Math.max(140, needed)
    onNeededChanged: height = Math.max(height, needed)
    title: vehicle.speed ? headline + ", " + vehicle.speed : headline
    color: dark ? "#12181d" : "#abc2cc"

    SystemPalette {
        id: palette
    }

    Rectangle {
        id: card

        anchors.fill: parent
        anchors.margins: 8
        radius: 18
        color: window.dark ? "#1f282f" : "#ffffff"
        border.width: activeFocus ? 2 : 0
        border.color: "#2a7c9f"
        focus: true
        LayoutMirroring.enabled: Application.layoutDirection === Qt.RightToLeft
        LayoutMirroring.childrenInherit: true

        Accessible.role: Accessible.Button
        Accessible.name: window.title + ". " + window.word("Choose vehicle")
        Accessible.onPressAction: window.change()
        Keys.onReturnPressed: window.change()
        Keys.onSpacePressed: window.change()

        TapHandler {
            onTapped: window.change()
        }

        Column {
            id: lines

            anchors.fill: parent
            anchors.margins: 16
            spacing: 4

            Line {
                color: window.ink
                font.pointSize: street.font.pointSize * 1.25
                font.bold: true
                text: window.headline
            }
            Line {
                color: window.ink
                font.pointSize: street.font.pointSize * 2
                visible: window.vehicle.speed !== ""
                text: window.vehicle.speed
            }
            Line {
                color: window.paleInk
                text: window.vehicle.dateTime || (window.vehicle.chosen ? window.word("Open the vehicle in Fleetor for its readings") : window.word("Tap to choose one in Fleetor"))
            }
            Line {
                id: street

                color: window.paleInk
                visible: text !== ""
                text: window.vehicle.street
            }
            Line {
                id: problem

                color: window.dark ? "#ff9d8f" : "#b3261e"
                visible: false
                text: window.word("Fleetor could not be opened")
            }
        }
    }

    component Line: Text {
        width: parent.width
        elide: Text.ElideRight
        wrapMode: Text.Wrap
        maximumLineCount: 4
        horizontalAlignment: Text.AlignLeft
        textFormat: Text.PlainText
    }
}
