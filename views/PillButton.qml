import QtQuick
import Kelo

// A capsule button that gives a little while pressed.
Rectangle {
    id: root

    property string text
    property color fill: IslandPalette.inkAt(0.12)
    property color textColor: IslandPalette.ink
    signal clicked()

    implicitWidth: label.implicitWidth + 24
    implicitHeight: 26
    radius: height / 2
    color: fill
    scale: area.pressed ? 0.94 : 1
    border.width: activeFocus ? 1 : 0
    border.color: IslandPalette.inkAt(0.5)
    activeFocusOnTab: true

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onSpacePressed: clicked()

    Behavior on scale { Spring { preset: Motion.list; epsilon: 0.001 } }

    Text {
        id: label

        anchors.centerIn: parent
        text: root.text
        font.pixelSize: 12
        font.weight: Font.DemiBold
        color: root.textColor
    }

    MouseArea {
        id: area

        anchors.fill: parent
        onClicked: root.clicked()
    }
}
