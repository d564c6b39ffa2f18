#include "lists.h"
#include "testing.h"

#include <gtest/gtest.h>

namespace kelo {
namespace {

using std::chrono::minutes;
using testing::utc;
using testing::wallTime;

const Calendar& berlin() {
    static const Calendar calendar = testing::calendar("Europe/Berlin");
    return calendar;
}

// Thursday 2025-03-06, 10:00 in Berlin.
Timestamp reference() {
    return wallTime(berlin(), "2025-03-06 10:00");
}

// Tasks are told apart by title; `age` orders creation (a larger age is created earlier).
Todo task(std::string title, std::optional<DayKey> day, std::optional<std::int64_t> minute = {},
          std::optional<Timestamp> doneAt = {}, int age = 0) {
    Todo todo;
    todo.id = Uuid::random();
    todo.title = std::move(title);
    todo.day = std::move(day);
    todo.minute = minute;
    todo.doneAt = doneAt;
    todo.created = utc("2025-03-01T12:00:00Z") - minutes(age);
    return todo;
}

std::vector<std::string> titles(const std::vector<Todo>& todos) {
    std::vector<std::string> result;
    for (const Todo& todo : todos) {
        result.push_back(todo.title);
    }
    return result;
}

// Every list a task shows up in, by name.
std::vector<std::string> placesOf(const Todo& todo, Timestamp now, const Calendar& calendar) {
    const std::vector<Todo> todos{todo};
    const TodaySections today = todaySections(todos, now, calendar);
    std::vector<std::string> places;
    const auto note = [&](const std::vector<Todo>& list, const char* name) {
        if (!list.empty()) {
            places.emplace_back(name);
        }
    };
    note(today.overdue, "overdue");
    note(today.timed, "timed");
    note(today.anytime, "anytime");
    note(today.done, "done");
    for (const DayGroup& group : upcoming(todos, now, calendar)) {
        note(group.items, "upcoming");
    }
    note(backlog(todos, now, calendar), "backlog");
    return places;
}

TEST(Lists, EachTaskShowsInOneListOrNowhere) {
    const Timestamp earlierToday = wallTime(berlin(), "2025-03-06 08:00");
    const Timestamp yesterday = wallTime(berlin(), "2025-03-05 18:00");
    const Timestamp lastMonth = wallTime(berlin(), "2025-02-01 09:00");
    struct Case {
        const char* what;
        std::optional<DayKey> day;
        std::optional<std::int64_t> minute;
        std::optional<Timestamp> doneAt;
        const char* place; // empty: in no list
    };
    const Case cases[] = {
        {"open, yesterday", "2025-03-05", {}, {}, "overdue"},
        {"open, last year, timed", "2024-12-31", 540, {}, "overdue"},
        {"yesterday, done yesterday", "2025-03-05", {}, yesterday, ""},
        {"yesterday, done today", "2025-03-05", {}, earlierToday, "done"},
        {"last month, done just after midnight",
         "2025-02-01",
         {},
         wallTime(berlin(), "2025-03-06 00:00"),
         "done"},
        {"last month, done just before midnight",
         "2025-02-01",
         {},
         wallTime(berlin(), "2025-03-05 23:59"),
         ""},
        {"today, timed", "2025-03-06", 1020, {}, "timed"},
        {"today, timed earlier than now", "2025-03-06", 0, {}, "timed"},
        {"today, untimed", "2025-03-06", {}, {}, "anytime"},
        {"today, done last month", "2025-03-06", 600, lastMonth, "done"},
        {"tomorrow", "2025-03-07", {}, {}, "upcoming"},
        {"next week, done", "2025-03-13", 540, earlierToday, "upcoming"},
        {"next week, done last month", "2025-03-13", {}, lastMonth, "upcoming"},
        {"undated", {}, {}, {}, "backlog"},
        {"undated with a stray minute", {}, 540, {}, "backlog"},
        {"undated, done today", {}, {}, earlierToday, "backlog"},
        {"undated, done yesterday", {}, {}, yesterday, ""},
    };
    for (const Case& c : cases) {
        const auto places =
            placesOf(task(c.what, c.day, c.minute, c.doneAt), reference(), berlin());
        const std::vector<std::string> expected =
            *c.place ? std::vector<std::string>{c.place} : std::vector<std::string>{};
        EXPECT_EQ(places, expected) << c.what;
    }
}

TEST(Lists, TodaySectionsKeepTheOneOrderAndStoredOrderOnTies) {
    const Timestamp earlierToday = wallTime(berlin(), "2025-03-06 08:00");
    // Stored order deliberately scrambled; `age` makes "old" tasks older.
    const std::vector<Todo> todos{
        task("timed 17:00 new", "2025-03-06", 1020),
        task("anytime new", "2025-03-06"),
        task("overdue 03-05 untimed", "2025-03-05"),
        task("timed 09:00", "2025-03-06", 540),
        task("timed 17:00 old", "2025-03-06", 1020, {}, 30),
        task("anytime old", "2025-03-06", {}, {}, 30),
        task("overdue 03-05 08:00", "2025-03-05", 480),
        task("overdue 03-01", "2025-03-01", 1200),
        task("timed 17:00 twin a", "2025-03-06", 1020, {}, -5),
        task("timed 17:00 twin b", "2025-03-06", 1020, {}, -5),
        task("done today untimed", "2025-03-06", {}, earlierToday),
        task("done today 12:00", "2025-03-06", 720, wallTime(berlin(), "2025-03-06 00:01")),
        task("done overdue 03-02", "2025-03-02", {}, wallTime(berlin(), "2025-03-06 09:59")),
    };
    const TodaySections sections = todaySections(todos, reference(), berlin());
    EXPECT_EQ(titles(sections.overdue),
              (std::vector<std::string>{"overdue 03-01", "overdue 03-05 08:00",
                                        "overdue 03-05 untimed"}));
    EXPECT_EQ(titles(sections.timed),
              (std::vector<std::string>{"timed 09:00", "timed 17:00 old", "timed 17:00 new",
                                        "timed 17:00 twin a", "timed 17:00 twin b"}));
    EXPECT_EQ(titles(sections.anytime), (std::vector<std::string>{"anytime old", "anytime new"}));
    // The completion time plays no part.
    EXPECT_EQ(
        titles(sections.done),
        (std::vector<std::string>{"done overdue 03-02", "done today 12:00", "done today untimed"}));
    EXPECT_FALSE(sections.isEmpty());
    EXPECT_TRUE(todaySections({}, reference(), berlin()).isEmpty());
}

TEST(Lists, UpcomingGroupsByDayWithDoneTasksLastInTheirDay) {
    const Timestamp earlierToday = wallTime(berlin(), "2025-03-06 08:00");
    const std::vector<Todo> todos{
        task("13th done", "2025-03-13", 540, earlierToday),
        task("13th untimed", "2025-03-13"),
        task("07th 15:00", "2025-03-07", 900),
        task("13th 18:00", "2025-03-13", 1080),
        task("today", "2025-03-06"),
        task("07th done", "2025-03-07", {}, earlierToday),
        task("next year", "2026-01-15"),
        task("13th 18:00 older", "2025-03-13", 1080, {}, 10),
        task("07th 09:00", "2025-03-07", 540),
        task("undated", {}),
    };
    const auto groups = upcoming(todos, reference(), berlin());
    ASSERT_EQ(groups.size(), 3u);
    EXPECT_EQ(groups[0].id(), "2025-03-07");
    EXPECT_EQ(titles(groups[0].items),
              (std::vector<std::string>{"07th 09:00", "07th 15:00", "07th done"}));
    EXPECT_EQ(groups[1].day, "2025-03-13");
    EXPECT_EQ(titles(groups[1].items), (std::vector<std::string>{"13th 18:00 older", "13th 18:00",
                                                                 "13th untimed", "13th done"}));
    EXPECT_EQ(groups[2].day, "2026-01-15");
    EXPECT_EQ(titles(groups[2].items), (std::vector<std::string>{"next year"}));
}

TEST(Lists, BacklogListsOpenTasksNewestFirstThenTodaysDoneInStoredOrder) {
    const Timestamp earlierToday = wallTime(berlin(), "2025-03-06 08:00");
    const std::vector<Todo> todos{
        task("done b", {}, {}, earlierToday, 50),
        task("middle", {}, {}, {}, 20),
        task("oldest", {}, {}, {}, 90),
        task("dated", "2025-03-06"),
        task("done a", {}, {}, wallTime(berlin(), "2025-03-06 07:00"), 0),
        task("newest", {}, {}, {}, 0),
        task("twin 1", {}, {}, {}, 20),
        task("done long ago", {}, {}, utc("2025-01-01T00:00:00Z")),
    };
    EXPECT_EQ(
        titles(backlog(todos, reference(), berlin())),
        (std::vector<std::string>{"newest", "middle", "twin 1", "oldest", "done b", "done a"}));
}

TEST(Lists, ProgressCountsTodaysSectionsOnly) {
    const Timestamp earlierToday = wallTime(berlin(), "2025-03-06 08:00");
    const std::vector<Todo> todos{
        task("overdue", "2025-03-04"),
        task("timed", "2025-03-06", 900),
        task("done today", "2025-03-06", {}, earlierToday),
        task("undated", {}),
        task("undated done today", {}, {}, earlierToday),
        task("future", "2025-03-07"),
        task("future done", "2025-03-08", {}, earlierToday),
        task("old done", "2025-03-01", {}, utc("2025-03-02T10:00:00Z")),
    };
    EXPECT_EQ(progress(todos, reference(), berlin()), (DayProgress{1, 3}));
    EXPECT_EQ(progress({}, reference(), berlin()), (DayProgress{0, 0}));

    std::vector<Todo> reopened = todos;
    reopened[2].doneAt.reset();
    EXPECT_EQ(progress(reopened, reference(), berlin()), (DayProgress{0, 3}));
}

TEST(Lists, DueNowCoversFiveMinutesAndNextTimedSkipsWhatHasBegun) {
    const Timestamp earlierToday = wallTime(berlin(), "2025-03-06 08:00");
    const std::vector<Todo> todos{
        task("14:10", "2025-03-06", 850),
        task("14:00", "2025-03-06", 840),
        task("13:58", "2025-03-06", 838),
        task("14:03 done", "2025-03-06", 843, earlierToday),
        task("13:59", "2025-03-06", 839),
        task("14:03", "2025-03-06", 843),
        task("yesterday 14:01", "2025-03-05", 841),
        task("tomorrow 14:01", "2025-03-07", 841),
        task("untimed", "2025-03-06"),
    };
    struct Case {
        const char* now;
        std::vector<std::string> due;
        std::optional<std::string> next;
    };
    const Case cases[] = {
        {"2025-03-06 14:03", {"13:59", "14:00", "14:03"}, "14:03"},
        {"2025-03-06 14:04", {"14:00", "14:03"}, "14:10"},
        {"2025-03-06 13:57", {}, "13:58"},
        {"2025-03-06 14:14", {"14:10"}, std::nullopt},
        {"2025-03-06 14:15", {}, std::nullopt},
        {"2025-03-06 00:00", {}, "13:58"},
    };
    for (const Case& c : cases) {
        const Timestamp now = wallTime(berlin(), c.now);
        EXPECT_EQ(titles(dueNow(todos, now, berlin())), c.due) << c.now;
        const auto next = nextTimed(todos, now, berlin());
        EXPECT_EQ(next ? std::optional<std::string>(next->title) : std::nullopt, c.next) << c.now;
    }
}

// The same four tasks around the edges of days: when midnight passes, when a daylight-saving
// change skips or repeats an hour, and where a zone once started summer time at midnight, so that
// the day began at 01:00.
TEST(Lists, TodayFollowsTheWallClockAcrossMidnightAndDaylightSaving) {
    struct Case {
        const char* zone;
        const char* instant;
        const char* today;
        std::int64_t minute;
    };
    const Case cases[] = {
        {"Europe/Berlin", "2025-03-06T22:59:59Z", "2025-03-06", 1439},
        {"Europe/Berlin", "2025-03-06T23:00:00Z", "2025-03-07", 0},
        {"Europe/Berlin", "2025-03-06T23:02:00Z", "2025-03-07", 2},
        {"Europe/Berlin", "2025-03-30T00:59:00Z", "2025-03-30", 119},
        {"Europe/Berlin", "2025-03-30T01:01:00Z", "2025-03-30", 181},
        {"Europe/Berlin", "2025-10-26T00:30:00Z", "2025-10-26", 150},
        {"Europe/Berlin", "2025-10-26T01:30:00Z", "2025-10-26", 150},
        {"America/Sao_Paulo", "2018-11-04T02:59:00Z", "2018-11-03", 1439},
        {"America/Sao_Paulo", "2018-11-04T03:00:00Z", "2018-11-04", 60},
        {"America/Havana", "2025-03-09T05:00:00Z", "2025-03-09", 60},
        {"Pacific/Kiritimati", "2025-03-06T10:00:00Z", "2025-03-07", 0},
    };
    for (const Case& c : cases) {
        const Calendar calendar = testing::calendar(c.zone);
        const Timestamp now = utc(c.instant);
        const std::vector<Todo> todos{
            task("earlier in the window", c.today, std::max<std::int64_t>(c.minute - 4, 0)),
            task("due", c.today, c.minute),
            task("yesterday at the same minute", Day::adding(-1, c.today), c.minute),
            task("anytime", c.today),
            task("tomorrow", Day::adding(1, c.today)),
        };
        const std::string where = std::string(c.zone) + " " + c.instant;
        const TodaySections sections = todaySections(todos, now, calendar);
        EXPECT_EQ(titles(sections.overdue),
                  (std::vector<std::string>{"yesterday at the same minute"}))
            << where;
        EXPECT_EQ(titles(sections.anytime), (std::vector<std::string>{"anytime"})) << where;
        EXPECT_EQ(titles(dueNow(todos, now, calendar)),
                  (std::vector<std::string>{"earlier in the window", "due"}))
            << where;
        const auto groups = upcoming(todos, now, calendar);
        ASSERT_EQ(groups.size(), 1u) << where;
        EXPECT_EQ(titles(groups[0].items), (std::vector<std::string>{"tomorrow"})) << where;
    }
}

} // namespace
} // namespace kelo
