#include "quick_parse.h"
#include "testing.h"

#include <gtest/gtest.h>
#include <ostream>
#include <random>

namespace kelo {

void PrintTo(const Parsed& parsed, std::ostream* out) {
    *out << '"' << parsed.title << "\" " << parsed.day.value_or("-") << ' '
         << (parsed.minute ? std::to_string(*parsed.minute) : "-");
}

void PrintTo(const When& when, std::ostream* out) {
    *out << when.day.value_or("-") << ' ' << (when.minute ? std::to_string(*when.minute) : "-");
}

namespace {

using testing::calendar;
using testing::wallTime;

struct Row {
    const char* text;
    const char* title;
    std::optional<DayKey> day;
    std::optional<std::int64_t> minute;
};

// Thursday 2025-03-06 10:00; New York changes to summer time on Sunday 2025-03-09.
class QuickParseTest : public ::testing::Test {
protected:
    Calendar cal = calendar("America/New_York");
    Timestamp now = wallTime(cal, "2025-03-06 10:00");

    void expectParses(const std::vector<Row>& rows, Timestamp at) const {
        for (const Row& row : rows) {
            EXPECT_EQ(QuickParse::parse(row.text, at, cal),
                      (Parsed{row.title, row.day, row.minute}))
                << row.text;
        }
    }
};

TEST_F(QuickParseTest, CutsTheTrailingPhraseOffTheTitle) {
    expectParses(
        {
            {"dentist fri 3pm", "dentist", "2025-03-07", 900},
            {"taxes apr 30", "taxes", "2025-04-30", {}},
            {"taxes 30 apr", "taxes", "2025-04-30", {}},
            {"taxes jan 15", "taxes", "2026-01-15", {}},
            {"ship on 5th mar", "ship", "2026-03-05", {}},
            {"pay rent in 3 days", "pay rent", "2025-03-09", {}},
            {"review in 2 weeks", "review", "2025-03-20", {}},
            {"call mom tomorrow morning", "call mom", "2025-03-07", 540},
            {"dinner tonight", "dinner", "2025-03-06", 1200},
            {"dinner tonight 7pm", "dinner", "2025-03-06", 1140},
            {"gym 7 am", "gym", {}, 420},
            {"meeting at 3", "meeting", {}, 900},
            {"meeting at 7", "meeting", {}, 420},
            {"meeting 3", "meeting 3", {}, {}},
            {"standup @9:30", "standup", {}, 570},
            {"call 3:30", "call", {}, 930},
            {"sync 15:45", "sync", {}, 945},
            {"lunch noon", "lunch", {}, 720},
            {"party this weekend", "party", "2025-03-08", {}},
            {"plan next week", "plan", "2025-03-10", {}},
            {"meet thu", "meet", "2025-03-13", {}},
            {"meet next thu", "meet", "2025-03-13", {}},
            {"report by fri.", "report", "2025-03-07", {}},
            {"call bob, fri", "call bob", "2025-03-07", {}},
            {"fri 3pm", "fri", {}, 900},
            {"tomorrow", "tomorrow", {}, {}},
            {"buy milk tomorrow tomorrow", "buy milk tomorrow", "2025-03-07", {}},
            {"x feb 29", "x feb 29", {}, {}},
            {"x 12am", "x", {}, 0},
            {"x 12:30am", "x", {}, 30},
            {"x 13pm", "x 13pm", {}, {}},
            {"x in 0 days", "x in 0 days", {}, {}},
            // Junk between title and phrase, and a title that is nothing but junk.
            {"call bob \u2013 fri", "call bob", "2025-03-07", {}},
            {"call bob:\u2014 fri", "call bob", "2025-03-07", {}},
            {"- fri", "- fri", {}, {}},
            {"  spaced   out  ", "spaced out", {}, {}},
            {"", "", {}, {}},
            // A phrase that does not read to its end stays in the title.
            {"x in 1000 days", "x in 1000 days", {}, {}},
            {"x at fri", "x at", "2025-03-07", {}},
            {"x fri at", "x fri at", {}, {}},
            {"x next", "x next", {}, {}},
            {"x 24:00", "x 24:00", {}, {}},
            {"x 9:60", "x 9:60", {}, {}},
            {"x 123pm", "x 123pm", {}, {}},
        },
        now);
}

TEST_F(QuickParseTest, ReadsUnicodeWhiteSpaceAndCase) {
    expectParses(
        {
            {"Dentist\u00A0FRI 3PM", "Dentist", "2025-03-07", 900},
            {"dentist\u3000fri\u30003pm", "dentist", "2025-03-07", 900},
            {"dentist\tfri\n3pm\r\n", "dentist", "2025-03-07", 900},
            {"Call Mom TOMORROW", "Call Mom", "2025-03-07", {}},
            {"Café Crème Fri", "Café Crème", "2025-03-07", {}},
            // KELVIN SIGN lower-cases to an ASCII "k": "WKS" is the unit "wks".
            {"review in 2 W\u212AS", "review", "2025-03-20", {}},
            // Full-width letters stay full-width, so they are no weekday.
            {"x \uFF46\uFF52\uFF49", "x \uFF46\uFF52\uFF49", {}, {}},
            // Digits are ASCII only.
            {"x \u0663pm", "x \u0663pm", {}, {}},
        },
        now);
}

TEST_F(QuickParseTest, MonthDayIsTheComingOneAroundTheYearEnd) {
    const Timestamp newYearsEve = wallTime(cal, "2025-12-31 10:00");
    expectParses({{"x dec 31", "x", "2025-12-31", {}},
                  {"x jan 1", "x", "2026-01-01", {}},
                  {"x dec 30", "x", "2026-12-30", {}}},
                 newYearsEve);
    expectParses({{"x feb 29", "x", "2028-02-29", {}}}, wallTime(cal, "2028-01-20 10:00"));
    // The date must exist in this year: next year's 29 February does not count.
    expectParses({{"x feb 29", "x feb 29", {}, {}}}, wallTime(cal, "2027-03-01 10:00"));
    expectParses({{"x feb 29", "x feb 29", {}, {}}}, wallTime(cal, "2028-03-01 10:00"));
}

TEST_F(QuickParseTest, PlansTheDefaultDayOfTheTab) {
    struct Case {
        const char* text;
        Bucket bucket;
        std::optional<DayKey> day;
        std::optional<std::int64_t> minute;
    };
    const Case cases[] = {
        {"milk", Bucket::today, "2025-03-06", {}},
        {"milk", Bucket::upcoming, "2025-03-07", {}},
        {"milk", Bucket::backlog, {}, {}},
        {"milk 5pm", Bucket::backlog, "2025-03-06", 1020},
        {"milk 5pm", Bucket::upcoming, "2025-03-07", 1020},
        {"milk 8am", Bucket::today, "2025-03-06", 480}, // already past: no roll-over
        {"milk fri", Bucket::today, "2025-03-07", {}},
        {"milk fri", Bucket::upcoming, "2025-03-07", {}},
        {"milk fri", Bucket::backlog, "2025-03-07", {}},
    };
    for (const Case& c : cases) {
        const Parsed planned = QuickParse::plan(c.text, c.bucket, now, cal);
        EXPECT_EQ(planned.day, c.day) << c.text << " in tab " << static_cast<int>(c.bucket);
        EXPECT_EQ(planned.minute, c.minute) << c.text;
    }
}

TEST_F(QuickParseTest, ReadsReschedulingPhrases) {
    const std::pair<const char*, std::optional<When>> cases[] = {
        {"Tomorrow 3PM", When{"2025-03-07", 900}},
        {"3pm", When{{}, 900}},
        {"dentist", std::nullopt},
        {"", std::nullopt},
        {" \t ", std::nullopt},
        {"fri tomorrow", std::nullopt},
        {"3pm 4pm", std::nullopt},
        {"morning evening", When{{}, 540}},
        {"tonight morning", When{"2025-03-06", 1200}},
        {"morning tonight", When{"2025-03-06", 540}},
        {"at noon 1pm", When{{}, 780}},
        {"today", When{"2025-03-06", {}}},
        {"weekend", When{"2025-03-08", {}}},
        {"next mon", When{"2025-03-10", {}}},
        {"this fri evening", When{"2025-03-07", 1080}},
        {"due tmrw 5p", When{"2025-03-07", 1020}},
        {"in 1 d", When{"2025-03-07", {}}},
        {"in 999 days", When{"2027-11-30", {}}},
        {"on the 5th", std::nullopt},
        {"mar 6", When{"2025-03-06", {}}},
        {"mar 1", When{"2026-03-01", {}}},
        {"+3rd mar", When{"2026-03-03", {}}},
        {"31 apr", std::nullopt},
        {"at 12", When{{}, 720}},
        {"at 6", When{{}, 1080}},
        {"at 13", std::nullopt},
        {"@ 0", std::nullopt},
        {"@3", When{{}, 900}},
        {"0:15", When{{}, 15}},
        {"7:30", When{{}, 450}},
        {"11a", When{{}, 660}},
        {"12pm", When{{}, 720}},
        {"by", std::nullopt},
        {"3", std::nullopt},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(QuickParse::when(text, now, cal), expected) << text;
    }
}

TEST_F(QuickParseTest, WeekdaysAndWeekendsCountFromTodaysWeekday) {
    const Timestamp saturday = wallTime(cal, "2025-03-08 10:00");
    const Timestamp monday = wallTime(cal, "2025-03-10 10:00");
    EXPECT_EQ(QuickParse::when("weekend", saturday, cal), (When{"2025-03-08", {}}));
    EXPECT_EQ(QuickParse::when("sat", saturday, cal), (When{"2025-03-15", {}}));
    EXPECT_EQ(QuickParse::when("next week", monday, cal), (When{"2025-03-17", {}}));
    EXPECT_EQ(QuickParse::when("thu", now, cal), (When{"2025-03-13", {}}));
}

TEST_F(QuickParseTest, TodayIsTheCalendarsDay) {
    // 22:00 on Thursday in New York is already 04:00 on Friday in Berlin.
    const Timestamp late = wallTime(cal, "2025-03-06 22:00");
    EXPECT_EQ(QuickParse::when("tomorrow", late, cal), (When{"2025-03-07", {}}));
    EXPECT_EQ(QuickParse::when("tomorrow", late, calendar("Europe/Berlin")),
              (When{"2025-03-08", {}}));
}

TEST_F(QuickParseTest, WritesCanonicalPhrases) {
    const std::tuple<std::optional<DayKey>, std::optional<std::int64_t>, const char*> cases[] = {
        {"2025-03-06", {}, "today"},
        {"2025-03-07", 900, "tomorrow 3pm"},
        {"2025-03-08", 570, "saturday 9:30am"},
        {"2025-03-12", {}, "wednesday"},
        {"2025-03-13", {}, "mar 13"},
        {"2025-03-01", {}, "mar 1"},
        {"2026-03-06", {}, "mar 6"},
        {{}, 1020, "5pm"},
        {{}, 0, "12am"},
        {{}, 750, "12:30pm"},
        {{}, 1439, "11:59pm"},
        {{}, 65, "1:05am"},
        {{}, {}, ""},
        {"not a day", 60, "1am"},
    };
    for (const auto& [day, minute, expected] : cases) {
        EXPECT_EQ(QuickParse::phrase(day, minute, now, cal), expected) << expected;
    }
}

TEST_F(QuickParseTest, PhrasesReadBackForAYearAhead) {
    const std::optional<std::int64_t> minutes[] = {{}, 0, 1, 59, 420, 719, 720, 750, 1020, 1439};
    // The second year holds 29 February 2028, which `phrase` writes as "feb 29"; read in 2027,
    // that date does not exist, so it is left out.
    for (const Timestamp today : {now, wallTime(cal, "2027-06-15 23:30")}) {
        const CivilDay first = cal.local(today).day;
        for (int ahead = 0; ahead < 365; ++ahead) {
            const CivilDay day = first.adding(ahead);
            if (day.month == 2 && day.day == 29) {
                continue;
            }
            for (const auto& minute : minutes) {
                const std::string text = QuickParse::phrase(Day::key(day), minute, today, cal);
                EXPECT_EQ(QuickParse::when(text, today, cal), (When{Day::key(day), minute}))
                    << text;
            }
        }
    }
}

TEST_F(QuickParseTest, AnyBytesGiveATitle) {
    std::mt19937 random(20250306);
    std::uniform_int_distribution<int> length(0, 40);
    std::uniform_int_distribution<int> byte(0, 255);
    const DayKey tomorrow = "2025-03-07";
    for (int i = 0; i < 4000; ++i) {
        std::string noSpace;
        std::string any;
        for (int n = length(random); n > 0; --n) {
            const auto b = static_cast<unsigned char>(byte(random));
            any.push_back(static_cast<char>(b));
            // Without ASCII white space and the lead bytes of every other white space
            // (U+0085, U+00A0, U+1680, U+2000...U+205F, U+3000) the bytes form one word.
            if (b > 0x20 && b != 0xC2 && b != 0xE1 && b != 0xE2 && b != 0xE3) {
                noSpace.push_back(static_cast<char>(b));
            }
        }
        EXPECT_EQ(QuickParse::parse(noSpace, now, cal), (Parsed{noSpace, {}, {}}));
        // Whatever precedes it, a trailing "tomorrow" is read as the day.
        EXPECT_EQ(QuickParse::parse("a" + any + " tomorrow", now, cal).day, tomorrow);
        EXPECT_EQ(QuickParse::plan(noSpace, Bucket::upcoming, now, cal).day, tomorrow);
    }
}

} // namespace
} // namespace kelo
