pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The bar above a screen: the title in the middle, buttons at both ends.
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
            ringColor: Theme.barMark
            onTapped: bar.backTapped()
            OutlinedPicture {
                anchors.centerIn: parent
                picture: Theme.appearance?.backImage ?? ""
                ground: Theme.barGround
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
            model: Array.from(bar.rightItems).reverse() // the first one is the outermost; the tab order is the reading order
            delegate: BarButton {
                required property var modelData
                button: modelData as ButtonItem
            }
        }
    }

    FontMetrics {
        id: metrics
        font.pixelSize: 100
        font.bold: true
    }

    PlainText {
        readonly property real side: Math.max(left.width, right.width) + 8
        readonly property real room: bar.width - left.width - right.width - 20
        readonly property real whole: metrics.advanceWidth(bar.title) / 100 // at a size of 1
        readonly property real word: Math.max(0, ...bar.title.split(/\s/).map(word => metrics.advanceWidth(word))) / 100
        // Centred while that leaves room, else between the buttons: somewhat smaller, or in two lines.
        readonly property bool centred: Math.ceil(whole * Theme.titleSize) + 2 <= bar.width - 2 * side
        readonly property real one: room / whole
        readonly property real two: Math.min(room / word, 1.8 * room / whole, bar.height / 2.8)
        readonly property bool single: centred || one > two || one > 0.8 * Theme.titleSize
        x: centred ? (bar.width - width) / 2 : Theme.mirrored ? right.width + 12 : left.width + 8
        width: centred ? Math.ceil(whole * Theme.titleSize) + 2 : room
        height: bar.height
        horizontalAlignment: centred ? Text.AlignHCenter : Text.AlignLeft
        verticalAlignment: Text.AlignVCenter
        text: bar.title
        visible: text !== ""
        wrapMode: single ? Text.NoWrap : Text.Wrap
        maximumLineCount: 2
        color: Theme.barTitle
        style: Text.Outline
        styleColor: Theme.barEdge
        font.pixelSize: centred ? Theme.titleSize : Math.max(11, Math.min(Theme.titleSize, Math.floor((single ? one : two) - 0.5)))
        font.bold: true
        Accessible.ignored: false
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Image {
        anchors.top: parent.bottom
        width: parent.width
        source: Theme.appearance?.shadowImage ?? ""
        sourceSize { width: 24; height: 3 }
    }
}
