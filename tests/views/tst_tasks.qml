import QtQuick
import Kelo
import KeloTest

// The open island's tasks page, used as a person would: the add field and the chips that set the
// draft's day and time, the lists and their rows, the schedule editor under a row.
ViewTest {
    id: test
    name: "Tasks"

    Component { id: fieldComponent; AddField { width: 600 } }
    Component { id: pageComponent; TasksPage { width: 600 } }
    Component { id: editorComponent; ScheduleEditor { width: 560 } }

    function rowNamed(view, title) {
        let found = null
        // The list builds its rows when it is laid out.
        tryVerify(() => found = childrenWhere(view.taskList.rows, child => child.circle
                                              && child.task !== undefined && child.task.title === title)[0],
                  2000, "a row for " + title)
        return found
    }

    // On the 6th, on Today, unless a row says otherwise.
    function test_chipsThatAreOn_data() {
        return [
            { tag: "today on a Saturday is also the weekend", day: 8, draft: "swim",
              days: ["Today", "Weekend"], times: ["Anytime"] },
            { tag: "a backlog draft has no day, so no time", bucket: Island.Backlog,
              draft: "learn Rust", days: ["Backlog"], times: [] },
            { tag: "Upcoming plans tomorrow", bucket: Island.Upcoming, draft: "swim",
              days: ["Tomorrow"], times: ["Anytime"] },
            { tag: "an offered time", draft: "swim 3pm", days: ["Today"], times: ["3 PM"] },
            { tag: "a time not offered", draft: "swim 10:15am", days: ["Today"], times: [] },
            { tag: "midnight is a time, not anytime", bucket: Island.Upcoming, draft: "swim fri 12am",
              days: ["Tomorrow"], times: [] },
        ]
    }

    function test_chipsThatAreOn(data) {
        rig.startAt(2025, 3, data.day || 6, 9, 0)
        const chips = findChild(make(fieldComponent), "whenChips")
        rig.model.bucket = data.bucket || Island.Today
        rig.model.draft = data.draft
        compare(chips.days.filter(chips.dayOn).map(choice => choice.label), data.days)
        compare(chips.times.filter(chips.timeOn).map(choice => choice.label), data.times)
    }

    // The field takes the keyboard when it appears and on every focus request; the chips show
    // only while the draft is not blank.
    function test_typingAddsTheTask() {
        const view = make(fieldComponent)
        tryVerify(() => view.input.activeFocus, 1000, "the field takes the keyboard")
        keyClick(" ")
        verify(!view.typing)
        keyClick("g")
        verify(view.typing)
        tryVerify(() => findChild(view, "whenChips").visible)
        keyClick(Qt.Key_Return)
        compare(rig.model.draft, "")
        compare(rig.model.todayList.taskCount, 1)
        view.input.focus = false
        rig.model.draft = "milk"
        rig.model.pickTime(540) // a chip asks for the keyboard back
        tryVerify(() => view.input.activeFocus)
    }

    // With `backlog` ideas in the backlog; without an `action`, the empty state offers none.
    function test_emptyStates_data() {
        return [
            { tag: "today, nothing anywhere", bucket: Island.Today, title: "Clear day" },
            { tag: "today, three in the backlog", bucket: Island.Today, backlog: 3,
              title: "Clear day", action: "Open Backlog (3)" },
            { tag: "upcoming", bucket: Island.Upcoming, backlog: 1, title: "Nothing planned" },
            { tag: "backlog", bucket: Island.Backlog, title: "Backlog is empty" },
        ]
    }

    function test_emptyStates(data) {
        for (let n = 0; n < (data.backlog || 0); ++n)
            rig.addTask("idea " + n)
        rig.model.bucket = data.bucket
        const empty = childrenWhere(make(pageComponent).taskList.rows,
                                    child => child.title !== undefined && child.visible)[0]
        compare(empty.title, data.title)
        compare(empty.actionText, data.action || "")
        if (data.action) {
            empty.action()
            compare(rig.model.bucket, Island.Backlog)
        }
    }

    function test_aClickOnTheCircleCompletesTheTaskAMomentLater() {
        const id = rig.addTask("standup", "today", 600)
        const view = make(pageComponent)
        const row = rowNamed(view, "standup")
        mouseClick(row.circle)
        verify(row.done, "drawn done at once")
        mouseClick(row.circle) // ignored while it waits
        rig.advance(449)
        verify(!rig.task(id).done)
        rig.advance(1)
        verify(rig.task(id).done)
        mouseClick(rowNamed(view, "standup").circle) // reopens at once
        verify(!rig.task(id).done)
        verify(!rowNamed(view, "standup").done)
    }

    function test_renameInPlace_data() {
        return [
            { tag: "Return keeps the new title", keys: ["X", Qt.Key_Return], title: "standupX" },
            { tag: "Esc restores the title", keys: ["X", Qt.Key_Escape], title: "standup" },
            { tag: "a blank title is ignored", clear: true, keys: [" ", Qt.Key_Return],
              title: "standup" },
        ]
    }

    function test_renameInPlace(data) {
        const id = rig.addTask("standup", "today", 600)
        const row = rowNamed(make(pageComponent), "standup")
        rig.model.editing = id
        tryVerify(() => row.titleField.activeFocus)
        row.titleField.cursorPosition = row.titleField.text.length
        if (data.clear)
            row.titleField.selectAll()
        data.keys.forEach(key => keyClick(key))
        compare(rig.model.editing, "")
        compare(rig.task(id).title, data.title)
    }

    // Offered for tasks of other days and none, not for today's or done ones.
    function test_moveToToday() {
        rig.addTask("today's", "today")
        rig.addTask("done", "2025-03-05", undefined, true)
        rig.addTask("overdue", "2025-03-05")
        const view = make(pageComponent)
        compare(["today's", "done", "overdue"].map(title => rowNamed(view, title).canMoveToToday),
                [false, false, true])
        rig.model.bucket = Island.Backlog
        rig.addTask("idea")
        verify(rowNamed(make(pageComponent), "idea").canMoveToToday)
    }

    // The row's Delete shows the toast; its Undo brings the row back.
    function test_deleteThenUndo() {
        const id = rig.addTask("standup", "today", 600)
        const view = make(pageComponent)
        rowNamed(view, "standup").menuEntries()[4].action()
        verify(!rig.task(id))
        verify(rig.model.toast.shown)
        rig.model.undoLast()
        compare(rowNamed(view, "standup").task.id, id)
    }

    // The schedule editor of a task due today at 15:00 (of one without a day for the time chip):
    // a phrase or the chip applied, the task's day and time, whether the editor stays open and red.
    function test_scheduleEditor_data() {
        return [
            { tag: "empty: nothing changes", phrase: " \t", day: "2025-03-06" },
            { tag: "understood: moved, the time kept", phrase: "tomorrow", day: "2025-03-07" },
            { tag: "not understood: stays open, red", phrase: "blah", day: "2025-03-06", open: true,
              bad: true },
            { tag: "a time chip plans a backlog task today", chip: 900, day: "2025-03-06", open: true },
        ]
    }

    function test_scheduleEditor(data) {
        const id = data.chip ? rig.addTask("dentist") : rig.addTask("dentist", "today", 900)
        rig.model.open(false)
        rig.model.scheduling = id
        const view = createTemporaryObject(editorComponent, test, { island: rig.model, task: rig.task(id) })
        if (data.chip) {
            findChild(view, "whenChips").pickTime(data.chip)
        } else {
            view.phrase = data.phrase
            view.apply()
        }
        compare(rig.task(id).day, data.day)
        compare(rig.task(id).minute, 900)
        compare(rig.model.scheduling === id, data.open === true)
        compare(view.bad, data.bad === true)
        view.phrase = "blah!" // any edit clears the red outline
        verify(!view.bad)
    }
}
