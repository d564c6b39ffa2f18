import QtQuick
import QtTest
import KeloTest

// A view test on screen, with a fresh rig for each test function.
TestCase {
    readonly property ViewRig rig: ViewRig {}

    when: windowShown
    visible: true
    width: 800
    height: 520

    function init() {
        rig.startAt(2025, 3, 6, 9, 0)
    }
}
