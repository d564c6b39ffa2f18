#include "day.h"
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
    // Years below 1000 are padded to four digits.
    const Calendar berlin = calendar("Europe/Berlin");
    EXPECT_EQ(Day::key(berlin.at(CivilDay{999, 3, 5}, 12, 0), berlin), "0999-03-05");
}

TEST(DayDate, ReadsThreeNumbersAndNothingElse) {
    const Calendar berlin = calendar("Europe/Berlin");
    for (const char* key : {"2025-03-07", "2025-3-7", "--2025--03--07--", "2025-x-03-07"}) {
        EXPECT_EQ(Day::date(key, berlin), wallTime(berlin, "2025-03-07 00:00")) << key;
    }
    for (const char* key : {"", "2025-03", "2025-03-07-01", "2025-03-07x", "today"}) {
        EXPECT_FALSE(Day::date(key, berlin)) << key;
    }
}

// Zones that moved their clocks at midnight: a day starts at its first existing moment, and days
// are 23 or 25 hours long around the change.
TEST(DayDate, DaylightSavingChangeAtMidnight) {
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

TEST(DayArithmetic, AddingNextWeekdayAndWeekend) {
    const std::tuple<std::int64_t, const char*, const char*> added[] = {
        {-6, "2025-03-06", "2025-02-28"}, {1, "2024-02-28", "2024-02-29"},
        {1, "2025-02-28", "2025-03-01"},  {-1, "2025-01-01", "2024-12-31"},
        {0, "2025-3-6", "2025-03-06"},    {1, "not a key", "not a key"},
    };
    for (const auto& [days, from, to] : added) {
        EXPECT_EQ(Day::adding(days, from), to) << from << " + " << days;
    }
    const Calendar berlin = calendar("Europe/Berlin");
    // 2025-03-06 is a Thursday; weekdays count from 1 = Sunday.
    const std::tuple<const char*, int, const char*> next[] = {
        {"2025-03-06 10:00", 6, "2025-03-07"}, {"2025-03-06 10:00", 5, "2025-03-13"},
        {"2025-03-06 00:00", 1, "2025-03-09"}, {"2025-03-06 23:59", 7, "2025-03-08"},
        {"2025-12-31 12:00", 5, "2026-01-01"},
    };
    for (const auto& [now, weekday, day] : next) {
        EXPECT_EQ(Day::next(weekday, wallTime(berlin, now), berlin), day) << now << " " << weekday;
    }
    const char* const weekends[][2] = {{"2025-03-08 10:00", "2025-03-08"},
                                       {"2025-03-09 10:00", "2025-03-15"},
                                       {"2025-03-07 23:59", "2025-03-08"}};
    for (const auto& [now, weekend] : weekends) {
        EXPECT_EQ(Day::weekendAfter(wallTime(berlin, now), berlin), weekend) << now;
    }
}

TEST(CivilDay, SerialRoundTripsAcrossErasAndKnowsWeekdays) {
    for (std::int64_t serial = -800'000; serial <= 800'000; serial += 997) {
        EXPECT_EQ(CivilDay::fromSerial(serial).serial(), serial);
    }
    EXPECT_EQ((CivilDay{1969, 12, 28}.weekday()), 1) << "a Sunday before 1970";
    // Overflowing months and days roll over as a lenient calendar does.
    EXPECT_EQ(CivilDay::fromSerial(CivilDay{2025, 2, 30}.serial()), (CivilDay{2025, 3, 2}));
    EXPECT_EQ(CivilDay::fromSerial(CivilDay{2025, 13, 1}.serial()), (CivilDay{2026, 1, 1}));
}

TEST(Calendar, KeepsItsZoneWhenCopied) {
    Calendar copy = calendar("UTC");
    const Calendar tokyo = calendar("Asia/Tokyo", "ja_JP");
    copy = tokyo;
    EXPECT_EQ(copy.zoneId(), "Asia/Tokyo");
    EXPECT_EQ(Day::key(utc("2025-03-06T15:00:00Z"), copy), "2025-03-07");
}

} // namespace
} // namespace kelo
