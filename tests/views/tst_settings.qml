import QtQuick
import QtTest
import Kelo
import KeloTest

// The settings page's rules: glass only with the glass material, its look only with glass, and
// a login switch that shows what the desktop really did.
TestCase {
    id: test
    name: "Settings"
    when: windowShown
    visible: true
    width: 620
    height: 400

    ViewRig { id: rig }

    Component { id: pageComponent; SettingsView { width: 600 } }

    function init() {
        rig.startAt(2025, 3, 6, 9, 0)
    }

    function tiles(page) {
        const found = []
        const search = item => {
            for (let i = 0; i < item.children.length; ++i) {
                const child = item.children[i]
                if (child.theme !== undefined && child.chosen !== undefined) {
                    if (child.visible)
                        found.push(child.label)
                } else {
                    search(child)
                }
            }
        }
        search(page)
        return found
    }

    function test_glassIsOfferedOnlyWithTheGlassMaterial() {
        rig.model.preferences.theme = Island.Glass
        const page = createTemporaryObject(pageComponent, test, { model: rig.model })
        compare(tiles(page), ["Standard"])
        verify(!page.glassLookShown, "a stored glass theme shows no look without the material")
        rig.model.glassMaterial = true
        compare(tiles(page), ["Standard", "Glass"])
        verify(page.glassLookShown)
        rig.model.preferences.theme = Island.Standard
        verify(!page.glassLookShown)
    }

    function test_launchAtLogin() {
        const page = createTemporaryObject(pageComponent, test, { model: rig.model })
        const toggle = findChild(page, "launchAtLogin")
        verify(!toggle.on)
        mouseClick(toggle)
        verify(toggle.on)
        verify(rig.model.launchAtLogin.enabled)
        mouseClick(toggle)
        verify(!rig.model.launchAtLogin.enabled)
        // When the desktop refuses, the switch goes back.
        rig.blockAutostart()
        mouseClick(toggle)
        verify(!rig.model.launchAtLogin.enabled)
        verify(!toggle.on)
    }

    function test_thePageReadsTheLoginItemWhenBuilt() {
        rig.model.launchAtLogin.enabled = true
        const page = createTemporaryObject(pageComponent, test, { model: rig.model })
        verify(findChild(page, "launchAtLogin").on)
    }
}
