import QtQuick
import QtTest
import Kelo
import KeloTest

// The island's frame: its outline in each mode, and what clicks on it do.
TestCase {
    id: test
    name: "Island"
    when: windowShown
    visible: true
    width: 800
    height: 520

    ViewRig { id: rig }

    Component {
        id: viewComponent
        IslandView { width: 800; height: 520 }
    }

    function makeIsland() {
        rig.startAt(2025, 3, 6, 9, 0)
        return createTemporaryObject(viewComponent, test, { model: rig.model })
    }

    function settled(view) {
        const size = rig.model.islandSize
        tryVerify(() => Math.abs(view.island.width - size.width) < 0.3
                        && Math.abs(view.island.height - size.height) < 0.3, 3000)
        wait(600) // the radii settle with the size
    }

    // The outline's points, end point and control point of each curve, for a 185 x 32 notch.
    function test_outline_data() {
        return [
            { tag: "closed, today planned", mode: "closed", width: 285, height: 32, points: [
                [6, 6, 6, 0], [6, 22], [16, 32, 6, 32], [269, 32], [279, 22, 279, 32], [279, 6],
                [285, 0, 279, 0]] },
            { tag: "peek", mode: "peek", width: 385, height: 62, points: [
                [6, 6, 6, 0], [6, 46], [22, 62, 6, 62], [363, 62], [379, 46, 379, 62], [379, 6],
                [385, 0, 379, 0]] },
            // The open island is as tall as its content, h; its radii are 10 and 24.
            { tag: "open", mode: "open", width: 645, points: h => [
                [10, 10, 10, 0], [10, h - 24], [34, h, 10, h], [611, h], [635, h - 24, 635, h],
                [635, 10], [645, 0, 635, 0]] },
            { tag: "alert", mode: "alert", width: 445, height: 86, points: [
                [6, 6, 6, 0], [6, 70], [22, 86, 6, 86], [423, 86], [439, 70, 439, 86], [439, 6],
                [445, 0, 439, 0]] },
        ]
    }

    function test_outline(data) {
        const view = makeIsland()
        rig.addTask("later", "today", 18 * 60)
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
        const height = data.height || rig.model.islandSize.height
        compare(rig.model.islandSize, Qt.size(data.width, height))
        settled(view)
        const points = typeof data.points === "function" ? data.points(height) : data.points
        const elements = view.body.outline.pathElements
        compare(elements.length, points.length)
        for (let i = 0; i < elements.length; ++i) {
            const expected = points[i]
            fuzzyCompare(elements[i].x, expected[0], 0.3, "x of point " + i)
            fuzzyCompare(elements[i].y, expected[1], 0.3, "y of point " + i)
            if (expected.length === 4) {
                fuzzyCompare(elements[i].controlX, expected[2], 0.3, "control x of point " + i)
                fuzzyCompare(elements[i].controlY, expected[3], 0.3, "control y of point " + i)
            }
        }
    }

    // A click inside the outline opens the island; one in the flared corner beside it does not.
    function test_clicksInsideTheOutlineOpen() {
        const view = makeIsland()
        rig.addTask("later", "today", 18 * 60)
        settled(view)
        const island = view.island
        mouseClick(island, 2, island.height - 2)
        compare(rig.model.mode.kind, Island.Closed)
        mouseClick(island, island.width / 2, island.height / 2)
        compare(rig.model.mode.kind, Island.Open)
        // The open island's own clicks belong to its controls.
        mouseClick(island, island.width / 2, 40)
        compare(rig.model.mode.kind, Island.Open)
    }

    function test_theStandardIslandIsDarkAndTheGlassOneFollowsItsLook() {
        const view = makeIsland()
        rig.model.preferences.theme = Island.Glass
        rig.model.preferences.glassLook = Island.Light
        rig.model.open(false)
        verify(IslandPalette.dark, "no glass without the glass material")
        rig.model.glassMaterial = true
        verify(!IslandPalette.dark)
        compare(IslandPalette.keloOrange, Qt.rgba(0.78, 0.40, 0.0, 1))
        compare(IslandPalette.ink, Qt.rgba(0, 0, 0, 1))
        rig.model.escape() // closes: the closed island is always black
        verify(IslandPalette.dark)
        compare(IslandPalette.keloOrange, Qt.rgba(1.0, 0.62, 0.04, 1))
    }
}
