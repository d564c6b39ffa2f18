import QtQuick
import QtQuick.Layouts
import Kelo

// The settings page: the island's theme (and for glass its look), the reminder sound, launch at
// login, and Quit. Glass is offered only where the desktop has the glass material, a running
// compositor.
Column {
    id: root

    required property IslandModel model
    readonly property bool glassOffered: model.glassMaterial
    readonly property bool glassLookShown: glassOffered && model.preferences.theme === Island.Glass
    // The login item's state as the page last read it.
    property bool launchAtLogin: false

    // Asks for launch at login, then shows what the desktop has now: a refused change springs
    // back.
    function setLaunchAtLogin(value) {
        launchAtLogin = value
        if (value === model.launchAtLogin.enabled)
            return
        model.launchAtLogin.enabled = value
        launchAtLogin = model.launchAtLogin.enabled
    }

    spacing: 8
    Component.onCompleted: launchAtLogin = model.launchAtLogin.enabled

    SectionLabel {
        width: parent.width
        text: "Theme"
    }

    RowLayout {
        width: parent.width
        spacing: 10

        ThemeTile {
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            theme: Island.Standard
            on: !root.glassOffered || root.model.preferences.theme === Island.Standard
            onChosen: root.model.preferences.theme = Island.Standard
        }
        ThemeTile {
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            visible: root.glassOffered
            theme: Island.Glass
            on: root.model.preferences.theme === Island.Glass
            onChosen: root.model.preferences.theme = Island.Glass
        }
    }

    // The glass look, sliding in under the tiles while glass is chosen.
    Item {
        id: lookRow

        property real presence: root.glassLookShown ? 1 : 0

        width: parent.width
        height: 30 * presence
        visible: presence > 0.01
        clip: true

        Behavior on presence { Spring { preset: Motion.list; epsilon: 0.01 } }

        SettingRow {
            width: parent.width
            y: -10 * (1 - lookRow.presence)
            opacity: lookRow.presence
            title: "Glass look"

            GlassLookPicker { model: root.model }
        }
    }

    Separator { width: parent.width }

    SettingRow {
        width: parent.width
        title: "Reminder sound"

        Switch {
            name: "Reminder sound"
            on: root.model.preferences.reminderSound
            onToggled: value => root.model.preferences.reminderSound = value
        }
    }

    SettingRow {
        width: parent.width
        title: "Launch at login"

        Switch {
            objectName: "launchAtLogin"
            name: "Launch at login"
            on: root.launchAtLogin
            onToggled: value => root.setLaunchAtLogin(value)
        }
    }

    Separator { width: parent.width }

    RowLayout {
        x: 10
        width: parent.width - 20

        Text {
            Layout.fillWidth: true
            text: "⌃⌥T opens Kelo from anywhere · ⌘, settings"
            elide: Text.ElideRight
            font.pixelSize: 11
            color: IslandPalette.inkAt(0.45)
        }
        PillButton {
            text: "Quit Kelo"
            onClicked: root.model.quit()
        }
    }
}
