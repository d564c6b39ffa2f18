import QtQuick
import Kelo

// What the quick-add field makes of the draft, as a small capsule: purple without a day, blue
// with a day, orange with a day and a time.
Rectangle {
    id: root

    property bool hasDay: false
    property bool hasMinute: false
    property string text
    readonly property color tint: !hasDay ? IslandPalette.keloPurple
                                  : hasMinute ? IslandPalette.keloOrange : IslandPalette.keloBlue

    implicitWidth: label.implicitWidth + 16
    implicitHeight: label.implicitHeight + 6
    radius: height / 2
    color: IslandPalette.faded(tint, 0.16)

    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Text {
        id: label

        anchors.centerIn: parent
        text: root.text
        font.family: Fonts.rounded
        font.pixelSize: 11
        font.bold: true
        color: root.tint
    }
}
