import QtQuick
import Kelo

// What is next today: the countdown to the next timed task ("now", "25m", up to "60m", then its
// time), else how many of today's tasks are left, or a green check when all are done; nothing
// when today has no task.
Item {
    id: root

    required property IslandModel model
    property bool compact: true

    readonly property int minutesAhead: model.hasNextTimed && model.nextTimed.hasMinute
                                        ? model.nextTimed.minute - model.minuteOfDay : -1
    readonly property int tasksLeft: model.progress.total - model.progress.done
    readonly property string kind: minutesAhead >= 0 ? "countdown"
                                 : model.progress.total < 1 ? "nothing"
                                 : tasksLeft > 0 ? "left" : "allDone"
    readonly property string text: {
        switch (kind) {
        case "countdown":
            if (minutesAhead === 0)
                return "now"
            if (minutesAhead < 61)
                return minutesAhead + "m"
            return model.format.time(model.nextTimed.minute, compact)
        case "left":
            return String(tasksLeft)
        default:
            return ""
        }
    }

    implicitWidth: kind === "allDone" ? check.width : label.implicitWidth
    implicitHeight: label.implicitHeight

    Text {
        id: label

        anchors.centerIn: parent
        visible: root.text !== ""
        text: root.text
        font.family: Fonts.rounded
        font.pixelSize: root.compact ? 11 : 12
        font.bold: true
        color: root.kind === "countdown" ? IslandPalette.keloOrange : IslandPalette.inkAt(0.7)
    }

    Icon {
        id: check

        anchors.centerIn: parent
        visible: root.kind === "allDone"
        name: "checkmark"
        size: 11
        color: IslandPalette.keloGreen
    }
}
