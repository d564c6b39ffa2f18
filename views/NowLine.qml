import QtQuick
import QtQuick.Layouts
import Kelo

// The current time among today's timed tasks: what lies above it has passed.
RowLayout {
    id: root

    property string time

    implicitHeight: 16
    spacing: 6

    Accessible.role: Accessible.Separator
    Accessible.name: "Now, " + time

    Item { Layout.preferredWidth: 10 } // 16 of padding with the spacing
    Rectangle {
        Layout.preferredWidth: 6
        Layout.preferredHeight: 6
        radius: 3
        color: IslandPalette.keloOrange
    }
    Rectangle {
        Layout.fillWidth: true
        Layout.preferredHeight: 1
        color: IslandPalette.faded(IslandPalette.keloOrange, 0.45)
    }
    Text {
        text: root.time
        font.family: Fonts.rounded
        font.pixelSize: 10
        font.bold: true
        color: IslandPalette.keloOrange
    }
    Item { Layout.preferredWidth: 10 }
}
