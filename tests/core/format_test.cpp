#include "format.h"
#include "testing.h"

namespace kelo {
namespace {

using testing::calendar;
using testing::wallTime;

// ICU 72 writes a narrow no-break space before the English day period.
#define NNBSP "\u202f"

TEST(Format, TimeInTheLocalesPreferredHourCycle) {
    // locale, minute, full, compact; beyond the day the time rolls over as the calendar would.
    // clang-format off
    const std::tuple<const char*, std::int64_t, const char*, const char*> cases[] = {
        {"en_US", 1020, "5:00" NNBSP "PM", "5:00"}, {"en_US", 0, "12:00" NNBSP "AM", "12:00"},
        {"en_US", -1, "11:59" NNBSP "PM", "11:59"}, {"de_DE", 5, "00:05", "00:05"},
        {"ko_KR", 1020, "오후 5:00", "5:00"}}; // the day period first
    // clang-format on
    for (const auto& [locale, minute, full, compact] : cases) {
        const Calendar cal = calendar("Europe/Berlin", locale);
        EXPECT_EQ(Format::time(minute, false, cal), full) << locale << " " << minute;
        EXPECT_EQ(Format::time(minute, true, cal), compact) << locale << " " << minute;
    }
}

TEST(Format, DayLabelsRelativeToToday) {
    const Calendar cal = calendar("Europe/Berlin");
    // On Thursday 2025-03-06; not day keys are shown as they are, and long ago the days stay
    // Gregorian.
    const char* const labels[][2] = {
        {"2025-03-06", "Today"},        {"2025-03-07", "Tomorrow"},
        {"2025-03-05", "Yesterday"},    {"2025-03-12", "Wednesday"},
        {"2025-03-13", "Thu, Mar 13"},  {"2025-03-04", "Tue, Mar 4"},
        {"2026-01-15", "Jan 15, 2026"}, {"2025-3-14", "Fri, Mar 14"},
        {"someday", "someday"},         {"2025-03-07-01", "2025-03-07-01"},
        {"0999-03-05", "Mar 5, 0999"},
    };
    for (const auto& [key, label] : labels) {
        EXPECT_EQ(Format::day(key, wallTime(cal, "2025-03-06 10:00"), cal), label) << key;
    }
    // Across the turn of the year the weekday still wins within the week ahead.
    EXPECT_EQ(Format::day("2026-01-02", wallTime(cal, "2025-12-30 10:00"), cal), "Friday");
    const Calendar german = calendar("Europe/Berlin", "de_DE");
    EXPECT_EQ(Format::day("2025-03-13", wallTime(german, "2025-03-06 10:00"), german),
              "Do., 13. März");
    const Calendar japanese = calendar("Europe/Berlin", "ja_JP");
    EXPECT_EQ(Format::day("2025-03-10", wallTime(japanese, "2025-03-06 10:00"), japanese),
              "月曜日");
}

TEST(Format, WhenJoinsDayAndTime) {
    const Calendar cal = calendar("Europe/Berlin");
    const Timestamp now = wallTime(cal, "2025-03-06 10:00");
    EXPECT_EQ(Format::when("2025-03-10", 540, now, cal), "Monday · 9:00" NNBSP "AM");
    EXPECT_EQ(Format::when("2025-03-07", {}, now, cal), "Tomorrow");
    EXPECT_EQ(Format::when({}, 900, now, cal), "Backlog");
}

} // namespace
} // namespace kelo
