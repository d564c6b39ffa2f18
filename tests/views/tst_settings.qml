import QtQuick
import Kelo
import KeloTest

// The settings page's rules: glass only with the glass material, its look only with glass, and
// a login switch that shows what the desktop really did.
ViewTest {
    id: test
    name: "Settings"

    Component { id: pageComponent; SettingsView { width: 600 } }

    // The labels of the theme tiles shown.
    function tiles(item) {
        return childrenWhere(item, child => child.theme !== undefined && child.chosen !== undefined)
            .filter(tile => tile.visible).map(tile => tile.label)
    }

    function test_glassIsOfferedOnlyWithTheGlassMaterial() {
        rig.model.preferences.theme = Island.Glass
        const view = make(pageComponent)
        compare(tiles(view), ["Standard"])
        verify(!view.glassLookShown, "a stored glass theme shows no look without the material")
        rig.model.glassMaterial = true
        compare(tiles(view), ["Standard", "Glass"])
        verify(view.glassLookShown)
        rig.model.preferences.theme = Island.Standard
        verify(!view.glassLookShown)
    }

    // The switch reads the login item when the page is built; when the desktop refuses a
    // change, it goes back.
    function test_launchAtLogin() {
        rig.model.launchAtLogin.enabled = true
        const toggle = findChild(make(pageComponent), "launchAtLogin")
        verify(toggle.on)
        mouseClick(toggle)
        verify(!toggle.on)
        verify(!rig.model.launchAtLogin.enabled)
        verify(rig.blockAutostart())
        mouseClick(toggle)
        verify(!rig.model.launchAtLogin.enabled)
        verify(!toggle.on)
    }
}
