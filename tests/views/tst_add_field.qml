import QtQuick
import Kelo
import KeloTest

// The quick-add field and the chips that set the draft's day and time.
ViewTest {
    id: test
    name: "AddField"

    Component { id: fieldComponent; AddField { width: 600 } }

    function field() {
        return createTemporaryObject(fieldComponent, test, { model: rig.model })
    }

    function test_chipsThatAreOn_data() {
        return [
            { tag: "today on a Saturday is also the weekend", day: 8, bucket: Island.Today,
              draft: "swim", days: ["Today", "Weekend"], times: ["Anytime"] },
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
        const chips = findChild(field(), "whenChips")
        rig.model.bucket = data.bucket
        rig.model.draft = data.draft
        compare(chips.days.filter(chips.dayOn).map(choice => choice.label), data.days)
        compare(chips.times.filter(chips.timeOn).map(choice => choice.label), data.times)
    }

    // The field takes the keyboard when it appears and on every focus request; the chips show
    // only while the draft is not blank.
    function test_typingAddsTheTask() {
        const view = field()
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
        compare(rig.model.draft, "milk 9am")
    }
}
