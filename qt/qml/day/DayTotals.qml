pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// What a day adds up to, as far as it is known.
Item {
    id: root

    property FactStripItem strip
    readonly property var facts: strip?.facts ?? []

    height: facts.length > 0 ? flow.y + flow.height + 4 : 0
    visible: facts.length > 0

    Flow {
        id: flow
        x: Theme.margin + 12
        y: 16
        width: parent.width - 2 * x
        spacing: 18

        Repeater {
            model: root.facts
            delegate: Column {
                id: fact
                required property var modelData
                Accessible.role: Accessible.StaticText
                Accessible.name: `${modelData.caption}: ${modelData.value}`

                PlainText {
                    text: fact.modelData.value
                    font.bold: true
                }
                PlainText {
                    text: fact.modelData.caption
                    color: Theme.secondaryText
                    font.pixelSize: Theme.smallSize
                }
            }
        }
    }
}
