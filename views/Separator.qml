import QtQuick
import Kelo

// A faint line between groups of settings.
Item {
    implicitHeight: 1

    Rectangle {
        x: 10
        width: parent.width - 20
        height: 1
        color: IslandPalette.inkAt(0.08)
    }
}
