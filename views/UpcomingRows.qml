import QtQuick
import Kelo

// What is planned after today, under one heading per day.
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
        model: root.model.upcomingList
        maxHeight: root.maxHeight
    }

    EmptyState {
        id: empty

        width: parent.width
        visible: rows.count === 0
        icon: "calendar"
        tint: IslandPalette.keloBlue
        title: "Nothing planned"
        subtitle: "Try “dentist fri 3pm” or “taxes apr 30”."
    }
}
