pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// A short message that comes and goes by itself, and lets every tap through.
Item {
    id: root

    property ToastItem toast

    onToastChanged: {
        if (toast) {
            panel.opacity = 0;
            fade.restart();
        }
    }

    Rectangle {
        id: panel
        anchors.horizontalCenter: parent.horizontalCenter
        y: parent.height - height - 96
        width: message.width + 40
        height: message.height + 28
        radius: (root.toast?.rounded ?? false) ? 14 : 0
        color: Theme.toast
        opacity: 0
        Accessible.role: Accessible.AlertMessage
        Accessible.name: message.text

        Text {
            id: message
            anchors.centerIn: parent
            width: Math.min(implicitWidth, root.width - 72, 520)
            text: root.toast?.text ?? ""
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            color: Theme.toastText
            font.pixelSize: Theme.bodySize
            Accessible.ignored: true
        }
    }

    NumberAnimation {
        id: fade
        target: panel
        property: "opacity"
        to: 1
        duration: 200
    }
}
