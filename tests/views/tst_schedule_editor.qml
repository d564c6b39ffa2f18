import QtQuick
import Kelo
import KeloTest

// The schedule editor under a task row: chips and a typed phrase.
ViewTest {
    id: test
    name: "ScheduleEditor"

    Component { id: editorComponent; ScheduleEditor { width: 560 } }

    function editor(day, minute) {
        const id = rig.addTask("dentist", day, minute)
        rig.model.open(false)
        rig.model.scheduling = id
        return createTemporaryObject(editorComponent, test, { island: rig.model, task: rig.task(id) })
    }

    function test_apply_data() {
        return [
            { tag: "empty: nothing changes", phrase: " \t", day: "2025-03-06", open: false },
            { tag: "understood: moved, the time kept", phrase: "tomorrow", day: "2025-03-07",
              open: false },
            { tag: "not understood: stays open, red", phrase: "blah", day: "2025-03-06",
              open: true },
        ]
    }

    function test_apply(data) {
        const view = editor("today", 900)
        const id = view.task.id
        view.phrase = data.phrase
        view.apply()
        compare(rig.task(id).day, data.day)
        compare(rig.task(id).minute, 900)
        compare(rig.model.scheduling === id, data.open)
        compare(view.bad, data.open)
        view.phrase = "blah!" // any edit clears the red outline
        verify(!view.bad)
    }

    // A time chip on a backlog task plans it for today at that time.
    function test_aTimeChipOnABacklogTask() {
        const view = editor(undefined, undefined)
        findChild(view, "whenChips").pickTime(900)
        compare(rig.task(view.task.id).day, rig.model.todayKey)
        compare(rig.task(view.task.id).minute, 900)
    }
}
