pragma Singleton
import QtQuick

// The island's colours. The standard island is always drawn in the dark scheme (white ink, the
// brighter orange); a glass island follows its look. IslandView sets `dark` for the whole tree.
// Opacities are written as fractions of a colour: IslandPalette.inkAt(0.35) is ink at 35 %.
QtObject {
    property bool dark: true

    readonly property color ink: dark ? "#ffffff" : "#000000"
    readonly property color inkInverse: dark ? "#000000" : "#ffffff"
    readonly property color keloOrange: dark ? Qt.rgba(1.0, 0.62, 0.04, 1) : Qt.rgba(0.78, 0.40, 0.0, 1)
    readonly property color keloGreen: Qt.rgba(0.19, 0.82, 0.35, 1)
    readonly property color keloRed: Qt.rgba(1.0, 0.27, 0.23, 1)
    readonly property color keloPurple: Qt.rgba(0.75, 0.35, 0.95, 1)
    readonly property color keloBlue: Qt.rgba(0.25, 0.60, 1.0, 1)

    function faded(colour, opacity) {
        return Qt.rgba(colour.r, colour.g, colour.b, colour.a * opacity)
    }

    function inkAt(opacity) {
        return faded(ink, opacity)
    }
}
