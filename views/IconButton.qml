import QtQuick
import Kelo

// A small icon button: the icon brightens and a faint square lights under the pointer, and the
// help text shows as a tooltip after a moment.
Item {
    id: root

    property string icon
    property string help
    property color tint: IslandPalette.ink
    readonly property bool hovered: area.containsMouse
    signal clicked()

    implicitWidth: 24
    implicitHeight: 22
    activeFocusOnTab: true

    Accessible.role: Accessible.Button
    Accessible.name: help
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onSpacePressed: clicked()

    Rectangle {
        anchors.fill: parent
        radius: 6
        color: root.hovered || root.activeFocus ? IslandPalette.inkAt(0.1) : "transparent"
    }

    Icon {
        anchors.centerIn: parent
        name: root.icon
        size: 13
        color: IslandPalette.faded(root.tint, root.hovered ? 1 : 0.6)
    }

    MouseArea {
        id: area

        anchors.fill: parent
        hoverEnabled: true
        onClicked: root.clicked()
        onContainsMouseChanged: {
            if (containsMouse) {
                tipDelay.start()
            } else {
                tipDelay.stop()
                DesktopToolTip.hide()
            }
        }
    }

    Timer {
        id: tipDelay

        interval: 700
        onTriggered: DesktopToolTip.show(root, root.help)
    }
}
