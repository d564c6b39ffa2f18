import QtQuick
import Kelo
import KeloTest

// The island's frame: its outline in each mode, what clicks on it do, its context menu and its
// settings page (glass only with the glass material, its look only with glass, a login switch that
// shows what the desktop really did); and every icon it names.
ViewTest {
    id: test
    name: "Island"

    Component { id: viewComponent; IslandView { width: 800; height: 520 } }
    Component { id: menuComponent; IslandMenu {} }
    Component { id: settingsComponent; SettingsView { width: 600 } }
    Component {
        id: stageComponent
        Item {
            property alias icon: icon
            width: 48; height: 48
            Icon { id: icon; x: 18; y: 18; size: 12; color: "red" }
        }
    }

    // The island of a day with a task at six.
    function makeIsland() {
        const view = make(viewComponent)
        rig.addTask("later", "today", 18 * 60)
        return view
    }

    function settle(view) {
        const size = rig.model.islandSize
        tryVerify(() => Math.abs(view.island.width - size.width) < 0.3
                        && Math.abs(view.island.height - size.height) < 0.3, 3000)
        wait(600) // the radii settle with the size
    }

    // The outline at the model's size (the open island as tall as its content) with the radii of
    // the flared top corners and the rounded bottom ones.
    function test_outline_data() {
        return [
            { tag: "closed, today planned", mode: "closed", top: 6, bottom: 10 },
            { tag: "peek", mode: "peek", top: 6, bottom: 16 },
            { tag: "open", mode: "open", top: 10, bottom: 24 },
            { tag: "alert", mode: "alert", top: 6, bottom: 16 },
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
        settle(view)
        const [w, h, t, b] = [rig.model.islandSize.width, rig.model.islandSize.height, data.top, data.bottom]
        // End point, then control point, of each curve and line from the top left corner.
        const points = [[t, t, t, 0], [t, h - b], [t + b, h, t, h], [w - t - b, h],
                        [w - t, h - b, w - t, h], [w - t, t], [w, 0, w - t, 0]]
        const drawn = view.body.outline.pathElements
        compare(drawn.length, points.length)
        points.forEach((point, i) => point.forEach((value, j) => fuzzyCompare(
            [drawn[i].x, drawn[i].y, drawn[i].controlX, drawn[i].controlY][j], value, 0.3, "point " + i)))
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

    function test_menuEntriesAndTheirEffects() {
        const menu = make(menuComponent)
        menu.entries = menu.build()
        compare(menu.entries.map(entry => entry.separator ? "-" : entry.text),
                ["Open or close: ⌃⌥T", "Launch at Login", "Show Data File", "-", "Quit Kelo"])
        compare(menu.entries[1].checked, false)
        menu.trigger(0) // a label, disabled
        compare(rig.calls, [])
        menu.trigger(1)
        verify(rig.model.launchAtLogin.enabled)
        // The switch shows the login item's state as it is when the menu opens.
        menu.entries = menu.build()
        compare(menu.entries[1].checked, true)
        menu.trigger(1)
        verify(!rig.model.launchAtLogin.enabled)
        menu.trigger(2)
        menu.trigger(4)
        compare(rig.calls.length, 2)
        verify(/^reveal \/.*\/Kelo\/todos\.json$/.test(rig.calls[0]), "the default data file")
        compare(rig.calls[1], "quit")
    }

    // The labels of the theme tiles shown.
    function tiles(item) {
        return childrenWhere(item, child => child.theme !== undefined && child.chosen !== undefined)
            .filter(tile => tile.visible).map(tile => tile.label)
    }

    // Glass is offered only with the glass material, its look only with glass. The standard
    // island is dark; the glass one follows its look, but only with the material and never while
    // closed.
    function test_glass() {
        makeIsland()
        rig.model.preferences.theme = Island.Glass
        rig.model.preferences.glassLook = Island.Light
        rig.model.open(false)
        const page = make(settingsComponent)
        compare(tiles(page), ["Standard"])
        verify(!page.glassLookShown, "a stored glass theme shows no look without the material")
        verify(IslandPalette.dark)
        rig.model.glassMaterial = true
        compare(tiles(page), ["Standard", "Glass"])
        verify(page.glassLookShown)
        verify(!IslandPalette.dark)
        compare(IslandPalette.ink, Qt.rgba(0, 0, 0, 1))
        rig.model.escape()
        verify(IslandPalette.dark)
        rig.model.preferences.theme = Island.Standard
        verify(!page.glassLookShown)
    }

    // The switch reads the login item when the page is built; when the desktop refuses a
    // change, it goes back.
    function test_launchAtLogin() {
        rig.model.launchAtLogin.enabled = true
        const toggle = findChild(make(settingsComponent), "launchAtLogin")
        verify(toggle.on)
        mouseClick(toggle)
        verify(!toggle.on && !rig.model.launchAtLogin.enabled, "switched off")
        verify(rig.blockAutostart())
        mouseClick(toggle)
        verify(!toggle.on && !rig.model.launchAtLogin.enabled, "refused, back off")
    }

    // Each draws in its tint, and only inside its own square.
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
