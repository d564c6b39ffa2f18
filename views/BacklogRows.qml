import QtQuick
import Kelo

// Tasks without a day.
Item {
    id: root

    required property IslandModel model
    property real maxHeight: 330

    implicitHeight: rows.count > 0 ? rows.implicitHeight : empty.implicitHeight

    TaskRows {
        id: rows

        anchors.fill: parent
        visible: count > 0
        island: root.model
        model: root.model.backlogList
        maxHeight: root.maxHeight
    }

    EmptyState {
        id: empty

        width: parent.width
        visible: rows.count === 0
        icon: "tray.fill"
        tint: IslandPalette.keloPurple
        title: "Backlog is empty"
        subtitle: "Dump ideas here. Give them a day when you are ready."
    }
}
