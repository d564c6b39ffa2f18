import QtQuick
import Kelo
import KeloTest

// Every icon the island names draws in its tint, and only inside its own square.
ViewTest {
    id: test
    name: "Icons"

    Component {
        id: stageComponent
        Item {
            property alias icon: icon
            width: 48
            height: 48
            Icon { id: icon; x: 18; y: 18; size: 12; color: "red" }
        }
    }

    function test_everyIconDrawsInItsSquare() {
        for (const name of ["bell.fill", "checkmark", "checkmark.circle.fill", "circle", "gearshape",
                            "gearshape.fill", "sun.max", "sun.max.fill", "calendar",
                            "calendar.badge.clock", "trash", "tray.fill", "plus", "chevron.left"]) {
            const stage = createTemporaryObject(stageComponent, test, { "icon.name": name })
            waitForRendering(stage)
            const image = grabImage(stage)
            const drawn = [0, 0] // inside, outside
            for (let x = 0; x < 48; ++x) {
                for (let y = 0; y < 48; ++y) {
                    // Red on the window's white, antialiased edges included.
                    if (image.green(x, y) <= 160 && image.red(x, y) >= 200)
                        ++drawn[x >= 17 && x < 31 && y >= 17 && y < 31 ? 0 : 1]
                }
            }
            verify(drawn[0] > 8, name + " drew " + drawn[0] + " pixels")
            compare(drawn[1], 0, name + " stays in its square")
        }
    }
}
