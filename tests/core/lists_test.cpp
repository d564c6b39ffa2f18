#include "lists.h"
#include "testing.h"

#include <gtest/gtest.h>

namespace kelo {
namespace {

using testing::titles;
using testing::todo;
using testing::utc;
using Titles = std::vector<std::string>;

const Calendar berlin = testing::calendar("Europe/Berlin");
Timestamp at(const char* dayAndTime) {
    return testing::wallTime(berlin, dayAndTime);
}
// Thursday 2025-03-06, 10:00 in Berlin, and a moment earlier that day.
const Timestamp now = at("2025-03-06 10:00");
const Timestamp earlierToday = at("2025-03-06 08:00");

TEST(Lists, EachTaskShowsInOneListOrNowhere) {
    const Timestamp yesterday = at("2025-03-05 18:00");
    const Timestamp lastMonth = at("2025-02-01 09:00");
    const std::tuple<std::optional<DayKey>, std::optional<std::int64_t>, std::optional<Timestamp>,
                     const char*>
        cases[] = {
            // day, minute, done at, list ("" for none)
            {"2025-03-05", {}, {}, "overdue"},
            {"2024-12-31", 540, {}, "overdue"},
            {"2025-03-05", {}, yesterday, ""},
            {"2025-03-05", {}, earlierToday, "done"},
            {"2025-02-01", {}, at("2025-03-06 00:00"), "done"},
            {"2025-02-01", {}, at("2025-03-05 23:59"), ""},
            {"2025-03-06", 1020, {}, "timed"},
            {"2025-03-06", 0, {}, "timed"},
            {"2025-03-06", {}, {}, "anytime"},
            {"2025-03-06", 600, lastMonth, "done"},
            {"2025-03-07", {}, {}, "upcoming"},
            {"2025-03-13", 540, earlierToday, "upcoming"},
            {"2025-03-13", {}, lastMonth, "upcoming"},
            {{}, {}, {}, "backlog"},
            {{}, 540, {}, "backlog"},
            {{}, {}, earlierToday, "backlog"},
            {{}, {}, yesterday, ""},
        };
    for (const auto& [day, minute, doneAt, list] : cases) {
        const std::vector<Todo> todos{todo(day.value_or("undated"), day, minute, doneAt)};
        const TodaySections today = todaySections(todos, now, berlin);
        const std::pair<const char*, std::size_t> sizes[] = {
            {"overdue", today.overdue.size()},
            {"timed", today.timed.size()},
            {"anytime", today.anytime.size()},
            {"done", today.done.size()},
            {"upcoming", upcoming(todos, now, berlin).size()},
            {"backlog", backlog(todos, now, berlin).size()},
        };
        std::string places;
        for (const auto& [name, size] : sizes) {
            places += size == 0 ? "" : places.empty() ? name : std::string(" ") + name;
        }
        EXPECT_EQ(places, list) << todos[0].title << " " << minute.value_or(-1) << " " << !!doneAt;
    }
}

TEST(Lists, EveryListKeepsTheOneOrderAndStoredOrderOnTies) {
    const std::vector<Todo> todos{
        todo("timed 17:00 new", "2025-03-06", 1020),
        todo("anytime new", "2025-03-06"),
        todo("overdue 03-05 untimed", "2025-03-05"),
        todo("timed 09:00", "2025-03-06", 540),
        todo("timed 17:00 old", "2025-03-06", 1020, {}, 30),
        todo("anytime old", "2025-03-06", {}, {}, 30),
        todo("overdue 03-05 08:00", "2025-03-05", 480),
        todo("overdue 03-01", "2025-03-01", 1200),
        todo("timed 17:00 twin a", "2025-03-06", 1020, {}, -5),
        todo("timed 17:00 twin b", "2025-03-06", 1020, {}, -5),
        todo("done today untimed", "2025-03-06", {}, earlierToday),
        todo("done today 12:00", "2025-03-06", 720, at("2025-03-06 00:01")),
        todo("done overdue 03-02", "2025-03-02", {}, at("2025-03-06 09:59")),
        todo("13th done", "2025-03-13", 540, earlierToday),
        todo("13th untimed", "2025-03-13"),
        todo("07th 15:00", "2025-03-07", 900),
        todo("13th 18:00", "2025-03-13", 1080),
        todo("07th done", "2025-03-07", {}, earlierToday),
        todo("next year", "2026-01-15"),
        todo("13th 18:00 older", "2025-03-13", 1080, {}, 10),
        todo("07th 09:00", "2025-03-07", 540),
        todo("backlog done b", {}, {}, earlierToday, 50),
        todo("backlog middle", {}, {}, {}, 20),
        todo("backlog oldest", {}, {}, {}, 90),
        todo("backlog done a", {}, {}, at("2025-03-06 07:00"), 0),
        todo("backlog newest", {}, {}, {}, 0),
        todo("backlog twin", {}, {}, {}, 20),
        todo("backlog done long ago", {}, {}, utc("2025-01-01T00:00:00Z")),
    };
    const TodaySections today = todaySections(todos, now, berlin);
    EXPECT_EQ(titles(today.overdue),
              (Titles{"overdue 03-01", "overdue 03-05 08:00", "overdue 03-05 untimed"}));
    EXPECT_EQ(titles(today.timed), (Titles{"timed 09:00", "timed 17:00 old", "timed 17:00 new",
                                           "timed 17:00 twin a", "timed 17:00 twin b"}));
    EXPECT_EQ(titles(today.anytime), (Titles{"anytime old", "anytime new"}));
    // The completion time plays no part.
    EXPECT_EQ(titles(today.done),
              (Titles{"done overdue 03-02", "done today 12:00", "done today untimed"}));
    EXPECT_EQ(progress(todos, now, berlin), (DayProgress{3, 13})) << "today's sections only";
    EXPECT_EQ(progress({}, now, berlin), (DayProgress{0, 0}));

    const auto groups = upcoming(todos, now, berlin);
    ASSERT_EQ(groups.size(), 3u);
    EXPECT_EQ(groups[0].id(), "2025-03-07");
    EXPECT_EQ(titles(groups[0].items), (Titles{"07th 09:00", "07th 15:00", "07th done"}));
    EXPECT_EQ(groups[1].day, "2025-03-13");
    EXPECT_EQ(titles(groups[1].items),
              (Titles{"13th 18:00 older", "13th 18:00", "13th untimed", "13th done"}));
    EXPECT_EQ(groups[2].day, "2026-01-15");
    EXPECT_EQ(titles(groups[2].items), (Titles{"next year"}));

    // Open tasks newest first, then today's done ones in stored order.
    EXPECT_EQ(titles(backlog(todos, now, berlin)),
              (Titles{"backlog newest", "backlog middle", "backlog twin", "backlog oldest",
                      "backlog done b", "backlog done a"}));
}

TEST(Lists, DueNowCoversFiveMinutesAndNextTimedSkipsWhatHasBegun) {
    const std::vector<Todo> todos{
        todo("14:10", "2025-03-06", 850),
        todo("14:00", "2025-03-06", 840),
        todo("13:58", "2025-03-06", 838),
        todo("14:03 done", "2025-03-06", 843, earlierToday),
        todo("13:59", "2025-03-06", 839),
        todo("14:03", "2025-03-06", 843),
        todo("yesterday 14:01", "2025-03-05", 841),
        todo("tomorrow 14:01", "2025-03-07", 841),
        todo("untimed", "2025-03-06"),
    };
    const std::tuple<const char*, Titles, const char*> cases[] = {
        // now, due now, next timed ("" for none)
        {"2025-03-06 14:03", {"13:59", "14:00", "14:03"}, "14:03"},
        {"2025-03-06 14:04", {"14:00", "14:03"}, "14:10"},
        {"2025-03-06 13:57", {}, "13:58"},
        {"2025-03-06 14:14", {"14:10"}, ""},
        {"2025-03-06 14:15", {}, ""},
        {"2025-03-06 00:00", {}, "13:58"},
    };
    for (const auto& [when, due, next] : cases) {
        EXPECT_EQ(titles(dueNow(todos, at(when), berlin)), due) << when;
        const auto found = nextTimed(todos, at(when), berlin);
        EXPECT_EQ(found ? found->title : "", next) << when;
    }
}

// Around midnight, daylight-saving changes and +14:00, the lists follow the wall clock's day and
// minute, the five minutes of "due now" included.
TEST(Lists, TodayFollowsTheWallClockAcrossMidnightAndDaylightSaving) {
    const std::tuple<const char*, const char*, const char*, std::int64_t> cases[] = {
        // zone, instant, today, minute of the day
        {"Europe/Berlin", "2025-03-06T22:59:59Z", "2025-03-06", 1439},
        {"Europe/Berlin", "2025-03-06T23:00:00Z", "2025-03-07", 0},
        {"Europe/Berlin", "2025-03-06T23:02:00Z", "2025-03-07", 2},
        {"Europe/Berlin", "2025-03-30T00:59:00Z", "2025-03-30", 119},
        {"Europe/Berlin", "2025-03-30T01:01:00Z", "2025-03-30", 181},
        {"Europe/Berlin", "2025-10-26T00:30:00Z", "2025-10-26", 150},
        {"Europe/Berlin", "2025-10-26T01:30:00Z", "2025-10-26", 150},
        {"Pacific/Kiritimati", "2025-03-06T10:00:00Z", "2025-03-07", 0},
    };
    for (const auto& [zone, instant, today, minute] : cases) {
        const Calendar calendar = testing::calendar(zone);
        const Timestamp moment = utc(instant);
        const std::vector<Todo> todos{
            todo("earlier in the window", today, std::max<std::int64_t>(minute - 4, 0)),
            todo("due", today, minute),
            todo("yesterday", Day::adding(-1, today), minute),
            todo("tomorrow", Day::adding(1, today)),
        };
        SCOPED_TRACE(std::string(zone) + " " + instant);
        EXPECT_EQ(titles(todaySections(todos, moment, calendar).overdue), (Titles{"yesterday"}));
        EXPECT_EQ(titles(dueNow(todos, moment, calendar)),
                  (Titles{"earlier in the window", "due"}));
        const auto groups = upcoming(todos, moment, calendar);
        ASSERT_EQ(groups.size(), 1u);
        EXPECT_EQ(titles(groups[0].items), (Titles{"tomorrow"}));
    }
}

} // namespace
} // namespace kelo
