pragma ComponentBehavior: Bound
import QtQuick
import Fleetor
import QtQuick.Window

// A text field. The component owns the text and the focus; input goes back to it.
FocusScope {
    id: root

    property TextFieldItem field
    property real spare: 0 // points at the end that hold something else
    property bool captioned: false // the placeholder stays as a caption once something is typed
    property bool capsLock: false // as far as the last letter typed tells
    property string hint // what assistive technology reads out after the name, and whenever it changes

    function follow() {
        if (!field)
            return;
        if (input.typed !== field.text)
            input.type(field.text);
        if (field.firstResponder && !input.activeFocus)
            input.forceActiveFocus();
        else if (!field.firstResponder && input.activeFocus)
            input.focus = false;
    }

    implicitHeight: Math.max(50, Theme.bodySize * (captioned ? 3.2 : 2.4))
    onFieldChanged: follow()

    Connections {
        target: root.field
        function onChanged() {
            root.follow();
        }
    }

    Rectangle {
        anchors.fill: parent
        radius: 8
        color: Theme.field
        border.width: input.activeFocus || invalid ? 2 : 1
        border.color: invalid ? Theme.alert : input.activeFocus ? Theme.focusRing : Theme.fieldBorder
        readonly property bool invalid: root.field?.invalid ?? false
    }

    MouseArea {
        anchors.fill: parent
        cursorShape: Qt.IBeamCursor
        onClicked: input.forceActiveFocus()
    }

    TextInput {
        id: input

        // Hides TextInput's property: assistive technology reads and writes the one of this name, and gets the bullets of a
        // password.
        property string text
        readonly property string shown: echoMode === TextInput.Normal ? typed : passwordCharacter.repeat(length)
        readonly property string typed: length > 0 ? getText(0, length) : ""

        // An assignment would announce the old and the new text to assistive technology.
        function type(wanted: string) {
            remove(0, length);
            insert(0, wanted);
        }

        anchors.fill: parent
        anchors.leftMargin: 14
        anchors.rightMargin: Math.max(14, root.spare)
        anchors.topMargin: caption.visible ? caption.y + caption.height : 0
        anchors.bottomMargin: caption.visible ? 4 : 0
        horizontalAlignment: TextInput.AlignLeft
        verticalAlignment: TextInput.AlignVCenter
        clip: true
        focus: true
        activeFocusOnTab: true
        selectByMouse: true
        color: Theme.text
        selectionColor: Theme.accent
        selectedTextColor: Theme.accentText
        font.pixelSize: Theme.bodySize
        echoMode: (root.field?.secure ?? false) ? TextInput.Password : TextInput.Normal
        inputMethodHints: Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase | (root.field?.secure ? Qt.ImhSensitiveData | Qt.ImhHiddenText : 0)
        onShownChanged: text = shown
        onTextChanged: {
            if (text !== shown)
                type(text);
            text = shown;
        }
        onTypedChanged: if (root.field && root.field.text !== typed) root.field.text = typed
        onAccepted: root.field.pressReturn()
        Keys.onPressed: event => {
            const letter = event.text;
            if (event.key === Qt.Key_CapsLock)
                root.capsLock = false; // until the next letter tells
            else if (letter.toLowerCase() !== letter.toUpperCase())
                root.capsLock = (letter === letter.toUpperCase()) !== Boolean(event.modifiers & Qt.ShiftModifier);
            event.accepted = false;
        }
        onActiveFocusChanged: {
            if (!root.field)
                return;
            if (activeFocus)
                root.field.firstResponder = true;
            else if (Window.active)
                root.field.firstResponder = false;
        }
        Accessible.role: Accessible.EditableText
        Accessible.name: root.field?.accessibleName ?? ""
        Accessible.description: root.hint
        Accessible.editable: true
    }

    PlainText {
        id: caption
        anchors.left: input.left
        anchors.right: input.right
        y: 5
        visible: root.captioned && !placeholder.visible
        text: placeholder.text
        color: Theme.secondaryText
        font.pixelSize: Math.round(0.75 * Theme.bodySize)
    }

    PlainText {
        id: placeholder
        anchors.left: input.left
        anchors.right: input.right
        height: parent.height
        verticalAlignment: Text.AlignVCenter // of the letters, which may be smaller than their line
        visible: input.length === 0 && input.preeditText === ""
        text: root.field?.placeholder ?? ""
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: 14
        color: Theme.secondaryText
    }
}
