import QtQuick
import Kelo
import KeloTest

// The open island's lists and their rows, used as a person would.
ViewTest {
    id: test
    name: "Lists"

    Component { id: pageComponent; TasksPage { width: 600 } }

    function page() {
        return createTemporaryObject(pageComponent, test, { model: rig.model })
    }

    // The first visible child below `item` for which `matches` holds.
    function childWhere(item, matches) {
        for (let i = 0; i < item.children.length; ++i) {
            const child = item.children[i]
            const found = matches(child) ? child : childWhere(child, matches)
            if (found)
                return found
        }
        return null
    }

    function rowNamed(view, title) {
        let found = null
        // The list builds its rows when it is laid out.
        tryVerify(() => found = childWhere(view.taskList.rows, child => child.circle
                                           && child.task !== undefined && child.task.title === title),
                  2000, "a row for " + title)
        return found
    }

    function test_emptyStates_data() {
        return [
            { tag: "today, nothing anywhere", bucket: Island.Today, backlog: 0,
              title: "Clear day", action: "" },
            { tag: "today, three in the backlog", bucket: Island.Today, backlog: 3,
              title: "Clear day", action: "Open Backlog (3)" },
            { tag: "upcoming", bucket: Island.Upcoming, backlog: 1, title: "Nothing planned",
              action: "" },
            { tag: "backlog", bucket: Island.Backlog, backlog: 0, title: "Backlog is empty",
              action: "" },
        ]
    }

    function test_emptyStates(data) {
        for (let n = 0; n < data.backlog; ++n)
            rig.addTask("idea " + n)
        rig.model.bucket = data.bucket
        const empty = childWhere(page().taskList.rows,
                                 child => child.title !== undefined && child.visible)
        compare(empty.title, data.title)
        compare(empty.actionText, data.action)
        if (data.action !== "") {
            empty.action()
            compare(rig.model.bucket, Island.Backlog)
        }
    }

    function test_aClickOnTheCircleCompletesTheTaskAMomentLater() {
        const id = rig.addTask("standup", "today", 600)
        const view = page()
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
        const row = rowNamed(page(), "standup")
        rig.model.editing = id
        tryVerify(() => row.titleField.activeFocus)
        if (data.clear)
            row.titleField.selectAll()
        else
            row.titleField.cursorPosition = row.titleField.text.length
        data.keys.forEach(key => keyClick(key))
        compare(rig.model.editing, "")
        compare(rig.task(id).title, data.title)
    }

    // Offered for tasks of other days and none, not for today's or done ones.
    function test_moveToToday() {
        rig.addTask("today's", "today")
        rig.addTask("done", "2025-03-05", undefined, true)
        rig.addTask("overdue", "2025-03-05")
        const view = page()
        compare(["today's", "done", "overdue"].map(title => rowNamed(view, title).canMoveToToday),
                [false, false, true])
        rig.model.bucket = Island.Backlog
        rig.addTask("idea")
        verify(rowNamed(page(), "idea").canMoveToToday)
    }

    function test_deleteThenUndo() {
        const id = rig.addTask("standup", "today", 600)
        const view = page()
        rowNamed(view, "standup").menuEntries()[4].action()
        verify(!rig.task(id))
        verify(rig.model.toast.shown)
        rig.model.undoLast()
        compare(rowNamed(view, "standup").task.id, id)
    }
}
