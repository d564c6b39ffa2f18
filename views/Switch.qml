import QtQuick
import Kelo

// A small on/off switch, green when on. It says what the user asked for through `toggled`; its
// owner decides what `on` then is, so a refused change springs back.
Item {
    id: root

    property bool on: false
    property string name
    signal toggled(bool value)

    implicitWidth: 30
    implicitHeight: 18
    activeFocusOnTab: true

    Accessible.role: Accessible.CheckBox
    Accessible.name: name
    Accessible.checkable: true
    Accessible.checked: on
    Accessible.onPressAction: toggled(!on)
    Accessible.onToggleAction: toggled(!on)
    Keys.onSpacePressed: toggled(!on)
    Keys.onReturnPressed: toggled(!on)

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: root.on ? IslandPalette.keloGreen : IslandPalette.inkAt(0.2)
        border.width: root.activeFocus ? 1 : 0
        border.color: IslandPalette.inkAt(0.6)

        Behavior on color { ColorAnimation { duration: 150 } }
    }
    Rectangle {
        x: root.on ? root.width - width - 2 : 2
        anchors.verticalCenter: parent.verticalCenter
        width: root.height - 4
        height: width
        radius: width / 2
        color: "white"

        Behavior on x { Spring { preset: Motion.list } }
    }
    MouseArea {
        anchors.fill: parent
        onClicked: root.toggled(!root.on)
    }
}
