import QtQuick
import QtTest
import KeloTest

// A view test on screen, with a fresh rig for each test function.
TestCase {
    id: root

    readonly property ViewRig rig: ViewRig {}

    when: windowShown
    visible: true
    width: 800
    height: 520

    function init() {
        rig.startAt(2025, 3, 6, 9, 0)
    }

    // A view of the rig's model, destroyed after the test function.
    function make(component, properties) {
        return createTemporaryObject(component, root, Object.assign({ model: rig.model }, properties))
    }

    // The items below `item` for which `matches` holds, not looking inside those.
    function childrenWhere(item, matches) {
        return Array.from(item.children).reduce(
            (found, child) => found.concat(matches(child) ? [child] : childrenWhere(child, matches)), [])
    }
}
