import QtQuick
import Kelo

// Two rows of chips that set a day and a time: Today, Tomorrow, Weekend, Next week, Backlog;
// Anytime and five times of day. The chips that match the planned day and time are on, several
// at once where days coincide (Today and Weekend on a Saturday); no time is on without a day.
Column {
    id: root

    required property IslandModel model
    property bool hasDay: false
    property string day
    property bool hasMinute: false
    property int minute: 0
    // `key` is a day key, or null for Backlog; `value` a minute, or null for Anytime.
    signal pickDay(var key)
    signal pickTime(var value)

    readonly property var days: [
        { label: "Today", key: model.todayKey },
        { label: "Tomorrow", key: model.tomorrowKey },
        { label: "Weekend", key: model.weekendKey },
        { label: "Next week", key: model.nextWeekKey },
        { label: "Backlog", key: null },
    ]
    readonly property var times: [
        { label: "Anytime", value: null },
        { label: "9 AM", value: 540 },
        { label: "Noon", value: 720 },
        { label: "3 PM", value: 900 },
        { label: "6 PM", value: 1080 },
        { label: "9 PM", value: 1260 },
    ]

    function dayOn(choice) {
        return choice.key === (hasDay ? day : null)
    }

    function timeOn(choice) {
        if (!hasDay)
            return false
        if (!hasMinute)
            return choice.value === null
        return choice.value === minute
    }

    spacing: 8

    Row {
        spacing: 6

        Repeater {
            model: root.days

            Chip {
                required property var modelData
                label: modelData.label
                on: root.dayOn(modelData)
                onClicked: root.pickDay(modelData.key)
            }
        }
    }

    Row {
        spacing: 6

        Repeater {
            model: root.times

            Chip {
                required property var modelData
                label: modelData.label
                on: root.timeOn(modelData)
                onClicked: root.pickTime(modelData.value)
            }
        }
    }
}
