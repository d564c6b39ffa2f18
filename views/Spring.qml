import QtQuick
import Kelo

// The one spring of the island: Qt's SpringAnimation with one of Motion's presets, so that
// every animated property moves as the same damped oscillator. `epsilon` suits pixel sizes;
// radii, fractions and scales ask for a finer one.
SpringAnimation {
    property var preset: Motion.island

    spring: preset.spring
    damping: preset.damping
    epsilon: 0.25
}
