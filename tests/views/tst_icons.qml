import QtQuick
import QtTest
import Kelo

TestCase {
    id: test
    name: "Icons"
    when: windowShown
    visible: true
    width: 48
    height: 48

    Component {
        id: stageComponent
        Item {
            property alias icon: icon
            width: 48
            height: 48
            Icon { id: icon; x: 18; y: 18; size: 12; color: "red" }
        }
    }

    // Every icon the island names draws in its tint, and only inside its own square.
    function test_everyIconDrawsInItsSquare() {
        const names = ["bell.fill", "checkmark", "checkmark.circle.fill", "circle", "gearshape",
                       "gearshape.fill", "sun.max", "sun.max.fill", "calendar",
                       "calendar.badge.clock", "trash", "tray.fill", "plus", "chevron.left"]
        for (const name of names) {
            const stage = createTemporaryObject(stageComponent, test)
            stage.icon.name = name
            waitForRendering(stage)
            const image = grabImage(stage)
            let inside = 0
            let outside = 0
            for (let x = 0; x < 48; ++x) {
                for (let y = 0; y < 48; ++y) {
                    // Red on the window's white, antialiased edges included.
                    if (image.green(x, y) > 160 || image.red(x, y) < 200)
                        continue
                    if (x >= 17 && x < 31 && y >= 17 && y < 31)
                        ++inside
                    else
                        ++outside
                }
            }
            verify(inside > 8, name + " drew " + inside + " pixels")
            compare(outside, 0, name + " stays in its square")
        }
    }
}
