import QtQuick
import QtTest
import Kelo
import KeloTest

// The alert's drawing and its two buttons.
TestCase {
    id: test
    name: "Alert"
    when: windowShown
    visible: true
    width: 460
    height: 100

    ViewRig { id: rig }

    Component { id: alertComponent; AlertView { width: 445 } }

    function raise(hour, minute) {
        rig.startAt(2025, 3, 6, hour, minute)
        const id = rig.addTask("call the plumber", "today", hour * 60 + minute)
        rig.advance(0)
        compare(rig.model.mode.kind, Island.Alert)
        return id
    }

    function button(alert, text) {
        const found = findChild(alert, text === "Done" ? "done" : "snooze")
        verify(found, text)
        return found
    }

    function test_theBellSwingsAndComesToRestTheOtherWay() {
        raise(17, 0)
        const alert = createTemporaryObject(alertComponent, test, { model: rig.model })
        verify(alert.ringing)
        tryVerify(() => !alert.ringing, 3000)
        compare(alert.bell.rotation, 14)
    }

    function test_nothingIsDrawnOnceTheTaskIsGone() {
        const id = raise(17, 0)
        const alert = createTemporaryObject(alertComponent, test, { model: rig.model })
        verify(alert.visible)
        rig.deleteTask(id)
        verify(!alert.visible)
    }

    function test_snoozeNeverPassesTheEndOfTheDay() {
        const id = raise(23, 55)
        const alert = createTemporaryObject(alertComponent, test, { model: rig.model })
        mouseClick(button(alert, "Snooze 10m"))
        compare(rig.task(id).minute, 1439)
        compare(rig.model.mode.kind, Island.Closed)
    }

    function test_doneCompletesTheTask() {
        const id = raise(17, 0)
        const alert = createTemporaryObject(alertComponent, test, { model: rig.model })
        mouseClick(button(alert, "Done"))
        verify(rig.task(id).done)
        compare(rig.model.mode.kind, Island.Closed)
        verify(!rig.model.toast.shown)
    }
}
