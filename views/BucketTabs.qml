import QtQuick
import Kelo

// The three lists as tabs. The highlight behind the chosen tab slides and stretches to the next
// one with the list spring.
Item {
    id: root

    required property IslandModel model
    readonly property var titles: ["Today", "Upcoming", "Backlog"]
    // Null until the tabs exist.
    readonly property Item selectedTab: tabs.count > 0 ? tabs.itemAt(model.bucket) : null

    implicitWidth: row.implicitWidth
    implicitHeight: row.implicitHeight

    Rectangle {
        id: pill

        x: root.selectedTab ? root.selectedTab.x : 0
        y: root.selectedTab ? root.selectedTab.y : 0
        width: root.selectedTab ? root.selectedTab.width : 0
        height: root.selectedTab ? root.selectedTab.height : 0
        radius: height / 2
        color: IslandPalette.inkAt(0.14)

        Behavior on x { Spring { preset: Motion.list } }
        Behavior on width { Spring { preset: Motion.list } }
    }

    Row {
        id: row

        spacing: 2

        Repeater {
            id: tabs

            model: root.titles

            Item {
                id: tab

                required property int index
                required property string modelData
                readonly property bool selected: root.model.bucket === index

                implicitWidth: label.implicitWidth + 18
                implicitHeight: label.implicitHeight + 8
                activeFocusOnTab: true

                Accessible.role: Accessible.PageTab
                Accessible.name: modelData
                Accessible.selected: selected
                Accessible.onPressAction: root.model.selectBucket(index)
                Keys.onSpacePressed: root.model.selectBucket(index)
                Keys.onReturnPressed: root.model.selectBucket(index)

                Text {
                    id: label

                    anchors.centerIn: parent
                    text: tab.modelData
                    font.pixelSize: 12
                    font.weight: Font.DemiBold
                    color: tab.selected ? IslandPalette.ink : IslandPalette.inkAt(0.45)
                }
                Rectangle {
                    anchors.fill: parent
                    radius: height / 2
                    color: "transparent"
                    border.width: tab.activeFocus ? 1 : 0
                    border.color: IslandPalette.inkAt(0.5)
                }
                MouseArea {
                    anchors.fill: parent
                    onClicked: root.model.selectBucket(tab.index)
                }
            }
        }
    }
}
