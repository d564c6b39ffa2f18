import QtQuick
import Kelo
import KeloTest

// The island's context menu: its entries and what each does.
ViewTest {
    id: test
    name: "IslandMenu"

    Component { id: menuComponent; IslandMenu {} }

    function test_entriesAndTheirEffects() {
        const menu = createTemporaryObject(menuComponent, test, { model: rig.model })
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
}
