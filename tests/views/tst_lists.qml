import QtQuick
import QtTest
import Kelo
import KeloTest

// The open island's lists and their rows, used as a person would.
TestCase {
    id: test
    name: "Lists"
    when: windowShown
    visible: true
    width: 620
    height: 500

    ViewRig { id: rig }

    Component { id: pageComponent; TasksPage { width: 600 } }

    function page() {
        return createTemporaryObject(pageComponent, test, { model: rig.model })
    }

    function rowNamed(view, title) {
        const list = view.taskList.rows
        let found = null
        const search = item => {
            for (let i = 0; i < item.children.length; ++i) {
                const child = item.children[i]
                if (child.task !== undefined && child.task.title === title && child.circle)
                    found = child
                else
                    search(child)
            }
        }
        // The list builds its rows when it is laid out.
        tryVerify(() => { search(list); return found !== null }, 2000, "a row for " + title)
        return found
    }

    function emptyState(view) {
        const rows = view.taskList.rows
        for (let i = 0; i < rows.children.length; ++i)
            if (rows.children[i].title !== undefined && rows.children[i].visible)
                return rows.children[i]
        return null
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
        rig.startAt(2025, 3, 6, 9, 0)
        for (let n = 0; n < data.backlog; ++n)
            rig.addTask("idea " + n)
        rig.model.bucket = data.bucket
        const view = page()
        const empty = emptyState(view)
        verify(empty)
        compare(empty.title, data.title)
        compare(empty.actionText, data.action)
        if (data.action !== "") {
            empty.action()
            compare(rig.model.bucket, Island.Backlog)
        }
    }

    function test_aClickOnTheCircleCompletesTheTaskAMomentLater() {
        rig.startAt(2025, 3, 6, 9, 0)
        const id = rig.addTask("standup", "today", 600)
        const view = page()
        const row = rowNamed(view, "standup")
        mouseClick(row.circle)
        verify(row.done, "drawn done at once")
        verify(!rig.task(id).done)
        mouseClick(row.circle) // ignored while it waits
        rig.advance(449)
        verify(!rig.task(id).done)
        rig.advance(1)
        verify(rig.task(id).done)
        mouseClick(rowNamed(view, "standup").circle) // reopens at once
        verify(!rig.task(id).done)
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
        rig.startAt(2025, 3, 6, 9, 0)
        const id = rig.addTask("standup", "today", 600)
        const view = page()
        const row = rowNamed(view, "standup")
        rig.model.editing = id
        tryVerify(() => row.titleField.activeFocus)
        if (data.clear)
            row.titleField.selectAll()
        else
            row.titleField.cursorPosition = row.titleField.text.length
        for (const key of data.keys)
            typeof key === "string" ? keyClick(key) : keyClick(key)
        compare(rig.model.editing, "")
        compare(rig.task(id).title, data.title)
    }

    function test_moveToTodayIsOfferedOnlyWhereItApplies() {
        rig.startAt(2025, 3, 6, 9, 0)
        rig.addTask("today's", "today")
        rig.addTask("done", "2025-03-05", undefined, true)
        rig.addTask("overdue", "2025-03-05")
        const view = page()
        verify(!rowNamed(view, "today's").canMoveToToday)
        verify(!rowNamed(view, "done").canMoveToToday)
        verify(rowNamed(view, "overdue").canMoveToToday)
        rig.model.bucket = Island.Backlog
        rig.addTask("idea")
        verify(rowNamed(page(), "idea").canMoveToToday)
    }

    function test_deleteThenUndo() {
        rig.startAt(2025, 3, 6, 9, 0)
        const id = rig.addTask("standup", "today", 600)
        const view = page()
        rowNamed(view, "standup").menuEntries()[4].action()
        verify(!rig.task(id))
        verify(rig.model.toast.shown)
        compare(rig.model.toast.toast.text, "Deleted “standup”")
        rig.model.undoLast()
        verify(rig.task(id))
        compare(rowNamed(view, "standup").task.id, id)
    }
}
