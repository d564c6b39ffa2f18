#include "day.h"
#include "testing.h"

#include <gtest/gtest.h>

namespace kelo {
namespace {

using testing::calendar;
using testing::utc;
using testing::wallTime;

TEST(DayKey, OneMomentFallsOnDifferentDaysInDifferentZones) {
    struct Case {
        const char* zone;
        const char* instant;
        const char* key;
    };
    const Case cases[] = {
        {"UTC", "2025-03-06T10:00:00Z", "2025-03-06"},
        {"Pacific/Kiritimati", "2025-03-06T10:00:00Z", "2025-03-07"}, // +14:00
        {"Pacific/Kiritimati", "2025-03-06T09:59:59Z", "2025-03-06"},
        {"Pacific/Pago_Pago", "2025-03-06T10:00:00Z", "2025-03-05"}, // -11:00
        {"Asia/Kolkata", "2025-03-06T18:29:59Z", "2025-03-06"},      // +05:30
        {"Asia/Kolkata", "2025-03-06T18:30:00Z", "2025-03-07"},
        {"Asia/Kathmandu", "2025-03-06T18:14:59Z", "2025-03-06"}, // +05:45
        {"Asia/Kathmandu", "2025-03-06T18:15:00Z", "2025-03-07"},
        {"America/New_York", "2025-03-07T04:59:59Z", "2025-03-06"},
        {"America/New_York", "2025-03-07T05:00:00Z", "2025-03-07"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Day::key(utc(c.instant), calendar(c.zone)), c.key) << c.zone << " " << c.instant;
    }
}

TEST(DayKey, LastAndFirstSecondOfADayGiveConsecutiveKeys) {
    const Calendar berlin = calendar("Europe/Berlin");
    const Timestamp midnight = wallTime(berlin, "2025-03-07 00:00");
    EXPECT_EQ(Day::key(midnight - std::chrono::seconds(1), berlin), "2025-03-06");
    EXPECT_EQ(Day::key(midnight, berlin), "2025-03-07");
}

TEST(DayKey, YearsBelowOneThousandArePaddedToFourDigits) {
    const Calendar berlin = calendar("Europe/Berlin");
    EXPECT_EQ(Day::key(CivilDay{999, 3, 5}), "0999-03-05");
    EXPECT_EQ(Day::key(CivilDay{45, 12, 31}), "0045-12-31");
    EXPECT_EQ(Day::key(berlin.at(CivilDay{999, 3, 5}, 12, 0), berlin), "0999-03-05");
    EXPECT_EQ(Day::adding(1, "0999-12-31"), "1000-01-01");
    // Keys of the same width compare as dates.
    EXPECT_LT(Day::key(CivilDay{999, 12, 31}), Day::key(CivilDay{1000, 1, 1}));
}

TEST(DayDate, ReadsThreeNumbersAndNothingElse) {
    const Calendar berlin = calendar("Europe/Berlin");
    const Timestamp start = wallTime(berlin, "2025-03-07 00:00");
    struct Case {
        const char* key;
        bool readable;
    };
    const Case cases[] = {
        {"2025-03-07", true},
        {"2025-3-7", true},
        {"--2025--03--07--", true},
        {"2025-x-03-07", true},
        {"", false},
        {"2025-03", false},
        {"2025-03-07-01", false},
        {"2025-03-07x", false},
        {"today", false},
    };
    for (const Case& c : cases) {
        const auto date = Day::date(c.key, berlin);
        ASSERT_EQ(date.has_value(), c.readable) << c.key;
        if (c.readable) {
            EXPECT_EQ(*date, start) << c.key;
        }
    }
}

// Zones that moved their clocks at midnight: the day's start is its first existing moment, and
// days are 23 or 25 hours long around the change.
TEST(DayDate, DaylightSavingChangeAtMidnight) {
    const Calendar saoPaulo = calendar("America/Sao_Paulo");
    // 2018-11-04 00:00 was skipped: the day began at 01:00 (-02:00).
    const auto springStart = Day::date("2018-11-04", saoPaulo);
    ASSERT_TRUE(springStart);
    EXPECT_EQ(*springStart, utc("2018-11-04T03:00:00Z"));
    EXPECT_EQ(Day::key(*springStart, saoPaulo), "2018-11-04");
    EXPECT_EQ(Day::minuteOf(*springStart, saoPaulo), 60);
    EXPECT_EQ(Day::key(*springStart - std::chrono::seconds(1), saoPaulo), "2018-11-03");
    EXPECT_EQ(*Day::date("2018-11-05", saoPaulo) - *springStart, std::chrono::hours(23));

    // 2019-02-17 00:00 (-02:00) turned back to 23:00 (-03:00) of the 16th: a 25-hour day.
    const auto longDay = Day::date("2019-02-16", saoPaulo);
    ASSERT_TRUE(longDay);
    EXPECT_EQ(*Day::date("2019-02-17", saoPaulo) - *longDay, std::chrono::hours(25));
    EXPECT_EQ(Day::adding(1, "2019-02-16"), "2019-02-17");

    const Calendar havana = calendar("America/Havana");
    const auto havanaStart = Day::date("2025-03-09", havana);
    ASSERT_TRUE(havanaStart);
    EXPECT_EQ(Day::key(*havanaStart, havana), "2025-03-09");
    EXPECT_EQ(Day::key(*havanaStart - std::chrono::milliseconds(1), havana), "2025-03-08");
}

TEST(DayMinute, CountsWallClockMinutesAndIgnoresSeconds) {
    const Calendar kolkata = calendar("Asia/Kolkata");
    EXPECT_EQ(Day::minuteOf(utc("2025-03-06T03:45:59Z"), kolkata), 9 * 60 + 15);
    EXPECT_EQ(Day::minuteOf(utc("2025-03-06T18:29:59Z"), kolkata), 1439);
    EXPECT_EQ(Day::minuteOf(utc("2025-03-06T18:30:00Z"), kolkata), 0);
}

TEST(DayArithmetic, AddingCrossesMonthsYearsAndLeapDays) {
    struct Case {
        std::int64_t days;
        const char* from;
        const char* to;
    };
    const Case cases[] = {
        {1, "2025-03-06", "2025-03-07"},   {-6, "2025-03-06", "2025-02-28"},
        {1, "2024-02-28", "2024-02-29"},   {1, "2025-02-28", "2025-03-01"},
        {1, "2025-12-31", "2026-01-01"},   {-1, "2025-01-01", "2024-12-31"},
        {365, "2025-03-06", "2026-03-06"}, {0, "2025-3-6", "2025-03-06"},
        {1, "not a key", "not a key"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Day::adding(c.days, c.from), c.to) << c.from << " + " << c.days;
    }
}

TEST(DayArithmetic, NextWeekdayIsStrictlyAfterAndWeekendIncludesSaturday) {
    const Calendar berlin = calendar("Europe/Berlin");
    struct Case {
        const char* now;
        int weekday;
        const char* next;
    };
    // 2025-03-06 is a Thursday.
    const Case cases[] = {
        {"2025-03-06 10:00", 6, "2025-03-07"}, {"2025-03-06 10:00", 5, "2025-03-13"},
        {"2025-03-06 10:00", 2, "2025-03-10"}, {"2025-03-06 00:00", 1, "2025-03-09"},
        {"2025-03-06 23:59", 7, "2025-03-08"}, {"2025-12-31 12:00", 5, "2026-01-01"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Day::next(c.weekday, wallTime(berlin, c.now), berlin), c.next)
            << c.now << " weekday " << c.weekday;
    }
    EXPECT_EQ(Day::weekendAfter(wallTime(berlin, "2025-03-08 10:00"), berlin), "2025-03-08");
    EXPECT_EQ(Day::weekendAfter(wallTime(berlin, "2025-03-09 10:00"), berlin), "2025-03-15");
    EXPECT_EQ(Day::weekendAfter(wallTime(berlin, "2025-03-07 23:59"), berlin), "2025-03-08");
}

TEST(CivilDay, SerialRoundTripsAcrossErasAndKnowsWeekdays) {
    for (std::int64_t serial = -800'000; serial <= 800'000; serial += 997) {
        EXPECT_EQ(CivilDay::fromSerial(serial).serial(), serial);
    }
    EXPECT_EQ((CivilDay{1970, 1, 1}.weekday()), 5);   // Thursday
    EXPECT_EQ((CivilDay{2000, 2, 29}.weekday()), 3);  // Tuesday
    EXPECT_EQ((CivilDay{1969, 12, 28}.weekday()), 1); // Sunday
    // Overflowing months and days roll over as a lenient calendar does.
    EXPECT_EQ(CivilDay::fromSerial(CivilDay{2025, 2, 30}.serial()), (CivilDay{2025, 3, 2}));
    EXPECT_EQ(CivilDay::fromSerial(CivilDay{2025, 13, 1}.serial()), (CivilDay{2026, 1, 1}));
}

TEST(Calendar, RefusesUnknownZonesAndKeepsItsZoneWhenCopied) {
    EXPECT_FALSE(Calendar::make("Mars/Olympus_Mons", "en_US"));
    const auto tokyo = Calendar::make("Asia/Tokyo", "ja_JP");
    ASSERT_TRUE(tokyo);
    Calendar copy = calendar("UTC");
    copy = *tokyo;
    EXPECT_EQ(copy.zoneId(), "Asia/Tokyo");
    EXPECT_EQ(Day::key(utc("2025-03-06T15:00:00Z"), copy), "2025-03-07");
}

} // namespace
} // namespace kelo
