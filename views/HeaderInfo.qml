import QtQuick
import Kelo

// The header's right side: today's date, today's progress when there is a task, and the gear.
Row {
    id: root

    required property IslandModel model
    readonly property alias gear: gear

    spacing: 8

    Text {
        anchors.verticalCenter: parent.verticalCenter
        text: root.model.headerDate
        font.pixelSize: 12
        font.weight: Font.DemiBold
        color: IslandPalette.inkAt(0.6)
    }
    Text {
        anchors.verticalCenter: parent.verticalCenter
        visible: root.model.progress.total >= 1
        text: root.model.progress.done + "/" + root.model.progress.total
        font.family: Fonts.rounded
        font.pixelSize: 11
        font.bold: true
        color: IslandPalette.inkAt(0.45)
    }
    ProgressRing {
        anchors.verticalCenter: parent.verticalCenter
        visible: root.model.progress.total >= 1
        width: 14
        height: 14
        progress: root.model.progress
    }
    IconButton {
        id: gear

        anchors.verticalCenter: parent.verticalCenter
        icon: root.model.page === Island.Settings ? "gearshape.fill" : "gearshape"
        help: "Settings (⌘,)"
        onClicked: root.model.toggleSettings()
    }
}
