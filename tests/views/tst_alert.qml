import QtQuick
import Kelo
import KeloTest

// The alert's drawing and its two buttons.
ViewTest {
    id: test
    name: "Alert"

    Component { id: alertComponent; AlertView { width: 445 } }

    // An alert for a task due at this time, and its view.
    function raise(hour, minute) {
        rig.startAt(2025, 3, 6, hour, minute)
        const id = rig.addTask("call the plumber", "today", hour * 60 + minute)
        rig.advance(0)
        return [id, createTemporaryObject(alertComponent, test, { model: rig.model })]
    }

    // The bell swings and comes to rest the other way; Done completes the task, without a toast.
    function test_done() {
        const [id, alert] = raise(17, 0)
        verify(alert.ringing)
        tryVerify(() => !alert.ringing, 3000)
        compare(alert.bell.rotation, 14)
        mouseClick(findChild(alert, "done"))
        verify(rig.task(id).done)
        compare(rig.model.mode.kind, Island.Closed)
        verify(!rig.model.toast.shown)
    }

    function test_snoozeNeverPassesTheEndOfTheDay() {
        const [id, alert] = raise(23, 55)
        mouseClick(findChild(alert, "snooze"))
        compare(rig.task(id).minute, 1439)
        compare(rig.model.mode.kind, Island.Closed)
    }

    function test_nothingIsDrawnOnceTheTaskIsGone() {
        const [id, alert] = raise(17, 0)
        verify(alert.visible)
        rig.model.deleteTask(id)
        verify(!alert.visible)
    }
}
