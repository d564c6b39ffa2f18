import QtQuick
import QtQuick.Layouts
import Kelo

// The inline editor under a task row: chips for its day and time, or a phrase such as
// "fri 4pm"; a phrase Kelo does not understand turns the field's outline red until it is edited.
Rectangle {
    id: root

    required property IslandModel island
    required property var task
    property string phrase
    property bool bad: false
    readonly property alias field: field

    // Empty: nothing changes. Understood: moved. Not understood: the editor stays, outlined red.
    function apply() {
        const trimmed = phrase.replace(/^[ \t]+|[ \t]+$/g, "")
        if (trimmed === "") {
            island.endEditing()
            return
        }
        if (!island.reschedule(task.id, trimmed)) {
            bad = true
            return
        }
        island.endEditing()
    }

    implicitHeight: column.implicitHeight + 20
    radius: 12
    color: IslandPalette.inkAt(0.05)
    onPhraseChanged: bad = false

    Column {
        id: column

        x: 10
        y: 10
        width: root.width - 20
        spacing: 8

        WhenChips {
            objectName: "whenChips"
            model: root.island
            hasDay: root.task.hasDay
            day: root.task.day
            hasMinute: root.task.hasMinute
            minute: root.task.minute
            onPickDay: key => root.island.move(root.task.id, key,
                                               root.task.hasMinute ? root.task.minute : null)
            onPickTime: value => root.island.move(root.task.id,
                                                  root.task.hasDay ? root.task.day
                                                                   : root.island.todayKey, value)
        }

        RowLayout {
            width: parent.width
            spacing: 8

            Rectangle {
                Layout.fillWidth: true
                Layout.preferredHeight: 26
                radius: 8
                color: IslandPalette.inkAt(0.06)
                border.width: 1
                border.color: root.bad ? IslandPalette.faded(IslandPalette.keloRed, 0.7) : "transparent"

                TextInput {
                    id: field

                    anchors.fill: parent
                    anchors.leftMargin: 10
                    anchors.rightMargin: 10
                    verticalAlignment: TextInput.AlignVCenter
                    text: root.phrase
                    font.pixelSize: 12
                    color: IslandPalette.ink
                    clip: true
                    activeFocusOnTab: true

                    Accessible.role: Accessible.EditableText
                    Accessible.name: "When"
                    Accessible.description: root.bad ? "Not understood" : ""

                    onTextEdited: root.phrase = text
                    onAccepted: root.apply()

                    Text {
                        anchors.fill: parent
                        verticalAlignment: Text.AlignVCenter
                        visible: field.text === "" && !field.inputMethodComposing
                        text: "or type “fri 4pm”, “oct 12”, “in 3 days”"
                        elide: Text.ElideRight
                        font: field.font
                        color: IslandPalette.inkAt(0.3)
                    }
                }
            }
            PillButton {
                objectName: "done"
                text: "Done"
                fill: IslandPalette.ink
                textColor: IslandPalette.inkInverse
                onClicked: root.apply()
            }
        }
    }
}
