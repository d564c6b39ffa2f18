import QtQuick
import Kelo

// The quick-add field: one line of free text ("dentist fri 3pm") bound to the model's draft,
// added with Return. While the draft is not blank it shows what the line plans, and the chips
// under it set its day and time. The field takes the keyboard when it appears and whenever the
// model asks for it.
Column {
    id: root

    required property IslandModel model
    readonly property bool typing: model.draft.replace(/^[ \t]+|[ \t]+$/g, "") !== ""
    readonly property alias input: input
    readonly property var prompts: [
        "Add to today — try “groceries 5pm”",
        "Plan ahead — try “dentist fri 3pm”",
        "Someday… — try “learn Rust”",
    ]

    function focusField() {
        // A turn of the event loop later, so that the field is on screen when it asks. A field
        // built ahead of time, while the island is closed, waits until it is shown: a focused
        // field blinks its cursor, and that would redraw a closed island twice a second.
        Qt.callLater(() => {
            if (root.visible)
                input.forceActiveFocus()
        })
    }

    spacing: 8
    Component.onCompleted: focusField()
    // Back from the settings page the field takes the keyboard again.
    onVisibleChanged: if (visible) focusField()

    Connections {
        target: root.model
        function onFocusRequestChanged() { root.focusField() }
    }

    Rectangle {
        width: root.width
        height: 36
        radius: 11
        color: IslandPalette.inkAt(input.activeFocus ? 0.10 : 0.06)

        Icon {
            id: plus

            x: 12
            anchors.verticalCenter: parent.verticalCenter
            name: "plus"
            size: 12
            color: IslandPalette.inkAt(input.activeFocus ? 0.8 : 0.4)
        }

        TextInput {
            id: input

            anchors.left: plus.right
            anchors.leftMargin: 8
            anchors.right: chip.visible ? chip.left : parent.right
            anchors.rightMargin: chip.visible ? 8 : 12
            anchors.verticalCenter: parent.verticalCenter
            text: root.model.draft
            font.pixelSize: 13
            color: IslandPalette.ink
            selectionColor: IslandPalette.faded(IslandPalette.keloOrange, 0.5)
            selectedTextColor: IslandPalette.ink
            clip: true
            activeFocusOnTab: true

            Accessible.role: Accessible.EditableText
            Accessible.name: root.prompts[root.model.bucket]

            onTextEdited: root.model.draft = text
            onAccepted: root.model.addDraft()

            Text {
                anchors.fill: parent
                verticalAlignment: Text.AlignVCenter
                visible: input.text === "" && !input.inputMethodComposing
                text: root.prompts[root.model.bucket]
                elide: Text.ElideRight
                font: input.font
                color: IslandPalette.inkAt(0.3)
            }
        }

        WhenChip {
            id: chip

            anchors.right: parent.right
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            visible: opacity > 0
            opacity: root.typing ? 1 : 0
            scale: root.typing ? 1 : 0.8
            hasDay: root.model.plan.hasDay
            hasMinute: root.model.plan.hasMinute
            text: root.model.planText

            Behavior on opacity { Spring { preset: Motion.list; epsilon: 0.01 } }
            Behavior on scale { Spring { preset: Motion.list; epsilon: 0.005 } }
        }
    }

    WhenChips {
        id: chips

        objectName: "whenChips"
        x: 12
        visible: opacity > 0.01
        opacity: root.typing ? 1 : 0
        model: root.model
        hasDay: root.model.plan.hasDay
        day: root.model.plan.day
        hasMinute: root.model.plan.hasMinute
        minute: root.model.plan.minute
        onPickDay: key => root.model.pickDay(key)
        onPickTime: value => root.model.pickTime(value)

        Behavior on opacity { Spring { preset: Motion.list; epsilon: 0.01 } }
    }
}
