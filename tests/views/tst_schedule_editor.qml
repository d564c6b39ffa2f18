import QtQuick
import QtTest
import Kelo
import KeloTest

// The schedule editor under a task row: chips and a typed phrase.
TestCase {
    id: test
    name: "ScheduleEditor"
    when: windowShown
    visible: true
    width: 620
    height: 200

    ViewRig { id: rig }

    Component { id: editorComponent; ScheduleEditor { width: 560 } }

    function editor(day, minute) {
        rig.startAt(2025, 3, 6, 9, 0)
        const id = rig.addTask("dentist", day, minute)
        rig.model.open(false)
        rig.model.scheduling = id
        return createTemporaryObject(editorComponent, test,
                                     { island: rig.model, task: rig.task(id) })
    }

    function test_apply_data() {
        return [
            { tag: "empty: nothing changes", phrase: " \t", day: "2025-03-06", minute: 900,
              open: false },
            { tag: "understood: moved, the time kept", phrase: "tomorrow", day: "2025-03-07",
              minute: 900, open: false },
            { tag: "not understood: stays open, red", phrase: "blah", day: "2025-03-06",
              minute: 900, open: true, bad: true },
        ]
    }

    function test_apply(data) {
        const view = editor("today", 900)
        const id = view.task.id
        view.phrase = data.phrase
        view.apply()
        compare(rig.task(id).day, data.day)
        compare(rig.task(id).minute, data.minute)
        compare(rig.model.scheduling === id, data.open)
        compare(view.bad, data.bad === true)
        if (data.bad) {
            view.phrase = "blah!" // any edit clears the red outline
            verify(!view.bad)
        }
    }

    // A time chip on a backlog task plans it for today at that time.
    function test_aTimeChipOnABacklogTask() {
        const view = editor(undefined, undefined)
        const id = view.task.id
        const chips = findChild(view, "whenChips")
        chips.pickTime(900)
        compare(rig.task(id).day, rig.today)
        compare(rig.task(id).minute, 900)
    }
}
