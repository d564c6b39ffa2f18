#include "quick_parse.h"
#include "testing.h"

namespace kelo {
namespace {

using testing::calendar;
using testing::wallTime;

// Thursday 2025-03-06 10:00; New York changes to summer time on Sunday 2025-03-09.
const Calendar cal = calendar("America/New_York");
const Timestamp now = wallTime(cal, "2025-03-06 10:00");

// "title|day|minute", with nothing between the bars for an absent part.
std::string shown(const Parsed& read) {
    return read.title + '|' + read.day.value_or("") + '|' +
           (read.minute ? std::to_string(*read.minute) : "");
}

// A line is read from its end: the longest trailing phrase that reads as a day and a time is cut
// off the title, so the title shows how much of each line read as a phrase.
TEST(QuickParse, CutsTheTrailingPhraseOffTheTitle) {
    // clang-format off
    const char* const cases[][2] = {
        {"dentist fri 3pm", "dentist|2025-03-07|900"}, {"taxes apr 30", "taxes|2025-04-30|"},
        {"taxes 30 apr", "taxes|2025-04-30|"}, {"ship on 5th mar", "ship|2026-03-05|"},
        {"x +3rd mar", "x|2026-03-03|"}, {"x mar 6", "x|2025-03-06|"}, {"x 31 apr", "x 31 apr||"},
        {"pay rent in 3 days", "pay rent|2025-03-09|"}, {"x in 999 days", "x|2027-11-30|"},
        {"x in 1000 days", "x in 1000 days||"}, {"x in 0 days", "x in 0 days||"},
        {"call mom tomorrow morning", "call mom|2025-03-07|540"},
        {"dinner tonight 7pm", "dinner|2025-03-06|1140"},
        {"x tonight morning", "x|2025-03-06|1200"}, {"x morning evening", "x||540"},
        {"x at noon 1", "x||780"}, {"x this fri evening", "x|2025-03-07|1080"},
        // One day and one time at most.
        {"x fri tomorrow", "x fri|2025-03-07|"}, {"x 3pm 4pm", "x 3pm||960"},
        // A lone hour only after "at", and never in the small hours.
        {"gym 7 am", "gym||420"}, {"meeting at 3", "meeting||900"},
        {"meeting at 7", "meeting||420"}, {"x at 12", "x||720"}, {"x at 13", "x at 13||"},
        {"x @ 0", "x @ 0||"}, {"meeting 3", "meeting 3||"}, {"standup @9:30", "standup||570"},
        {"x 0:15", "x||15"}, {"sync 15:45", "sync||945"}, {"x 11a", "x||660"},
        {"lunch noon", "lunch||720"}, {"x 12am", "x||0"}, {"x 13pm", "x 13pm||"},
        {"x 24:00", "x 24:00||"}, {"party this weekend", "party|2025-03-08|"},
        {"plan next week", "plan|2025-03-10|"}, {"report by fri.", "report|2025-03-07|"},
        {"x at fri", "x at|2025-03-07|"}, {"fri 3pm", "fri||900"},
        {"buy milk tomorrow tomorrow", "buy milk tomorrow|2025-03-07|"},
        // Junk between title and phrase, and a title that is nothing but junk.
        {"call bob, fri", "call bob|2025-03-07|"}, {"call bob \u2013 fri", "call bob|2025-03-07|"},
        {"- fri", "- fri||"}, {"  spaced   out  ", "spaced out||"}, {"", "||"},
        // Unicode white space and case; KELVIN SIGN lower-cases to an ASCII "k".
        {"Dentist\u00A0FRI 3PM", "Dentist|2025-03-07|900"},
        {"dentist\tfri\n3pm\r\n", "dentist|2025-03-07|900"},
        {"review in 2 W\u212AS", "review|2025-03-20|"},
        // Full-width letters are no weekday, and digits are ASCII only.
        {"x \uFF46\uFF52\uFF49", "x \uFF46\uFF52\uFF49||"}, {"x \u0663pm", "x \u0663pm||"}};
    // clang-format on
    for (const auto& [text, read] : cases) {
        EXPECT_EQ(shown(QuickParse::parse(text, now, cal)), read) << text;
    }
    // A rescheduling phrase is read by the same rules, as a whole.
    EXPECT_EQ(QuickParse::when("Tomorrow 3PM", now, cal), (Schedule{"2025-03-07", 900}));
    EXPECT_EQ(QuickParse::when("dentist tomorrow", now, cal), std::nullopt);
}

TEST(QuickParse, CountsFromTheDayOfNow) {
    // now, text, and what it reads as. The date must exist in the coming year: next year's
    // 29 February does not count.
    const char* const cases[][3] = {{"2025-12-31 10:00", "x jan 1", "x|2026-01-01|"},
                                    {"2025-12-31 10:00", "x dec 30", "x|2026-12-30|"},
                                    {"2028-01-20 10:00", "x feb 29", "x|2028-02-29|"},
                                    {"2027-03-01 10:00", "x feb 29", "x feb 29||"},
                                    {"2025-03-08 10:00", "x weekend", "x|2025-03-08|"},
                                    {"2025-03-08 10:00", "x sat", "x|2025-03-15|"},
                                    {"2025-03-10 10:00", "x next week", "x|2025-03-17|"},
                                    {"2025-03-09 10:00", "x weekend", "x|2025-03-15|"},
                                    {"2025-03-07 23:59", "x weekend", "x|2025-03-08|"},
                                    {"2025-03-06 23:59", "x sat", "x|2025-03-08|"},
                                    {"2025-03-06 00:00", "x sun", "x|2025-03-09|"},
                                    {"2025-03-07 16:00", "x fri 3pm", "x|2025-03-14|900"},
                                    {"2025-12-31 12:00", "x thu", "x|2026-01-01|"}};
    for (const auto& [at, text, read] : cases) {
        EXPECT_EQ(shown(QuickParse::parse(text, wallTime(cal, at), cal)), read)
            << at << " " << text;
    }
    // 22:00 on Thursday in New York is already Friday in Berlin.
    EXPECT_EQ(
        QuickParse::when("tomorrow", wallTime(cal, "2025-03-06 22:00"), calendar("Europe/Berlin")),
        (Schedule{"2025-03-08", {}}));
}

TEST(QuickParse, PlansTheDefaultDayOfTheTab) {
    // clang-format off
    const std::tuple<const char*, Bucket, const char*> cases[] = {
        {"milk", Bucket::today, "milk|2025-03-06|"}, {"milk", Bucket::upcoming, "milk|2025-03-07|"},
        {"milk", Bucket::backlog, "milk||"}, {"milk 5pm", Bucket::backlog, "milk|2025-03-06|1020"},
        {"milk 5pm", Bucket::upcoming, "milk|2025-03-07|1020"},
        {"milk fri", Bucket::today, "milk|2025-03-07|"},
        {"milk 8am", Bucket::today, "milk|2025-03-06|480"}}; // already past: no roll-over
    // clang-format on
    for (const auto& [text, bucket, read] : cases) {
        EXPECT_EQ(shown(QuickParse::plan(text, bucket, now, cal)), read) << int(bucket);
    }
}

// That each phrase reads back as its day and time is checked by the quick_parse fuzz target.
TEST(QuickParse, WritesCanonicalPhrases) {
    // clang-format off
    const std::tuple<std::optional<DayKey>, std::optional<std::int64_t>, const char*> cases[] = {
        {"2025-03-06", {}, "today"}, {"2025-03-07", 900, "tomorrow 3pm"},
        {"2025-03-08", 570, "saturday 9:30am"}, {"2025-03-13", {}, "mar 13"},
        {"2026-03-06", {}, "mar 6"}, {{}, 1020, "5pm"}, {{}, 0, "12am"}, {{}, 720, "12pm"},
        {{}, 750, "12:30pm"}, {{}, 65, "1:05am"}, {{}, {}, ""}, {"not a day", 60, "1am"}};
    // clang-format on
    for (const auto& [day, minute, expected] : cases) {
        EXPECT_EQ(QuickParse::phrase(day, minute, now, cal), expected) << expected;
    }
}

} // namespace
} // namespace kelo
