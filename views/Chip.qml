import QtQuick
import Kelo

// A small selectable capsule; a chip that is on is a solid pill in the ink colour. Whether it
// is on is decided by its user.
Rectangle {
    id: root

    property string label
    property bool on: false
    signal clicked()

    implicitWidth: text.implicitWidth + 18
    implicitHeight: 22
    radius: height / 2
    color: on ? IslandPalette.ink : IslandPalette.inkAt(0.08)
    border.width: activeFocus ? 1 : 0
    border.color: IslandPalette.inkAt(0.5)
    activeFocusOnTab: true

    Accessible.role: Accessible.CheckBox
    Accessible.name: label
    Accessible.checkable: true
    Accessible.checked: on
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onSpacePressed: clicked()

    Text {
        id: text

        anchors.centerIn: parent
        text: root.label
        font.pixelSize: 11
        font.weight: Font.DemiBold
        color: root.on ? IslandPalette.inkInverse : IslandPalette.inkAt(0.75)
    }

    MouseArea {
        anchors.fill: parent
        onClicked: root.clicked()
    }
}
