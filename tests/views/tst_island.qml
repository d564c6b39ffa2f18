import QtQuick
import Kelo
import KeloTest

// The island's frame: its outline in each mode, and what clicks on it do.
ViewTest {
    id: test
    name: "Island"

    Component { id: viewComponent; IslandView { width: 800; height: 520 } }

    // The island of a day with a task at six.
    function makeIsland() {
        const view = createTemporaryObject(viewComponent, test, { model: rig.model })
        rig.addTask("later", "today", 18 * 60)
        return view
    }

    function settle(view) {
        const size = rig.model.islandSize
        tryVerify(() => Math.abs(view.island.width - size.width) < 0.3
                        && Math.abs(view.island.height - size.height) < 0.3, 3000)
        wait(600) // the radii settle with the size
    }

    // The size for a 185 x 32 notch (the open island as tall as its content) and the radii of
    // the flared top corners and the rounded bottom ones.
    function test_outline_data() {
        return [
            { tag: "closed, today planned", mode: "closed", width: 285, height: 32, top: 6, bottom: 10 },
            { tag: "peek", mode: "peek", width: 385, height: 62, top: 6, bottom: 16 },
            { tag: "open", mode: "open", width: 645, top: 10, bottom: 24 },
            { tag: "alert", mode: "alert", width: 445, height: 86, top: 6, bottom: 16 },
        ]
    }

    function test_outline(data) {
        const view = makeIsland()
        if (data.mode === "peek") {
            rig.model.hover(true)
            rig.advance(100)
        } else if (data.mode === "open") {
            rig.model.open(false)
            // The open view measures itself once it is built.
            tryVerify(() => view.openView && rig.model.openHeight > 100)
        } else if (data.mode === "alert") {
            rig.addTask("now", "today", 9 * 60)
            rig.advance(0)
        }
        const [w, h, t, b] = [data.width, data.height || rig.model.islandSize.height, data.top, data.bottom]
        compare(rig.model.islandSize, Qt.size(w, h))
        settle(view)
        // End point, then control point, of each curve and line from the top left corner.
        const points = [[t, t, t, 0], [t, h - b], [t + b, h, t, h], [w - t - b, h],
                        [w - t, h - b, w - t, h], [w - t, t], [w, 0, w - t, 0]]
        const elements = view.body.outline.pathElements
        compare(elements.length, points.length)
        for (let i = 0; i < elements.length; ++i) {
            const [x, y, controlX, controlY] = points[i]
            fuzzyCompare(elements[i].x, x, 0.3, "x of point " + i)
            fuzzyCompare(elements[i].y, y, 0.3, "y of point " + i)
            if (controlX !== undefined) {
                fuzzyCompare(elements[i].controlX, controlX, 0.3, "control x of point " + i)
                fuzzyCompare(elements[i].controlY, controlY, 0.3, "control y of point " + i)
            }
        }
    }

    // A click inside the outline opens the island; one in the flared corner beside it does not,
    // nor one on the open island, whose clicks belong to its controls.
    function test_clicksInsideTheOutlineOpen() {
        const view = makeIsland()
        settle(view)
        const island = view.island
        mouseClick(island, 2, island.height - 2)
        compare(rig.model.mode.kind, Island.Closed)
        mouseClick(island, island.width / 2, island.height / 2)
        compare(rig.model.mode.kind, Island.Open)
        mouseClick(island, island.width / 2, 40)
        compare(rig.model.mode.kind, Island.Open)
    }

    // The standard island is dark; the glass one follows its look, but only with the glass
    // material and never while closed.
    function test_theGlassIslandFollowsItsLook() {
        makeIsland()
        rig.model.preferences.theme = Island.Glass
        rig.model.preferences.glassLook = Island.Light
        rig.model.open(false)
        verify(IslandPalette.dark)
        rig.model.glassMaterial = true
        verify(!IslandPalette.dark)
        compare(IslandPalette.ink, Qt.rgba(0, 0, 0, 1))
        rig.model.escape()
        verify(IslandPalette.dark)
    }
}
