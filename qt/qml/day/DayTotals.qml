pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// What a day adds up to, as far as it is known.
Copyable {
    id: root

    property FactStripItem strip
    readonly property var facts: strip?.facts ?? []

    text: facts.map(fact => `${fact.caption}: ${fact.value}`).join("\n")
    role: Accessible.Grouping
    holdable: false
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
            delegate: Item {
                id: fact
                required property var modelData
                width: words.width
                height: words.height
                Accessible.role: Accessible.StaticText
                Accessible.name: `${modelData.caption}: ${modelData.value}`

                CopyTaps {
                    onCopied: root.screen.copy(fact.modelData.value)
                }
                Column {
                    id: words

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
}
