import QtQuick
import Kelo

// The glass island's body: a translucent fill tinted by the look, with a soft highlight along
// its edge. Only drawn while a compositor runs, which shows (and may blur) what lies behind.
NotchShape {
    id: root

    // The look: a light glass under dark ink, or a dark one under light ink.
    property bool dark: true

    fillColor: dark ? Qt.rgba(0.08, 0.08, 0.09, 0.72) : Qt.rgba(0.96, 0.96, 0.97, 0.74)
    strokeColor: Qt.rgba(1, 1, 1, dark ? 0.18 : 0.6)
    strokeWidth: 1
}
