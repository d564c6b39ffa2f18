#include "format.h"
#include "testing.h"

#include <gtest/gtest.h>

namespace kelo {
namespace {

using testing::wallTime;

// ICU 72 writes a narrow no-break space before the English day period.
#define NNBSP "\u202f"

TEST(Format, TimeInTheLocalesPreferredHourCycle) {
    struct Case {
        const char* locale;
        std::int64_t minute;
        const char* full;
        const char* compact;
    };
    const Case cases[] = {
        {"en_US", 1020, "5:00" NNBSP "PM", "5:00"},
        {"en_US", 0, "12:00" NNBSP "AM", "12:00"},
        {"en_US", 750, "12:30" NNBSP "PM", "12:30"},
        {"en_US", 1439, "11:59" NNBSP "PM", "11:59"},
        // Beyond the day the time rolls over as the calendar would roll it.
        {"en_US", 1500, "1:00" NNBSP "AM", "1:00"},
        {"en_US", -1, "11:59" NNBSP "PM", "11:59"},
        {"de_DE", 1020, "17:00", "17:00"},
        {"de_DE", 5, "00:05", "00:05"},
        {"ja_JP", 1020, "17:00", "17:00"},
        {"ja_JP", 0, "0:00", "0:00"},
        // Korean puts the day period first.
        {"ko_KR", 1020, "오후 5:00", "5:00"},
    };
    for (const Case& c : cases) {
        const Calendar calendar = testing::calendar("Europe/Berlin", c.locale);
        EXPECT_EQ(Format::time(c.minute, false, calendar), c.full) << c.locale << " " << c.minute;
        EXPECT_EQ(Format::time(c.minute, true, calendar), c.compact) << c.locale << " " << c.minute;
    }
}

TEST(Format, DayLabelsRelativeToToday) {
    struct Case {
        const char* locale;
        const char* today;
        const char* key;
        const char* expected;
    };
    const Case cases[] = {
        {"en_US", "2025-03-06 10:00", "2025-03-06", "Today"},
        {"en_US", "2025-03-06 10:00", "2025-03-07", "Tomorrow"},
        {"en_US", "2025-03-06 10:00", "2025-03-05", "Yesterday"},
        {"en_US", "2025-03-06 10:00", "2025-03-08", "Saturday"},
        {"en_US", "2025-03-06 10:00", "2025-03-10", "Monday"},
        {"en_US", "2025-03-06 10:00", "2025-03-12", "Wednesday"},
        {"en_US", "2025-03-06 10:00", "2025-03-13", "Thu, Mar 13"},
        {"en_US", "2025-03-06 10:00", "2025-03-14", "Fri, Mar 14"},
        {"en_US", "2025-03-06 10:00", "2025-03-01", "Sat, Mar 1"},
        {"en_US", "2025-03-06 10:00", "2025-03-04", "Tue, Mar 4"},
        {"en_US", "2025-03-06 10:00", "2026-01-15", "Jan 15, 2026"},
        {"en_US", "2025-03-06 10:00", "2024-12-31", "Dec 31, 2024"},
        // Loosely written keys still name their day.
        {"en_US", "2025-03-06 10:00", "2025-3-14", "Fri, Mar 14"},
        // Not day keys: returned as they are.
        {"en_US", "2025-03-06 10:00", "", ""},
        {"en_US", "2025-03-06 10:00", "someday", "someday"},
        {"en_US", "2025-03-06 10:00", "2025-03", "2025-03"},
        {"en_US", "2025-03-06 10:00", "2025-03-07-01", "2025-03-07-01"},
        // Across the turn of the year the weekday still wins within the week ahead.
        {"en_US", "2025-12-30 10:00", "2026-01-02", "Friday"},
        {"en_US", "2025-12-30 10:00", "2026-01-06", "Jan 6, 2026"},
        {"en_US", "2025-12-31 23:59", "2026-01-01", "Tomorrow"},
        {"en_US", "2026-01-01 00:00", "2026-01-01", "Today"},
        // Long ago the days stay Gregorian: Kelo's day arithmetic never switches to Julian.
        {"en_US", "2025-03-06 10:00", "1582-10-10", "Oct 10, 1582"},
        {"en_US", "2025-03-06 10:00", "0999-03-05", "Mar 5, 0999"},
        {"de_DE", "2025-03-06 10:00", "2025-03-07", "Tomorrow"},
        {"de_DE", "2025-03-06 10:00", "2025-03-10", "Montag"},
        {"de_DE", "2025-03-06 10:00", "2025-03-13", "Do., 13. März"},
        {"de_DE", "2025-03-06 10:00", "2026-01-15", "15. Jan. 2026"},
        {"ja_JP", "2025-03-06 10:00", "2025-03-10", "月曜日"},
        {"ja_JP", "2025-03-06 10:00", "2025-03-13", "3月13日(木)"},
        {"ja_JP", "2025-03-06 10:00", "2026-01-15", "2026年1月15日"},
    };
    for (const Case& c : cases) {
        const Calendar calendar = testing::calendar("Europe/Berlin", c.locale);
        EXPECT_EQ(Format::day(c.key, wallTime(calendar, c.today), calendar), c.expected)
            << c.locale << " today " << c.today << " key " << c.key;
    }
}

// Far from UTC the start of a day is a different UTC day; the label must still name the key's day.
TEST(Format, DayIsFormattedInTheCalendarsZone) {
    for (const char* zone : {"Pacific/Kiritimati", "Pacific/Pago_Pago", "America/Sao_Paulo"}) {
        const Calendar calendar = testing::calendar(zone);
        const Timestamp now = wallTime(calendar, "2025-03-06 23:30");
        EXPECT_EQ(Format::day("2025-03-13", now, calendar), "Thu, Mar 13") << zone;
        EXPECT_EQ(Format::day("2025-03-09", now, calendar), "Sunday") << zone;
    }
}

TEST(Format, WhenJoinsDayAndTime) {
    struct Case {
        std::optional<DayKey> day;
        std::optional<std::int64_t> minute;
        const char* expected;
    };
    const Case cases[] = {
        {"2025-03-06", 1020, "Today · 5:00" NNBSP "PM"},
        {"2025-03-10", 540, "Monday · 9:00" NNBSP "AM"},
        {"2025-03-07", {}, "Tomorrow"},
        {"2026-01-15", 0, "Jan 15, 2026 · 12:00" NNBSP "AM"},
        {{}, 900, "Backlog"},
        {{}, {}, "Backlog"},
    };
    const Calendar calendar = testing::calendar("Europe/Berlin");
    const Timestamp now = wallTime(calendar, "2025-03-06 10:00");
    for (const Case& c : cases) {
        EXPECT_EQ(Format::when(c.day, c.minute, now, calendar), c.expected) << c.expected;
    }
    const Calendar german = testing::calendar("Europe/Berlin", "de_DE");
    EXPECT_EQ(Format::when("2025-03-10", 1020, now, german), "Montag · 17:00");
}

} // namespace
} // namespace kelo
