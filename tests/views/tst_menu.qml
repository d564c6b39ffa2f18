import QtQuick
import QtTest
import Kelo
import KeloTest

// The island's context menu: its entries and what each does.
TestCase {
    id: test
    name: "IslandMenu"

    ViewRig { id: rig }

    Component { id: menuComponent; IslandMenu {} }

    function texts(entries) {
        return entries.map(entry => entry.separator ? "-" : entry.text)
    }

    function test_entriesAndTheirEffects() {
        const menu = createTemporaryObject(menuComponent, test, { model: rig.model })
        menu.entries = menu.build()
        compare(texts(menu.entries),
                ["Open or close: ⌃⌥T", "Launch at Login", "Show Data File", "-", "Quit Kelo"])
        compare(menu.entries[0].enabled, false)
        compare(menu.entries[1].checked, false)

        menu.trigger(0)
        compare(rig.calls, [])
        menu.trigger(1)
        verify(rig.model.launchAtLogin.enabled)
        // The switch shows the login item's state as it is when the menu opens.
        menu.entries = menu.build()
        compare(menu.entries[1].checked, true)
        menu.trigger(1)
        verify(!rig.model.launchAtLogin.enabled)

        menu.trigger(2)
        compare(rig.calls.length, 1)
        verify(rig.calls[0].startsWith("reveal /"), rig.calls[0])
        verify(rig.calls[0].endsWith("/Kelo/todos.json"), "the default data file")
        menu.trigger(4)
        compare(rig.calls[1], "quit")
    }
}
