pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// The tabs beneath a pager.
Rectangle {
    id: strip

    property TabBarItem tabBar
    readonly property int count: tabBar?.titles.length ?? 0

    function turn(by) {
        tabBar.tap((tabBar.selectedIndex + by + count) % count);
    }

    function go(index) {
        tabBar.tap(index);
        tabs.itemAt(tabBar.selectedIndex)?.forceActiveFocus();
    }

    height: Math.max(56, 34 + Theme.tabSize * 1.6)
    color: Theme.bar
    Accessible.role: Accessible.PageTabList
    Accessible.name: ""

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
                label: strip.tabBar?.titles[index] ?? ""
                checked: strip.tabBar?.selectedIndex === index
                ringColor: Theme.barText
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
                Column {
                    anchors.centerIn: parent
                    width: parent.width - 8
                    spacing: 2
                    Image {
                        anchors.horizontalCenter: parent.horizontalCenter
                        source: (tab.checked ? strip.tabBar?.selectedImages[tab.index] : strip.tabBar?.images[tab.index]) ?? ""
                        sourceSize { width: 26; height: 26 }
                    }
                    Text {
                        width: parent.width
                        horizontalAlignment: Text.AlignHCenter
                        elide: Text.ElideRight
                        fontSizeMode: Text.HorizontalFit
                        minimumPixelSize: 9
                        text: tab.label
                        textFormat: Text.PlainText
                        color: tab.checked ? Theme.tabSelected : Theme.barText
                        font.pixelSize: Theme.tabSize
                        font.bold: true
                        Accessible.ignored: true
                    }
                }
            }
        }
    }
}
