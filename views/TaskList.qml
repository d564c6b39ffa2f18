import QtQuick
import Kelo

// The list of the chosen tab: exactly as tall as its rows up to `maxHeight`, scrolling beyond.
Item {
    id: root

    required property IslandModel model
    property real maxHeight: 330
    readonly property Item rows: loader.item

    implicitHeight: rows ? rows.implicitHeight : 0

    Loader {
        id: loader

        anchors.fill: parent
        sourceComponent: root.model.bucket === Island.Today ? today
                       : root.model.bucket === Island.Upcoming ? upcoming : backlog
    }

    Component {
        id: today
        TodayRows { model: root.model; maxHeight: root.maxHeight }
    }
    Component {
        id: upcoming
        UpcomingRows { model: root.model; maxHeight: root.maxHeight }
    }
    Component {
        id: backlog
        BacklogRows { model: root.model; maxHeight: root.maxHeight }
    }
}
