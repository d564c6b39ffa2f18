import QtQuick
import Kelo

// System, Light or Dark for the glass island, as three segments with a sliding highlight.
Rectangle {
    id: root

    required property IslandModel model
    readonly property var looks: [Island.System, Island.Light, Island.Dark]
    readonly property var labels: ["System", "Light", "Dark"]
    readonly property int selected: looks.indexOf(model.preferences.glassLook)
    readonly property real segment: width / 3

    implicitWidth: 210
    implicitHeight: 22
    radius: 7
    color: IslandPalette.inkAt(0.08)

    Rectangle {
        x: 2 + root.selected * root.segment
        y: 2
        width: root.segment - 4
        height: root.height - 4
        radius: 5
        color: IslandPalette.inkAt(0.2)

        Behavior on x { Spring { preset: Motion.list } }
    }

    Row {
        Repeater {
            model: root.labels

            Item {
                required property int index
                required property string modelData

                width: root.segment
                height: root.height
                activeFocusOnTab: true

                Accessible.role: Accessible.RadioButton
                Accessible.name: modelData
                Accessible.checked: root.selected === index
                Accessible.onPressAction: root.model.preferences.glassLook = root.looks[index]
                Keys.onSpacePressed: root.model.preferences.glassLook = root.looks[index]

                Text {
                    anchors.centerIn: parent
                    text: parent.modelData
                    font.pixelSize: 11
                    font.weight: Font.DemiBold
                    color: IslandPalette.inkAt(root.selected === parent.index ? 1 : 0.6)
                }
                MouseArea {
                    anchors.fill: parent
                    onClicked: root.model.preferences.glassLook = root.looks[parent.index]
                }
            }
        }
    }
}
