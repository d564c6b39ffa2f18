#include "format.h"

#include <cstdio>
#include <map>
#include <memory>
#include <unicode/dtptngen.h>
#include <unicode/gregocal.h>
#include <unicode/smpdtfmt.h>
#include <unicode/uchar.h>

namespace kelo::Format {

namespace {

// ICU's earliest representable moment. A Gregorian change before it makes the formatter's
// calendar proleptic, so the day it prints for a moment is the day Calendar computed for it
// (Kelo's own day arithmetic never switches to the Julian calendar).
constexpr UDate earliestMoment = -184303902528000000.0;

// The pattern without its day-period fields. Quoted literal text is kept as it is: a letter "a"
// there is part of a word, not a field.
icu::UnicodeString withoutDayPeriod(const icu::UnicodeString& pattern) {
    icu::UnicodeString result;
    bool quoted = false;
    for (int32_t i = 0; i < pattern.length(); ++i) {
        const char16_t unit = pattern.charAt(i);
        if (unit == u'\'') {
            quoted = !quoted;
        }
        if (quoted || unit != u'a') {
            result.append(unit);
        }
    }
    // ICU's own trim() keeps no-break spaces, and English puts U+202F before the day period.
    int32_t start = 0;
    int32_t end = result.length();
    while (start < end && u_isUWhiteSpace(result.char32At(start))) {
        start = result.moveIndex32(start, 1);
    }
    while (end > start && u_isUWhiteSpace(result.char32At(result.moveIndex32(end, -1)))) {
        end = result.moveIndex32(end, -1);
    }
    return icu::UnicodeString(result, start, end - start);
}

// A fresh formatter for the locale's pattern of the skeleton ("j:mm", "EEEE", ...), in the
// calendar's zone and locale, without its day period when `compact`. None when ICU has no data to
// build it; every ICU status of this file is checked here.
std::unique_ptr<icu::SimpleDateFormat> makeFormatter(const Calendar& calendar, const char* skeleton,
                                                     bool compact) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::DateTimePatternGenerator> generator(
        icu::DateTimePatternGenerator::createInstance(calendar.locale(), status));
    if (U_FAILURE(status)) {
        return nullptr;
    }
    const icu::UnicodeString pattern =
        generator->getBestPattern(icu::UnicodeString(skeleton, -1, US_INV), status);
    auto gregorian =
        std::make_unique<icu::GregorianCalendar>(calendar.zone(), calendar.locale(), status);
    if (U_FAILURE(status)) {
        return nullptr;
    }
    gregorian->setGregorianChange(earliestMoment, status);
    auto format = std::make_unique<icu::SimpleDateFormat>(
        compact ? withoutDayPeriod(pattern) : pattern, calendar.locale(), status);
    if (U_FAILURE(status)) {
        return nullptr;
    }
    format->adoptCalendar(gregorian.release());
    return format;
}

// Building a formatter costs far more than using one (a pattern generator loads the locale's
// data), and a list relabels dozens of rows on every clock tick, so each thread keeps the
// formatters it built, one per zone, locale and skeleton. ICU formatters are not safe to share
// between threads.
const icu::SimpleDateFormat* formatter(const Calendar& calendar, const char* skeleton,
                                       bool compact = false) {
    thread_local std::map<std::string, std::unique_ptr<icu::SimpleDateFormat>> cache;
    std::string key = calendar.zoneId();
    key += '\n';
    key += calendar.locale().getName();
    key += '\n';
    key += skeleton;
    key += compact ? "\ncompact" : "";
    auto found = cache.find(key);
    if (found == cache.end()) {
        found = cache.emplace(std::move(key), makeFormatter(calendar, skeleton, compact)).first;
    }
    return found->second.get();
}

std::string render(const icu::SimpleDateFormat& format, Timestamp moment) {
    icu::UnicodeString text;
    format.format(static_cast<UDate>(moment.time_since_epoch().count()), text);
    std::string utf8;
    text.toUTF8String(utf8);
    return utf8;
}

// The wall-clock text without ICU, for a locale whose data cannot be loaded.
std::string plainTime(std::int64_t minuteOfDay) {
    char text[8];
    std::snprintf(text, sizeof text, "%02d:%02d", static_cast<int>(minuteOfDay / 60),
                  static_cast<int>(minuteOfDay % 60));
    return text;
}

} // namespace

std::string time(std::int64_t minute, bool compact, const Calendar& calendar) {
    // Only the time of day shows, so a minute outside the day wraps the way the calendar would
    // roll it over, without overflowing for absurd values.
    const std::int64_t minuteOfDay = (minute % 1440 + 1440) % 1440; // [0, 1439]
    const icu::SimpleDateFormat* format = formatter(calendar, "j:mm", compact);
    if (!format) {
        return plainTime(minuteOfDay);
    }
    const Timestamp moment = calendar.at(CivilDay{2001, 1, 1}, static_cast<int>(minuteOfDay / 60),
                                         static_cast<int>(minuteOfDay % 60));
    return render(*format, moment);
}

std::string day(std::string_view key, Timestamp now, const Calendar& calendar) {
    const DayKey today = Day::key(now, calendar);
    if (key == today) {
        return "Today";
    }
    if (key == Day::adding(1, today)) {
        return "Tomorrow";
    }
    if (key == Day::adding(-1, today)) {
        return "Yesterday";
    }
    const auto civil = Day::civil(key);
    if (!civil) {
        return std::string(key);
    }
    const std::int64_t ahead = civil->serial() - calendar.local(now).day.serial();
    const char* skeleton = ahead >= 2 && ahead <= 6                 ? "EEEE"
                           : key.substr(0, 4) == today.substr(0, 4) ? "EEEMMMd"
                                                                    : "MMMdyyyy";
    const icu::SimpleDateFormat* format = formatter(calendar, skeleton);
    if (!format) {
        return std::string(key);
    }
    return render(*format, calendar.at(*civil));
}

std::string date(Timestamp moment, const Calendar& calendar) {
    const icu::SimpleDateFormat* format = formatter(calendar, "EEEMMMd");
    return format ? render(*format, moment) : Day::key(moment, calendar);
}

std::string when(const std::optional<DayKey>& day, const std::optional<std::int64_t>& minute,
                 Timestamp now, const Calendar& calendar) {
    if (!day) {
        return "Backlog";
    }
    std::string text = Format::day(*day, now, calendar);
    if (minute) {
        text += " \u00b7 ";
        text += time(*minute, false, calendar);
    }
    return text;
}

} // namespace kelo::Format
