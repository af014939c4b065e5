pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A short message that disappears by itself. Taps go through it.
Overlay {
    id: root

    onSubjectChanged: {
        const toast = subject as ToastItem;
        if (!toast)
            return;
        message.text = toast.text;
        panel.radius = toast.rounded ? 14 : 0;
        presence = 0;
        come();
    }

    Rectangle {
        id: panel
        anchors.horizontalCenter: parent.horizontalCenter
        y: parent.height - height - 96
        width: message.width + 40
        height: message.height + 28
        color: Theme.toast
        opacity: root.presence
        Accessible.role: Accessible.AlertMessage
        Accessible.name: message.text

        PlainText {
            id: message
            anchors.centerIn: parent
            width: Math.min(implicitWidth, root.width - 72, 520)
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            color: Theme.toastText
        }
    }
}
