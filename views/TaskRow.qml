import QtQuick
import QtQuick.Layouts
import Kelo

// One task in a list, and where a person acts on it: tick it off or reopen it with the circle,
// click the title to rename it in place, and, under the pointer, move it to today, open its
// schedule editor or delete it; a secondary click offers today, tomorrow, the backlog and delete.
Column {
    id: root

    required property IslandModel island
    required property var task
    required property int meta
    // The time or day the meta shows.
    required property string text
    required property bool checking

    readonly property bool done: task.done || checking
    readonly property bool editing: island.editing === task.id
    readonly property bool scheduling: island.scheduling === task.id
    readonly property bool hovered: hover.hovered
    readonly property bool canMoveToToday: (!task.hasDay || task.day !== island.todayKey) && !task.done
    readonly property alias circle: circle
    readonly property alias titleField: titleField
    property string newTitle

    function move(day) {
        island.move(task.id, day, task.hasMinute ? task.minute : null)
    }

    function menuEntries() {
        return [
            { text: "Today", action: () => move(island.todayKey) },
            { text: "Tomorrow", action: () => move(island.tomorrowKey) },
            { text: "Backlog", action: () => move(null) },
            { separator: true },
            { text: "Delete", icon: "trash", iconTint: IslandPalette.keloRed,
              action: () => island.deleteTask(task.id) },
        ]
    }

    spacing: 4
    onEditingChanged: {
        if (editing) {
            newTitle = task.title
            Qt.callLater(() => titleField.forceActiveFocus())
        } else {
            island.rename(task.id, newTitle)
        }
    }

    PopupMenu {
        id: menu
        onTriggered: index => root.menuEntries()[index].action()
    }

    Rectangle {
        id: row

        width: root.width
        height: 30
        radius: 9
        color: IslandPalette.inkAt(root.hovered || root.scheduling ? 0.07 : 0)

        Behavior on color { ColorAnimation { duration: 120; easing.type: Easing.OutQuad } }

        HoverHandler { id: hover }

        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.LeftButton | Qt.RightButton
            onClicked: mouse => {
                if (mouse.button === Qt.RightButton)
                    menu.popup(root.menuEntries().map(entry => ({
                        text: entry.text || "", separator: entry.separator === true,
                        icon: entry.icon || "", iconTint: entry.iconTint || "transparent" })))
                else
                    root.island.endEditing()
            }
        }

        RowLayout {
            anchors.fill: parent
            anchors.leftMargin: 10
            anchors.rightMargin: 10
            spacing: 10

            CheckCircle {
                id: circle

                done: root.done
                Accessible.name: root.task.title
                onClicked: root.island.check(root.task.id)
            }

            Item {
                Layout.fillWidth: true
                Layout.fillHeight: true

                Text {
                    id: title

                    anchors.verticalCenter: parent.verticalCenter
                    width: parent.width
                    visible: !root.editing
                    text: root.task.title
                    elide: Text.ElideRight
                    maximumLineCount: 1
                    font.pixelSize: 13
                    color: IslandPalette.inkAt(root.done ? 0.35 : 0.92)

                    // Struck through while done.
                    Rectangle {
                        anchors.verticalCenter: parent.verticalCenter
                        width: Math.min(title.contentWidth, title.width)
                        height: 1
                        visible: root.done
                        color: IslandPalette.inkAt(0.4)
                    }

                    MouseArea {
                        width: Math.min(title.contentWidth, title.width)
                        height: parent.height
                        onClicked: root.island.editing = root.task.id
                    }
                }

                TextInput {
                    id: titleField

                    anchors.verticalCenter: parent.verticalCenter
                    width: parent.width
                    visible: root.editing
                    text: root.newTitle
                    font.pixelSize: 13
                    color: IslandPalette.ink
                    clip: true

                    Accessible.role: Accessible.EditableText
                    Accessible.name: "Title"

                    onTextEdited: root.newTitle = text
                    onAccepted: root.island.endEditing()
                    Keys.onEscapePressed: {
                        root.newTitle = root.task.title
                        root.island.endEditing()
                    }
                }
            }

            // The meta text, and in its place under the pointer the row's buttons, anchored to
            // the row's end: a click that arrives with the pointer finds them where they are
            // drawn, or not yet there.
            Item {
                readonly property bool actionsShown: root.hovered && !root.editing

                Layout.preferredWidth: Math.max(actions.item ? actions.item.implicitWidth : 0,
                                                meta.implicitWidth)
                Layout.fillHeight: true

                // Made when first wanted: a long list would otherwise hold three buttons a row.
                Loader {
                    id: actions

                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    active: parent.actionsShown || opacity > 0
                    opacity: parent.actionsShown ? 1 : 0
                    enabled: parent.actionsShown
                    visible: opacity > 0

                    Behavior on opacity { NumberAnimation { duration: 120 } }

                    sourceComponent: Row {
                        spacing: 2

                        IconButton {
                            visible: root.canMoveToToday
                            icon: "sun.max"
                            help: "Move to Today"
                            onClicked: root.move(root.island.todayKey)
                        }
                        IconButton {
                            icon: "calendar.badge.clock"
                            help: "Schedule"
                            onClicked: root.island.toggleScheduling(root.task.id)
                        }
                        IconButton {
                            icon: "trash"
                            help: "Delete"
                            tint: IslandPalette.keloRed
                            onClicked: root.island.deleteTask(root.task.id)
                        }
                    }
                }

                Text {
                    id: meta

                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    visible: !parent.actionsShown && root.meta !== Island.None
                    text: root.text
                    font.family: Fonts.rounded
                    font.pixelSize: 11
                    font.bold: true
                    color: root.meta === Island.Day ? IslandPalette.keloRed
                           : root.task.done ? IslandPalette.inkAt(0.3) : IslandPalette.keloOrange
                }
            }
        }
    }

    Loader {
        x: 28
        width: root.width - 28
        active: root.scheduling
        visible: active

        sourceComponent: ScheduleEditor {
            island: root.island
            task: root.task
        }
    }
}
