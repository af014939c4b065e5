pragma ComponentBehavior: Bound
import QtQuick

// Reports words to assistive technology whenever the topic changes, and is silent otherwise.
Item {
    id: root

    property string words
    property string topic: words
    property bool heard: true // whether what the words are about is in view

    visible: silence.running
    Accessible.role: Accessible.AlertMessage
    Accessible.name: words
    onTopicChanged: {
        silence.stop();
        if (heard && topic !== "")
            silence.start();
    }

    Timer {
        id: silence
        interval: 1000
    }
}
