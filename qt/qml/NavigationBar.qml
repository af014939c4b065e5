pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The bar over a screen: title in the middle, buttons at both ends.
Rectangle {
    id: bar

    property string title
    property var leftItems: []
    property var rightItems: []
    property bool backButton: false
    property string backLabel

    signal backTapped

    height: Theme.barHeight
    color: Theme.bar

    Row {
        id: left
        anchors.left: parent.left
        anchors.leftMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        Repeater {
            model: bar.leftItems
            delegate: BarButton {
                required property var modelData
                button: modelData as ButtonItem
            }
        }
        Tappable {
            visible: bar.backButton && bar.leftItems.length === 0
            width: Theme.touch
            height: Theme.touch
            label: bar.backLabel
            ringColor: Theme.barText
            onTapped: bar.backTapped()
            Image {
                anchors.centerIn: parent
                source: "qrc:/images/NavBack.svg"
                mirror: Theme.mirrored
                sourceSize { width: 28; height: 28 }
            }
        }
    }

    Row {
        id: right
        anchors.right: parent.right
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        Repeater {
            model: Array.from(bar.rightItems).reverse() // the first one is the outermost; keys go as one reads
            delegate: BarButton {
                required property var modelData
                button: modelData as ButtonItem
            }
        }
    }

    TextMetrics {
        id: whole
        text: bar.title
        font.pixelSize: Theme.titleSize
        font.bold: true
    }

    Text {
        readonly property real side: Math.max(left.width, right.width) + 8
        // Centred while that leaves room, else between the buttons.
        readonly property bool centred: whole.advanceWidth + 2 <= bar.width - 2 * side
        x: centred ? (bar.width - width) / 2 : Theme.mirrored ? right.width + 12 : left.width + 8
        width: centred ? whole.advanceWidth + 2 : bar.width - left.width - right.width - 20
        height: bar.height
        verticalAlignment: Text.AlignVCenter
        text: bar.title
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: Theme.barText
        font: whole.font
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: 16
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Image {
        anchors.top: parent.bottom
        width: parent.width
        source: "qrc:/images/NavShadow.svg"
        sourceSize { width: 24; height: 3 }
    }
}
