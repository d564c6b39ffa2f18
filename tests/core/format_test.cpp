#include "format.h"
#include "testing.h"

#include <gtest/gtest.h>

namespace kelo {
namespace {

using testing::calendar;
using testing::wallTime;

// ICU 72 writes a narrow no-break space before the English day period.
#define NNBSP "\u202f"

TEST(Format, TimeInTheLocalesPreferredHourCycle) {
    const std::tuple<const char*, std::int64_t, const char*, const char*> cases[] = {
        // locale, minute, full, compact
        {"en_US", 1020, "5:00" NNBSP "PM", "5:00"},
        {"en_US", 0, "12:00" NNBSP "AM", "12:00"},
        {"en_US", 750, "12:30" NNBSP "PM", "12:30"},
        // Beyond the day the time rolls over as the calendar would roll it.
        {"en_US", 1500, "1:00" NNBSP "AM", "1:00"},
        {"en_US", -1, "11:59" NNBSP "PM", "11:59"},
        {"de_DE", 5, "00:05", "00:05"},
        {"ja_JP", 0, "0:00", "0:00"},
        {"ko_KR", 1020, "오후 5:00", "5:00"}, // the day period first
    };
    for (const auto& [locale, minute, full, compact] : cases) {
        const Calendar cal = calendar("Europe/Berlin", locale);
        EXPECT_EQ(Format::time(minute, false, cal), full) << locale << " " << minute;
        EXPECT_EQ(Format::time(minute, true, cal), compact) << locale << " " << minute;
    }
}

TEST(Format, DayLabelsRelativeToToday) {
    const char* const cases[][4] = {
        // locale, now, key, label
        {"en_US", "2025-03-06 10:00", "2025-03-06", "Today"},
        {"en_US", "2025-03-06 10:00", "2025-03-07", "Tomorrow"},
        {"en_US", "2025-03-06 10:00", "2025-03-05", "Yesterday"},
        {"en_US", "2025-03-06 10:00", "2025-03-12", "Wednesday"},
        {"en_US", "2025-03-06 10:00", "2025-03-13", "Thu, Mar 13"},
        {"en_US", "2025-03-06 10:00", "2025-03-04", "Tue, Mar 4"},
        {"en_US", "2025-03-06 10:00", "2026-01-15", "Jan 15, 2026"},
        {"en_US", "2025-03-06 10:00", "2025-3-14", "Fri, Mar 14"},
        // Not day keys: returned as they are.
        {"en_US", "2025-03-06 10:00", "someday", "someday"},
        {"en_US", "2025-03-06 10:00", "2025-03-07-01", "2025-03-07-01"},
        // Across the turn of the year the weekday still wins within the week ahead.
        {"en_US", "2025-12-30 10:00", "2026-01-02", "Friday"},
        {"en_US", "2025-12-31 23:59", "2026-01-01", "Tomorrow"},
        // Long ago the days stay Gregorian.
        {"en_US", "2025-03-06 10:00", "1582-10-10", "Oct 10, 1582"},
        {"en_US", "2025-03-06 10:00", "0999-03-05", "Mar 5, 0999"},
        {"de_DE", "2025-03-06 10:00", "2025-03-07", "Tomorrow"},
        {"de_DE", "2025-03-06 10:00", "2025-03-13", "Do., 13. März"},
        {"ja_JP", "2025-03-06 10:00", "2025-03-10", "月曜日"},
        {"ja_JP", "2025-03-06 10:00", "2026-01-15", "2026年1月15日"},
    };
    for (const auto& [locale, now, key, label] : cases) {
        const Calendar cal = calendar("Europe/Berlin", locale);
        EXPECT_EQ(Format::day(key, wallTime(cal, now), cal), label)
            << locale << " " << now << " " << key;
    }
}

TEST(Format, WhenJoinsDayAndTime) {
    const Calendar cal = calendar("Europe/Berlin");
    const Timestamp now = wallTime(cal, "2025-03-06 10:00");
    EXPECT_EQ(Format::when("2025-03-10", 540, now, cal), "Monday · 9:00" NNBSP "AM");
    EXPECT_EQ(Format::when("2025-03-07", {}, now, cal), "Tomorrow");
    EXPECT_EQ(Format::when({}, 900, now, cal), "Backlog");
    EXPECT_EQ(Format::when("2025-03-10", 1020, now, calendar("Europe/Berlin", "de_DE")),
              "Montag · 17:00");
}

} // namespace
} // namespace kelo
