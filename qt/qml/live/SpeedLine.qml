pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// Where the vehicle heads and how fast it is.
Row {
    id: root

    required property ViewControllerItem screen
    property real size // of the speed's letters, in points
    readonly property LabelItem speed: screen.outlet("speedLabel") as LabelItem
    readonly property LabelItem unit: screen.outlet("speedUnitLabel") as LabelItem
    readonly property string words: number.text === "" ? "" : `${number.text} ${unit?.text ?? ""}`

    spacing: 12
    visible: words !== ""

    CourseArrow {
        anchors.verticalCenter: parent.verticalCenter
        screen: root.screen
        width: Math.round(root.size * 1.4)
    }
    PlainText {
        id: number
        text: root.speed?.text ?? ""
        color: root.speed?.faded ? Theme.secondaryText : Theme.text
        font.pixelSize: root.size
        font.weight: Font.DemiBold
    }
    PlainText {
        anchors.baseline: number.baseline
        text: root.unit?.text ?? ""
        color: Theme.secondaryText
    }
}
