import QtQuick
import Kelo

// The open island's tasks page: the add field, the list of the chosen tab and, while there is
// one, the toast.
Column {
    id: root

    required property IslandModel model
    readonly property alias addField: addField
    readonly property alias taskList: taskList
    property real toastPresence: model.toast.shown ? 1 : 0

    spacing: 10

    Behavior on toastPresence { Spring { preset: Motion.list; epsilon: 0.01 } }

    AddField {
        id: addField

        width: parent.width
        model: root.model
    }

    TaskList {
        id: taskList

        width: parent.width
        model: root.model
        maxHeight: 330
    }

    // The toast slides up from below and fades in; it keeps its room until it has faded out.
    Item {
        width: parent.width
        height: 30
        visible: root.toastPresence > 0.01
        clip: true

        ToastBar {
            width: parent.width
            height: 30
            y: 12 * (1 - root.toastPresence)
            opacity: Math.min(1, root.toastPresence)
            model: root.model
        }
    }
}
