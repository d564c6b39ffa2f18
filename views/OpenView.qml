import QtQuick
import Kelo

// The open island: a header split around the notch (the tabs, or the way back from settings, on
// the left; the date, today's progress and the gear on the right) and under it the tasks page
// (add field, list, toast) or the settings page. It reports its own height to the model, so the
// island is exactly as tall as what it shows.
Item {
    id: root

    required property IslandModel model
    readonly property bool settings: model.page === Island.Settings
    // The keys of the tabs and the gear act while the island is open, also as it fades in.
    readonly property bool keysActive: model.mode.kind === Island.Open
    readonly property real slotWidth: (model.islandSize.width - model.notch.width) / 2 - 20
    readonly property alias header: header
    readonly property alias addField: tasksPage.addField
    readonly property alias taskList: tasksPage.taskList

    implicitHeight: column.implicitHeight + 14
    onImplicitHeightChanged: model.openHeight = implicitHeight
    Component.onCompleted: model.openHeight = implicitHeight

    // A click on empty space ends editing; controls take their own clicks first.
    MouseArea {
        anchors.fill: parent
        onClicked: root.model.endEditing()
    }

    Shortcut {
        sequence: "Ctrl+1"
        context: Qt.ApplicationShortcut
        enabled: root.keysActive && !root.settings
        onActivated: root.model.selectBucket(Island.Today)
    }
    Shortcut {
        sequence: "Ctrl+2"
        context: Qt.ApplicationShortcut
        enabled: root.keysActive && !root.settings
        onActivated: root.model.selectBucket(Island.Upcoming)
    }
    Shortcut {
        sequence: "Ctrl+3"
        context: Qt.ApplicationShortcut
        enabled: root.keysActive && !root.settings
        onActivated: root.model.selectBucket(Island.Backlog)
    }
    Shortcut {
        sequence: "Ctrl+,"
        context: Qt.ApplicationShortcut
        enabled: root.keysActive
        onActivated: root.model.toggleSettings()
    }

    Column {
        id: column

        x: 20
        width: root.width - 40
        spacing: 10

        Row {
            id: header

            height: root.model.notch.height

            Item {
                width: root.slotWidth
                height: parent.height

                BucketTabs {
                    anchors.verticalCenter: parent.verticalCenter
                    visible: !root.settings
                    model: root.model
                }
                SettingsBack {
                    anchors.verticalCenter: parent.verticalCenter
                    visible: root.settings
                    model: root.model
                }
            }
            // The camera housing.
            Item {
                width: root.model.notch.width
                height: parent.height
            }
            Item {
                width: root.slotWidth
                height: parent.height

                HeaderInfo {
                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    model: root.model
                }
            }
        }

        TasksPage {
            id: tasksPage

            width: parent.width
            visible: !root.settings
            model: root.model
        }

        Loader {
            width: parent.width
            active: root.settings
            visible: active

            sourceComponent: SettingsView { model: root.model }
        }
    }
}
