import QtQuick
import Kelo

// The island's context menu, in every mode. Its entries are built each time it opens, so the
// login item shows the state the desktop reports now, even when it was changed elsewhere.
QtObject {
    id: root

    required property IslandModel model
    // The entries of the menu as last opened.
    property var entries: []

    readonly property PopupMenu menu: PopupMenu {
        onTriggered: index => root.trigger(index)
    }

    function build() {
        const loginEnabled = model.launchAtLogin.enabled
        return [
            { text: "Open or close: ⌃⌥T", enabled: false },
            { text: "Launch at Login", checkable: true, checked: loginEnabled,
              action: () => { model.launchAtLogin.enabled = !loginEnabled } },
            { text: "Show Data File", action: () => model.showDataFile() },
            { separator: true },
            { text: "Quit Kelo", action: () => model.quit() },
        ]
    }

    function popup() {
        entries = build()
        // The pop-up window takes the entries' looks, not their actions.
        menu.popup(entries.map(entry => ({
            text: entry.text || "",
            enabled: entry.enabled !== false,
            checkable: entry.checkable === true,
            checked: entry.checked === true,
            separator: entry.separator === true,
        })))
    }

    function trigger(index) {
        const entry = entries[index]
        if (entry && entry.action && entry.enabled !== false)
            entry.action()
    }
}
