import QtQuick
import Kelo
import KeloTest

// What the closed island, the peek and the alert show, and the alert's buttons.
ViewTest {
    id: test
    name: "Closed"

    Component { id: labelComponent; NextLabel {} }
    Component { id: peekComponent; PeekView { width: 385 } }
    Component { id: ringComponent; ProgressRing { width: 14; height: 14 } }
    Component { id: alertComponent; AlertView { width: 445 } }

    // Today at 09:00 holds `tasks`: [minute or null, done].
    function plan(tasks) {
        for (const [minute, done] of tasks)
            rig.addTask("task", "today", minute === null ? undefined : minute, done)
    }

    // The label beside the notch and the peek's line under it.
    function test_nextLabel_data() {
        return [
            { tag: "a task this minute", tasks: [[540, false]], text: "now", kind: "countdown", line: "task" },
            { tag: "60 minutes ahead", tasks: [[null, false], [600, false]], text: "60m",
              kind: "countdown", line: "task" },
            { tag: "61 minutes ahead", tasks: [[601, false]], text: "10:01", kind: "countdown", line: "task" },
            { tag: "a done task ahead is not next", tasks: [[565, true], [null, false]],
              text: "1", kind: "left", line: "1 left today" },
            { tag: "no task today", tasks: [], text: "", kind: "nothing",
              line: "Nothing today. Click to plan." },
            { tag: "3 of 5 left", tasks: [[null, true], [null, true], [null, false], [null, false],
                                          [480, false]], text: "3", kind: "left", line: "3 left today" },
            { tag: "all done", tasks: [[null, true], [480, true]], text: "", kind: "allDone",
              line: "All done for today" },
        ]
    }

    function test_nextLabel(data) {
        plan(data.tasks)
        const label = make(labelComponent)
        compare(label.kind, data.kind)
        compare(label.text, data.text)
        compare(make(peekComponent).line, data.line)
    }

    // The countdown follows the clock; the wide label shows a later time in full.
    function test_theCountdownFollowsTheClock() {
        plan([[600, false]])
        const label = make(labelComponent, { compact: false })
        rig.advance(60 * 1000)
        compare(label.text, "59m")
        rig.advance(59 * 60 * 1000)
        compare(label.text, "now")
        rig.addTask("task", "today", 662)
        rig.advance(60 * 1000)
        compare(label.text, "11:02\u202fAM")
    }

    // The arc springs to its new share.
    function test_ring() {
        const ring = createTemporaryObject(ringComponent, test, { progress: { done: 0, total: 0 } })
        compare(ring.sweep, 0)
        ring.progress = { done: 2, total: 5 }
        tryVerify(() => Math.abs(ring.sweep - 144) < 1, 3000)
    }

    // The bell swings and comes to rest the other way; both buttons close the island without a
    // toast. Once the task is gone, nothing is drawn.
    function test_alert_data() {
        return [
            { tag: "Done completes the task", button: "done", done: true, minute: 540 },
            { tag: "Snooze moves it ten minutes on", button: "snooze", done: false, minute: 550 },
            { tag: "the task deleted", button: "" },
        ]
    }

    function test_alert(data) {
        const id = rig.addTask("call the plumber", "today", 540)
        rig.advance(0)
        const alert = make(alertComponent)
        verify(alert.visible && alert.ringing)
        tryVerify(() => !alert.ringing, 3000)
        compare(alert.bell.rotation, 14)
        if (data.button === "") {
            rig.model.deleteTask(id)
            verify(!alert.visible)
            return
        }
        mouseClick(findChild(alert, data.button))
        compare(rig.task(id).done, data.done)
        compare(rig.task(id).minute, data.minute)
        compare(rig.model.mode.kind, Island.Closed)
        verify(!rig.model.toast.shown)
    }
}
