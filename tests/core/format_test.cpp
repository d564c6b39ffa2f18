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
        {"en_US", 1439, "11:59" NNBSP "PM", "11:59"},
        // Beyond the day the time rolls over as the calendar would roll it.
        {"en_US", 1500, "1:00" NNBSP "AM", "1:00"},
        {"en_US", -1, "11:59" NNBSP "PM", "11:59"},
        {"de_DE", 1020, "17:00", "17:00"},
        {"de_DE", 5, "00:05", "00:05"},
        {"ja_JP", 1020, "17:00", "17:00"},
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
        {"en_US", "2025-03-06 10:00", "2025-03-10", "Monday"},
        {"en_US", "2025-03-06 10:00", "2025-03-12", "Wednesday"},
        {"en_US", "2025-03-06 10:00", "2025-03-13", "Thu, Mar 13"},
        {"en_US", "2025-03-06 10:00", "2025-03-04", "Tue, Mar 4"},
        {"en_US", "2025-03-06 10:00", "2026-01-15", "Jan 15, 2026"},
        {"en_US", "2025-03-06 10:00", "2024-12-31", "Dec 31, 2024"},
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
        // Long ago the days stay Gregorian.
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
    for (const auto& [locale, now, key, label] : cases) {
        const Calendar cal = calendar("Europe/Berlin", locale);
        EXPECT_EQ(Format::day(key, wallTime(cal, now), cal), label)
            << locale << " " << now << " " << key;
    }
    // Far from UTC a day starts on another UTC day; the label still names the key's day.
    for (const char* zone : {"Pacific/Kiritimati", "Pacific/Pago_Pago", "America/Sao_Paulo"}) {
        const Calendar cal = calendar(zone);
        const Timestamp now = wallTime(cal, "2025-03-06 23:30");
        EXPECT_EQ(Format::day("2025-03-13", now, cal), "Thu, Mar 13") << zone;
        EXPECT_EQ(Format::day("2025-03-09", now, cal), "Sunday") << zone;
    }
}

TEST(Format, WhenJoinsDayAndTime) {
    const std::tuple<std::optional<DayKey>, std::optional<std::int64_t>, const char*> cases[] = {
        {"2025-03-06", 1020, "Today · 5:00" NNBSP "PM"},
        {"2025-03-10", 540, "Monday · 9:00" NNBSP "AM"},
        {"2025-03-07", {}, "Tomorrow"},
        {"2026-01-15", 0, "Jan 15, 2026 · 12:00" NNBSP "AM"},
        {{}, 900, "Backlog"},
        {{}, {}, "Backlog"},
    };
    const Calendar cal = calendar("Europe/Berlin");
    const Timestamp now = wallTime(cal, "2025-03-06 10:00");
    for (const auto& [day, minute, expected] : cases) {
        EXPECT_EQ(Format::when(day, minute, now, cal), expected) << expected;
    }
    EXPECT_EQ(Format::when("2025-03-10", 1020, now, calendar("Europe/Berlin", "de_DE")),
              "Montag · 17:00");
}

} // namespace
} // namespace kelo
