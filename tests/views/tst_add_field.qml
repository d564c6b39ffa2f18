import QtQuick
import QtTest
import Kelo
import KeloTest

// The quick-add field and the chips that set the draft's day and time.
TestCase {
    id: test
    name: "AddField"
    when: windowShown
    visible: true
    width: 640
    height: 200

    ViewRig { id: rig }

    Component { id: fieldComponent; AddField { width: 600 } }

    function onChips(chips, row) {
        return chips[row].filter(choice => row === "days" ? chips.dayOn(choice)
                                                          : chips.timeOn(choice))
                         .map(choice => choice.label)
    }

    function chipsFor(field) {
        return findChild(field, "whenChips")
    }

    function test_chipsThatAreOn_data() {
        return [
            { tag: "today on a Saturday is also the weekend", day: 8, bucket: Island.Today,
              draft: "swim", days: ["Today", "Weekend"], times: ["Anytime"] },
            { tag: "a Thursday's today", day: 6, bucket: Island.Today, draft: "swim",
              days: ["Today"], times: ["Anytime"] },
            { tag: "a backlog draft has no day, so no time", day: 6, bucket: Island.Backlog,
              draft: "learn Rust", days: ["Backlog"], times: [] },
            { tag: "Upcoming plans tomorrow", day: 6, bucket: Island.Upcoming, draft: "swim",
              days: ["Tomorrow"], times: ["Anytime"] },
            { tag: "an offered time", day: 6, bucket: Island.Today, draft: "swim 3pm",
              days: ["Today"], times: ["3 PM"] },
            { tag: "a time not offered", day: 6, bucket: Island.Today, draft: "swim 10:15am",
              days: ["Today"], times: [] },
            { tag: "midnight is a time, not anytime", day: 6, bucket: Island.Upcoming,
              draft: "swim fri 12am", days: ["Tomorrow"], times: [] },
        ]
    }

    function test_chipsThatAreOn(data) {
        rig.startAt(2025, 3, data.day, 9, 0)
        const field = createTemporaryObject(fieldComponent, test, { model: rig.model })
        rig.model.bucket = data.bucket
        rig.model.draft = data.draft
        const chips = chipsFor(field)
        compare(onChips(chips, "days"), data.days)
        compare(onChips(chips, "times"), data.times)
    }

    function test_chipsShowOnlyWhileTheDraftIsNotBlank() {
        rig.startAt(2025, 3, 6, 9, 0)
        const field = createTemporaryObject(fieldComponent, test, { model: rig.model })
        rig.model.draft = " \t "
        verify(!field.typing)
        rig.model.draft = "x"
        verify(field.typing)
        tryVerify(() => chipsFor(field).visible)
    }

    function test_typingAndReturnAddTheTask() {
        rig.startAt(2025, 3, 6, 9, 0)
        const field = createTemporaryObject(fieldComponent, test, { model: rig.model })
        tryVerify(() => field.input.activeFocus, 1000, "the field takes the keyboard")
        keyClick("g")
        keyClick("o")
        compare(rig.model.draft, "go")
        keyClick(Qt.Key_Return)
        compare(rig.model.draft, "")
        compare(rig.model.todayList.taskCount, 1)
    }

    function test_everyFocusRequestFocusesTheField() {
        rig.startAt(2025, 3, 6, 9, 0)
        const field = createTemporaryObject(fieldComponent, test, { model: rig.model })
        tryVerify(() => field.input.activeFocus)
        field.input.focus = false
        verify(!field.input.activeFocus)
        rig.model.draft = "milk"
        rig.model.pickTime(540) // a chip asks for the keyboard back
        tryVerify(() => field.input.activeFocus)
        compare(rig.model.draft, "milk 9am")
    }
}
