import QtQuick
import Kelo

// The round check of a task row: an empty ring, or a green disc with a check when done.
Item {
    id: root

    property bool done: false
    // Springs between 0 and 1 with the check circle's spring, overshooting a little.
    property real doneness: done ? 1 : 0
    signal clicked()

    implicitWidth: 18
    implicitHeight: 18
    activeFocusOnTab: true

    Accessible.role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: done
    Accessible.onPressAction: clicked()
    Accessible.onToggleAction: clicked()
    Keys.onSpacePressed: clicked()
    Keys.onReturnPressed: clicked()

    Behavior on doneness { Spring { preset: Motion.checkCircle; epsilon: 0.005 } }

    Rectangle {
        anchors.fill: parent
        anchors.margins: 0.75
        radius: width / 2
        color: "transparent"
        border.width: 1.5
        border.color: IslandPalette.inkAt(root.done ? 0 : 0.35)
    }
    Rectangle {
        anchors.fill: parent
        radius: width / 2
        color: IslandPalette.keloGreen
        scale: 0.01 + 0.99 * Math.max(0, root.doneness)
        visible: root.doneness > 0.01
    }
    Icon {
        anchors.centerIn: parent
        name: "checkmark"
        size: 9
        color: "black"
        scale: 0.4 + 0.6 * root.doneness
        opacity: Math.min(1, Math.max(0, root.doneness))
    }
    Rectangle {
        anchors.fill: parent
        anchors.margins: -2
        radius: width / 2
        color: "transparent"
        border.width: root.activeFocus ? 1 : 0
        border.color: IslandPalette.inkAt(0.5)
    }

    MouseArea {
        anchors.fill: parent
        onClicked: root.clicked()
    }
}
