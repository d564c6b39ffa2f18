import QtQuick
import Kelo

// Today: overdue tasks, the timed ones around the now line, anytime and done; when there is
// nothing, a clear day, with a way to the backlog when it holds tasks.
Item {
    id: root

    required property IslandModel model
    property real maxHeight: 330
    readonly property int backlogCount: model.backlogList.taskCount

    implicitHeight: rows.count > 0 ? rows.implicitHeight : empty.implicitHeight

    TaskRows {
        id: rows

        anchors.fill: parent
        visible: count > 0
        island: root.model
        model: root.model.todayList
        maxHeight: root.maxHeight
    }

    EmptyState {
        id: empty

        width: parent.width
        visible: rows.count === 0
        icon: "sun.max.fill"
        tint: IslandPalette.keloOrange
        title: "Clear day"
        subtitle: "Add a task above, or pull one from the backlog."
        actionText: root.backlogCount > 0 ? "Open Backlog (" + root.backlogCount + ")" : ""
        onAction: root.model.bucket = Island.Backlog
    }
}
