#include "day.h"
#include "format.h"
#include "testing.h"

namespace kelo {
namespace {

using testing::calendar;
using testing::utc;
using testing::wallTime;

TEST(DayKey, OneMomentFallsOnDifferentDaysAndMinutesInDifferentZones) {
    const std::tuple<const char*, const char*, const char*, std::int64_t> cases[] = {
        // zone, instant, day key, minute of the day (seconds ignored)
        {"Pacific/Kiritimati", "2025-03-06T10:00:00Z", "2025-03-07", 0}, // +14:00
        {"Pacific/Kiritimati", "2025-03-06T09:59:59Z", "2025-03-06", 1439},
        {"Pacific/Pago_Pago", "2025-03-06T10:00:00Z", "2025-03-05", 1380}, // -11:00
        {"Asia/Kathmandu", "2025-03-06T03:45:59Z", "2025-03-06", 570},     // +05:45
        {"Asia/Kathmandu", "2025-03-06T18:15:00Z", "2025-03-07", 0},
    };
    for (const auto& [zone, instant, key, minute] : cases) {
        EXPECT_EQ(Day::key(utc(instant), calendar(zone)), key) << zone << " " << instant;
        EXPECT_EQ(Day::minuteOf(utc(instant), calendar(zone)), minute) << zone << " " << instant;
    }
    // Years below 1000 are padded to four digits, and a copied calendar keeps its zone.
    Calendar copy = calendar("UTC");
    const Calendar berlin = calendar("Europe/Berlin");
    copy = berlin;
    EXPECT_EQ(Day::key(berlin.at(CivilDay{999, 3, 5}, 0, 0), copy), "0999-03-05");
}

TEST(DayDate, ReadsThreeNumbersAndStartsAtTheFirstMomentOfTheDay) {
    const Calendar berlin = calendar("Europe/Berlin");
    for (const char* key : {"2025-03-07", "2025-3-7", "--2025--03--07--", "2025-x-03-07"}) {
        EXPECT_EQ(Day::date(key, berlin), wallTime(berlin, "2025-03-07 00:00")) << key;
    }
    for (const char* key : {"", "2025-03", "2025-03-07-01", "2025-03-07x", "today"}) {
        EXPECT_FALSE(Day::date(key, berlin)) << key;
    }
    // Zones that moved their clocks at midnight: a day starts at its first existing moment, and
    // days are 23 or 25 hours long around the change.
    const Calendar saoPaulo = calendar("America/Sao_Paulo");
    // 2018-11-04 00:00 was skipped: the day began at 01:00 (-02:00).
    const Timestamp start = Day::date("2018-11-04", saoPaulo).value();
    EXPECT_EQ(start, utc("2018-11-04T03:00:00Z"));
    EXPECT_EQ(Day::minuteOf(start, saoPaulo), 60);
    EXPECT_EQ(Day::key(start - std::chrono::seconds(1), saoPaulo), "2018-11-03");
    EXPECT_EQ(*Day::date("2018-11-05", saoPaulo) - start, std::chrono::hours(23));
    // 2019-02-17 00:00 (-02:00) turned back to 23:00 (-03:00) of the 16th.
    EXPECT_EQ(*Day::date("2019-02-17", saoPaulo) - *Day::date("2019-02-16", saoPaulo),
              std::chrono::hours(25));
}

// The coming weekday and weekend are read in quick_parse_test.
TEST(CivilDay, AddingDaysAndSerialsAcrossErasAndWeekdays) {
    const std::tuple<std::int64_t, const char*, const char*> added[] = {
        {-6, "2025-03-06", "2025-02-28"}, {1, "2024-02-28", "2024-02-29"},
        {1, "2025-02-28", "2025-03-01"},  {-1, "2025-01-01", "2024-12-31"},
        {0, "2025-3-6", "2025-03-06"},    {1, "not a key", "not a key"},
    };
    for (const auto& [days, from, to] : added) {
        EXPECT_EQ(Day::adding(days, from), to) << from << " + " << days;
    }
    for (std::int64_t serial = -800'000; serial <= 800'000; serial += 997) {
        EXPECT_EQ(CivilDay::fromSerial(serial).serial(), serial);
    }
    EXPECT_EQ((CivilDay{1969, 12, 28}.weekday()), 1) << "a Sunday before 1970";
    // Overflowing months and days roll over as a lenient calendar does.
    EXPECT_EQ(CivilDay::fromSerial(CivilDay{2025, 2, 30}.serial()), (CivilDay{2025, 3, 2}));
    EXPECT_EQ(CivilDay::fromSerial(CivilDay{2025, 13, 1}.serial()), (CivilDay{2026, 1, 1}));
}

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

TEST(Format, DayLabelsRelativeToTodayAndWhen) {
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
    const Timestamp now = wallTime(cal, "2025-03-06 10:00");
    EXPECT_EQ(Format::when("2025-03-10", 540, now, cal), "Monday · 9:00" NNBSP "AM");
    EXPECT_EQ(Format::when("2025-03-07", {}, now, cal), "Tomorrow");
    EXPECT_EQ(Format::when({}, 900, now, cal), "Backlog");
}

} // namespace
} // namespace kelo
