#include "lists.h"
#include "testing.h"

namespace kelo {
namespace {

using testing::titles;
using testing::todo;
using Titles = std::vector<std::string>;

const Calendar berlin = testing::calendar("Europe/Berlin");
Timestamp at(const char* dayAndTime) {
    return testing::wallTime(berlin, dayAndTime);
}
// Thursday 2025-03-06, 10:00 in Berlin, and a moment earlier that day.
const Timestamp now = at("2025-03-06 10:00");
const Timestamp earlierToday = at("2025-03-06 08:00");

// Each list is compared whole, so a task in a wrong list, in two lists or in none shows too.
TEST(Lists, EachTaskShowsInOneListInTheOneOrderWithStoredOrderOnTies) {
    const Timestamp lastMonth = at("2025-02-01 09:00");
    // clang-format off
    const std::vector<Todo> todos{
        todo("timed 17:00 new", "2025-03-06", 1020), todo("anytime new", "2025-03-06"),
        todo("overdue 03-05 untimed", "2025-03-05"),
        todo("timed 17:00 old", "2025-03-06", 1020, {}, 30),
        todo("anytime old", "2025-03-06", {}, {}, 30),
        todo("overdue 03-05 08:00", "2025-03-05", 480),
        todo("overdue last year 09:58", "2024-12-31", 598), todo("timed 00:00", "2025-03-06", 0),
        todo("timed 10:00", "2025-03-06", 600), todo("timed 09:56", "2025-03-06", 596),
        todo("timed 09:55", "2025-03-06", 595),
        todo("timed 17:00 twin a", "2025-03-06", 1020, {}, -5),
        todo("timed 17:00 twin b", "2025-03-06", 1020, {}, -5),
        todo("done today untimed", "2025-03-06", {}, earlierToday),
        todo("done today last month", "2025-03-06", 600, lastMonth),
        todo("done overdue at midnight", "2025-02-01", {}, at("2025-03-06 00:00")),
        todo("hidden: done overdue yesterday", "2025-02-01", {}, at("2025-03-05 23:59")),
        todo("13th done", "2025-03-13", 540, earlierToday), todo("13th untimed", "2025-03-13"),
        todo("13th 18:00", "2025-03-13", 1080), todo("07th done", "2025-03-07", {}, lastMonth),
        todo("next year", "2026-01-15"), todo("13th 18:00 older", "2025-03-13", 1080, {}, 10),
        todo("07th 09:58", "2025-03-07", 598), todo("backlog done b", {}, {}, earlierToday, 50),
        todo("backlog middle", {}, 540, {}, 20), todo("backlog oldest", {}, {}, {}, 90),
        todo("backlog done a", {}, {}, at("2025-03-06 07:00"), 0),
        todo("backlog newest", {}, {}, {}, 0), todo("backlog twin", {}, {}, {}, 20),
        todo("hidden: backlog done yesterday", {}, {}, at("2025-03-05 18:00")),
    };
    // clang-format on
    const TodaySections today = todaySections(todos, now, berlin);
    EXPECT_EQ(titles(today.overdue),
              (Titles{"overdue last year 09:58", "overdue 03-05 08:00", "overdue 03-05 untimed"}));
    EXPECT_EQ(titles(today.timed),
              (Titles{"timed 00:00", "timed 09:55", "timed 09:56", "timed 10:00", "timed 17:00 old",
                      "timed 17:00 new", "timed 17:00 twin a", "timed 17:00 twin b"}));
    // Due for the five minutes from its time on; the next one is the first not yet past.
    EXPECT_EQ(titles(dueNow(todos, now, berlin)), (Titles{"timed 09:56", "timed 10:00"}));
    EXPECT_EQ(nextTimed(todos, now, berlin)->title, "timed 10:00");
    EXPECT_FALSE(nextTimed(todos, at("2025-03-06 17:01"), berlin));
    EXPECT_EQ(titles(today.anytime), (Titles{"anytime old", "anytime new"}));
    // The completion time plays no part.
    EXPECT_EQ(titles(today.done),
              (Titles{"done overdue at midnight", "done today last month", "done today untimed"}));
    EXPECT_EQ(progress(todos, now, berlin), (DayProgress{3, 16})) << "today's sections only";
    EXPECT_EQ(progress({}, now, berlin), (DayProgress{0, 0}));

    const auto groups = upcoming(todos, now, berlin);
    ASSERT_EQ(groups.size(), 3u);
    EXPECT_EQ(groups[0].id(), "2025-03-07");
    EXPECT_EQ(titles(groups[0].items), (Titles{"07th 09:58", "07th done"}));
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

} // namespace
} // namespace kelo
