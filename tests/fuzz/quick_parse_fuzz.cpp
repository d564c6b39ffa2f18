#include "quick_parse.h"

#include <cstdint>
#include <cstdlib>

namespace {

using namespace kelo;

// New York changes its clocks twice a year, so that days of 23 and 25 hours come up.
const Calendar& newYork() {
    static const Calendar calendar = *Calendar::make("America/New_York", "en_US");
    return calendar;
}

// The canonical phrase reads back as the same day and time. It names days by weekday within a
// week and by month and day within a year; 29 February of a coming year has no such name.
void expectPhraseReadsBack(const Schedule& read, Timestamp now, const Calendar& calendar) {
    if (read.day) {
        const CivilDay today = calendar.local(now).day;
        const auto day = Day::civil(*read.day);
        const std::int64_t ahead = day ? day->serial() - today.serial() : -1;
        if (ahead < 0 || ahead >= 365 ||
            (day->month == 2 && day->day == 29 && day->year != today.year)) {
            return;
        }
    }
    const std::string text = QuickParse::phrase(read.day, read.minute, now, calendar);
    if (QuickParse::when(text, now, calendar) != read ||
        static_cast<const Schedule&>(QuickParse::parse("x " + text, now, calendar)) != read) {
        std::abort();
    }
}

} // namespace

// The first two bytes choose the moment (a day within about two years of 2025-03-06 and a time
// of that day); the rest is the line typed.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) {
        return 0;
    }
    const Calendar& calendar = newYork();
    const Timestamp now =
        calendar.at(CivilDay{2025, 3, 6}.adding(data[0] * 3), data[1] % 24, data[1] / 24 * 6);
    const std::string_view line(reinterpret_cast<const char*>(data) + 2, size - 2);
    const Parsed parsed = QuickParse::parse(line, now, calendar);
    if (parsed.day || parsed.minute) {
        expectPhraseReadsBack(parsed, now, calendar);
    }
    if (const auto when = QuickParse::when(line, now, calendar)) {
        expectPhraseReadsBack(*when, now, calendar);
    }
    static_cast<void>(QuickParse::plan(line, Bucket::upcoming, now, calendar));
    return 0;
}
