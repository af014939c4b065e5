pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The tabs below a pager. Their pictures are beside the words on a phone held sideways, above them elsewhere.
Rectangle {
    id: strip

    property TabBarItem tabBar
    readonly property int count: tabBar?.titles.length ?? 0
    readonly property int pictureSize: Theme.sideways ? 22 : 26
    readonly property int gap: Theme.sideways ? 6 : 2
    readonly property int wordWidth: width / Math.max(1, count) - (Theme.sideways ? pictureSize + gap + 18 : 8)
    // One size for all titles, at which the widest one fits.
    readonly property int wordSize: {
        const widest = Math.max(1, ...(tabBar?.titles ?? []).map(title => metrics.advanceWidth(title))) / 100;
        return Math.max(9, Math.min(Theme.tabSize, Math.floor(wordWidth / widest)));
    }

    function turn(by) {
        tabBar.tap((tabBar.selectedIndex + by + count) % count);
    }

    function go(index) {
        tabBar.tap(index);
        tabs.itemAt(tabBar.selectedIndex)?.forceActiveFocus();
    }

    height: Theme.tabHeight
    color: Theme.contrast ? Theme.bar : tabBar?.barTintColor ?? "transparent"
    Accessible.role: Accessible.PageTabList
    Accessible.name: ""

    FontMetrics {
        id: metrics
        font.pixelSize: 100
        font.bold: true
    }

    Row {
        anchors.fill: parent
        Repeater {
            id: tabs
            model: strip.count
            delegate: Tappable {
                id: tab

                required property int index

                width: strip.width / strip.count
                height: strip.height
                role: Accessible.PageTab
                label: strip.tabBar?.labels[index] ?? ""
                checked: strip.tabBar?.selectedIndex === index
                ringColor: Theme.barMark
                opacity: pressed ? 0.6 : 1
                tabStop: checked || activeFocus // one stop for all tabs; the arrows go on from there
                onTapped: strip.tabBar.tap(index)
                Keys.onLeftPressed: strip.go(index - Theme.forward)
                Keys.onRightPressed: strip.go(index + Theme.forward)

                Rectangle {
                    anchors.fill: parent
                    anchors.margins: 3
                    radius: 10
                    visible: tab.checked
                    color: Theme.tabPlate
                }
                Grid {
                    anchors.centerIn: parent
                    columns: Theme.sideways ? 2 : 1
                    spacing: strip.gap
                    horizontalItemAlignment: Grid.AlignHCenter
                    verticalItemAlignment: Grid.AlignVCenter
                    OutlinedPicture {
                        picture: (tab.checked ? strip.tabBar?.selectedImages[tab.index] : strip.tabBar?.images[tab.index]) ?? ""
                        ground: tab.checked ? "" : Theme.barGround
                        sourceSize { width: strip.pictureSize; height: strip.pictureSize }

                        Rectangle {
                            anchors.horizontalCenter: parent.right
                            anchors.verticalCenter: parent.top
                            anchors.verticalCenterOffset: 3
                            visible: strip.tabBar?.marks[tab.index] ?? false
                            width: 11
                            height: 11
                            radius: 6
                            color: Theme.alert
                            border.width: 1
                            border.color: Theme.menuText
                        }
                    }
                    PlainText {
                        width: Theme.sideways ? Math.ceil(metrics.advanceWidth(text) * strip.wordSize / 100) + 1 : strip.wordWidth
                        horizontalAlignment: Text.AlignHCenter
                        text: strip.tabBar?.titles[tab.index] ?? ""
                        color: tab.checked ? Theme.tabSelected : Theme.tabTitle
                        style: tab.checked ? Text.Normal : Text.Outline
                        styleColor: Theme.barEdge
                        font.pixelSize: strip.wordSize
                        font.bold: true
                    }
                }
            }
        }
    }
}
