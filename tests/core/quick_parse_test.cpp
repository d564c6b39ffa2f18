#include "quick_parse.h"
#include "testing.h"

#include <gtest/gtest.h>
#include <ostream>

namespace kelo {

void PrintTo(const Parsed& parsed, std::ostream* out) {
    *out << '"' << parsed.title << "\" " << parsed.day.value_or("-") << ' '
         << (parsed.minute ? std::to_string(*parsed.minute) : "-");
}

void PrintTo(const Schedule& when, std::ostream* out) {
    *out << when.day.value_or("-") << ' ' << (when.minute ? std::to_string(*when.minute) : "-");
}

namespace {

using testing::calendar;
using testing::wallTime;

// Thursday 2025-03-06 10:00; New York changes to summer time on Sunday 2025-03-09.
const Calendar cal = calendar("America/New_York");
const Timestamp now = wallTime(cal, "2025-03-06 10:00");

TEST(QuickParse, CutsTheTrailingPhraseOffTheTitle) {
    using Day = std::optional<DayKey>;
    using Minute = std::optional<std::int64_t>;
    // text, then the title, day and minute it reads as
    const std::tuple<const char*, const char*, Day, Minute> cases[] = {
        {"dentist fri 3pm", "dentist", "2025-03-07", 900},
        {"taxes apr 30", "taxes", "2025-04-30", {}},
        {"taxes 30 apr", "taxes", "2025-04-30", {}},
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
        {"sync 15:45", "sync", {}, 945},
        {"lunch noon", "lunch", {}, 720},
        {"party this weekend", "party", "2025-03-08", {}},
        {"plan next week", "plan", "2025-03-10", {}},
        {"meet thu", "meet", "2025-03-13", {}},
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
        // Unicode white space and case.
        {"Dentist\u00A0FRI 3PM", "Dentist", "2025-03-07", 900},
        {"dentist\u3000fri\u30003pm", "dentist", "2025-03-07", 900},
        {"dentist\tfri\n3pm\r\n", "dentist", "2025-03-07", 900},
        {"Café Crème Fri", "Café Crème", "2025-03-07", {}},
        // KELVIN SIGN lower-cases to an ASCII "k": "WKS" is the unit "wks".
        {"review in 2 W\u212AS", "review", "2025-03-20", {}},
        // Full-width letters stay full-width, so they are no weekday.
        {"x \uFF46\uFF52\uFF49", "x \uFF46\uFF52\uFF49", {}, {}},
        // Digits are ASCII only.
        {"x \u0663pm", "x \u0663pm", {}, {}},
    };
    for (const auto& [text, title, day, minute] : cases) {
        EXPECT_EQ(QuickParse::parse(text, now, cal), (Parsed{{day, minute}, title})) << text;
    }
}

TEST(QuickParse, CountsFromTheDayOfNow) {
    const std::tuple<const char*, const char*, const char*, std::optional<DayKey>,
                     std::optional<std::int64_t>>
        cases[] = {
            // now, text, and the title, day and minute it reads as
            {"2025-12-31 10:00", "x dec 31", "x", "2025-12-31", {}},
            {"2025-12-31 10:00", "x jan 1", "x", "2026-01-01", {}},
            {"2025-12-31 10:00", "x dec 30", "x", "2026-12-30", {}},
            {"2028-01-20 10:00", "x feb 29", "x", "2028-02-29", {}},
            // The date must exist in the coming year: next year's 29 February does not count.
            {"2027-03-01 10:00", "x feb 29", "x feb 29", {}, {}},
            {"2028-03-01 10:00", "x feb 29", "x feb 29", {}, {}},
            {"2025-03-08 10:00", "x weekend", "x", "2025-03-08", {}},
            {"2025-03-08 10:00", "x sat", "x", "2025-03-15", {}},
            {"2025-03-10 10:00", "x next week", "x", "2025-03-17", {}},
            {"2025-03-06 22:00", "x tomorrow", "x", "2025-03-07", {}},
        };
    for (const auto& [at, text, title, day, minute] : cases) {
        EXPECT_EQ(QuickParse::parse(text, wallTime(cal, at), cal), (Parsed{{day, minute}, title}))
            << at << " " << text;
    }
    // 22:00 on Thursday in New York is already Friday in Berlin.
    const Calendar berlin = calendar("Europe/Berlin");
    EXPECT_EQ(QuickParse::when("tomorrow", wallTime(cal, "2025-03-06 22:00"), berlin),
              (Schedule{"2025-03-08", {}}));
}

TEST(QuickParse, PlansTheDefaultDayOfTheTab) {
    const std::tuple<const char*, Bucket, std::optional<DayKey>, std::optional<std::int64_t>>
        cases[] = {
            {"milk", Bucket::today, "2025-03-06", {}},
            {"milk", Bucket::upcoming, "2025-03-07", {}},
            {"milk", Bucket::backlog, {}, {}},
            {"milk 5pm", Bucket::backlog, "2025-03-06", 1020},
            {"milk 5pm", Bucket::upcoming, "2025-03-07", 1020},
            {"milk 8am", Bucket::today, "2025-03-06", 480}, // already past: no roll-over
            {"milk fri", Bucket::today, "2025-03-07", {}},
            {"milk fri", Bucket::backlog, "2025-03-07", {}},
        };
    for (const auto& [text, bucket, day, minute] : cases) {
        const Parsed planned = QuickParse::plan(text, bucket, now, cal);
        EXPECT_EQ(planned, (Parsed{{day, minute}, "milk"})) << text << " in tab " << int(bucket);
    }
}

TEST(QuickParse, ReadsReschedulingPhrases) {
    const std::pair<const char*, std::optional<Schedule>> cases[] = {
        {"Tomorrow 3PM", Schedule{"2025-03-07", 900}},
        {"3pm", Schedule{{}, 900}},
        {"dentist", std::nullopt},
        {"", std::nullopt},
        {"fri tomorrow", std::nullopt},
        {"3pm 4pm", std::nullopt},
        {"morning evening", Schedule{{}, 540}},
        {"tonight morning", Schedule{"2025-03-06", 1200}},
        {"morning tonight", Schedule{"2025-03-06", 540}},
        {"at noon 1pm", Schedule{{}, 780}},
        {"this fri evening", Schedule{"2025-03-07", 1080}},
        {"due tmrw 5p", Schedule{"2025-03-07", 1020}},
        {"in 1 d", Schedule{"2025-03-07", {}}},
        {"in 999 days", Schedule{"2027-11-30", {}}},
        {"on the 5th", std::nullopt},
        {"mar 6", Schedule{"2025-03-06", {}}},
        {"mar 1", Schedule{"2026-03-01", {}}},
        {"+3rd mar", Schedule{"2026-03-03", {}}},
        {"31 apr", std::nullopt},
        {"at 12", Schedule{{}, 720}},
        {"at 6", Schedule{{}, 1080}},
        {"at 13", std::nullopt},
        {"@ 0", std::nullopt},
        {"@3", Schedule{{}, 900}},
        {"0:15", Schedule{{}, 15}},
        {"7:30", Schedule{{}, 450}},
        {"11a", Schedule{{}, 660}},
        {"by", std::nullopt},
        {"3", std::nullopt},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(QuickParse::when(text, now, cal), expected) << text;
    }
}

TEST(QuickParse, WritesCanonicalPhrases) {
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

TEST(QuickParse, PhrasesReadBackForAYearAhead) {
    const std::optional<std::int64_t> minutes[] = {{}, 0, 1, 59, 420, 719, 720, 750, 1020, 1439};
    // The second year holds 29 February 2028, written "feb 29": read in 2027 it does not exist.
    for (const Timestamp today : {now, wallTime(cal, "2027-06-15 23:30")}) {
        for (int ahead = 0; ahead < 365; ++ahead) {
            const CivilDay day = cal.local(today).day.adding(ahead);
            for (const auto& minute : minutes) {
                const std::string text = QuickParse::phrase(Day::key(day), minute, today, cal);
                if (day.month != 2 || day.day != 29) {
                    EXPECT_EQ(QuickParse::when(text, today, cal), (Schedule{Day::key(day), minute}))
                        << text;
                }
            }
        }
    }
}

} // namespace
} // namespace kelo
