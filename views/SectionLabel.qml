import QtQuick
import Kelo

// A heading in a task list, in capitals.
Item {
    id: root

    property string text
    property color tint: IslandPalette.inkAt(0.35)

    implicitHeight: label.implicitHeight + 10

    Accessible.role: Accessible.Heading
    Accessible.name: text

    Text {
        id: label

        x: 10
        y: 8
        text: root.text
        font.pixelSize: 10
        font.bold: true
        font.capitalization: Font.AllUppercase
        font.letterSpacing: 0.8
        color: root.tint
    }
}
