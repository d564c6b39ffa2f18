#include "quick_parse.h"

#include "quick_parse_words.h"

#include <algorithm>
#include <cstdio>
#include <span>
#include <unicode/uchar.h>
#include <unicode/utf8.h>
#include <utility>

namespace kelo {

namespace {

using QuickParseWords::Kind;
using QuickParseWords::Line;
using QuickParseWords::Word;

// "Today" for one call: computed at most once, and only when a rule needs it, because most reads
// of a long line fail at their first word.
class Today {
public:
    Today(Timestamp now, const Calendar& calendar)
        : now_(now)
        , calendar_(calendar) {}

    [[nodiscard]] Timestamp now() const { return now_; }
    [[nodiscard]] const Calendar& calendar() const { return calendar_; }
    [[nodiscard]] const CivilDay& day() {
        if (!day_) {
            day_ = calendar_.local(now_).day;
        }
        return *day_;
    }

private:
    Timestamp now_;
    const Calendar& calendar_;
    std::optional<CivilDay> day_;
};

// The coming day with this month and day of month, today included. A day that does not exist in
// this year's calendar (30 February) is none, even if next year has it (29 February).
std::optional<DayKey> monthDay(int month, std::int64_t dayOfMonth, const CivilDay& today) {
    if (dayOfMonth < 1 || dayOfMonth > 31) {
        return std::nullopt;
    }
    const DayKey todayKey = Day::key(today);
    for (const std::int64_t year : {today.year, today.year + 1}) {
        const CivilDay wanted{year, month, static_cast<int>(dayOfMonth)};
        if (CivilDay::fromSerial(wanted.serial()) != wanted) {
            return std::nullopt;
        }
        DayKey key = Day::key(wanted);
        if (key >= todayKey) {
            return key;
        }
    }
    return std::nullopt;
}

bool isJunk(UChar32 c) {
    return c == '\t' || c == ',' || c == ';' || c == ':' || c == '-' || c == 0x2013 ||
           c == 0x2014 || (c >= 0 && u_charType(c) == U_SPACE_SEPARATOR);
}

// The code point that ends the text and where it begins; an ill-formed last byte counts alone.
std::pair<UChar32, std::size_t> lastCodePoint(std::string_view text) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    std::size_t start = text.size() - 1;
    while (start > 0 && text.size() - start < U8_MAX_LENGTH && U8_IS_TRAIL(bytes[start])) {
        --start;
    }
    std::size_t end = start;
    UChar32 c = 0;
    U8_NEXT(bytes, end, text.size(), c);
    return end == text.size() ? std::pair(c, start) : std::pair(U_SENTINEL, text.size() - 1);
}

std::string_view trimJunk(std::string_view text) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    std::size_t begin = 0;
    while (begin < text.size()) {
        std::size_t next = begin;
        UChar32 c = 0;
        U8_NEXT(bytes, next, text.size(), c);
        if (!isJunk(c)) {
            break;
        }
        begin = next;
    }
    text.remove_prefix(begin);
    while (!text.empty()) {
        const auto [c, start] = lastCodePoint(text);
        if (!isJunk(c)) {
            break;
        }
        text = text.substr(0, start);
    }
    return text;
}

std::string joined(std::span<const Word> words) {
    std::string text;
    for (const Word& word : words) {
        if (!text.empty()) {
            text.push_back(' ');
        }
        text += word.typed;
    }
    return text;
}

// The state of one read, left to right.
struct Reading {
    std::optional<DayKey> day;
    std::optional<int> time;
    std::optional<int> part; // minute of the first day part ("morning")
    bool bare = false;       // the next word may be a lone hour ("at 3")

    // A phrase names at most one day and one time: "fri tomorrow" is no phrase.
    [[nodiscard]] std::optional<std::size_t> setDay(DayKey key, std::size_t consumed) {
        if (day) {
            return std::nullopt;
        }
        day = std::move(key);
        return consumed;
    }
    [[nodiscard]] std::optional<std::size_t> setTime(int minute, std::size_t consumed) {
        if (time) {
            return std::nullopt;
        }
        time = minute;
        return consumed;
    }
};

// "7" "am" read as one word.
std::optional<int> joinedTime(const Word& hour, const Word& suffix) {
    // Nothing longer than "@12:30" + "pm" is a time.
    char text[8];
    if (hour.text.size() + suffix.text.size() > sizeof text) {
        return std::nullopt;
    }
    std::ranges::copy(suffix.text, std::ranges::copy(hour.text, text).out);
    return QuickParseWords::time(std::string_view(text, hour.text.size() + suffix.text.size()),
                                 false);
}

// Applies the first rule that matches at w; the number of words it consumed, or none when the
// words do not read as a phrase.
std::optional<std::size_t> step(Reading& reading, const Word& w, const Word* x, const Word* y,
                                Today& today) {
    const auto xIs = [x](Kind kind) { return x != nullptr && x->is(kind); };
    const bool bare = std::exchange(reading.bare, false);
    const auto dayIn = [&today](std::int64_t days) { return Day::key(today.day().adding(days)); };

    switch (w.entry != nullptr ? w.entry->kind : Kind::word) {
    case Kind::today:
        return reading.setDay(dayIn(0), 1);
    case Kind::tonight:
        reading.part = reading.part.value_or(1200);
        return reading.setDay(dayIn(0), 1);
    case Kind::tomorrow:
        return reading.setDay(dayIn(1), 1);
    case Kind::weekend:
        return reading.setDay(Day::weekendAfter(today.now(), today.calendar()), 1);
    case Kind::next:
        if (xIs(Kind::week)) {
            // The coming Monday (weekday 2), a week ahead on a Monday.
            const int delta = (9 - today.day().weekday()) % 7;
            return reading.setDay(dayIn(delta == 0 ? 7 : delta), 2);
        }
        return xIs(Kind::weekday) ? std::optional<std::size_t>(1) : std::nullopt;
    case Kind::in:
        if (x != nullptr && x->number && *x->number >= 1 && *x->number <= 999 && y != nullptr &&
            (y->is(Kind::unit) || y->is(Kind::week))) {
            return reading.setDay(dayIn(*x->number * y->entry->value), 3);
        }
        break;
    case Kind::at:
        // "at 3" allows a lone hour in the next word.
        reading.bare = xIs(Kind::dayPart) || (x != nullptr && x->bareTime);
        return reading.bare ? std::optional<std::size_t>(1) : std::nullopt;
    case Kind::this_:
        return xIs(Kind::dayPart) || xIs(Kind::weekday) || xIs(Kind::weekend)
                   ? std::optional<std::size_t>(1)
                   : std::nullopt;
    case Kind::on:
        return xIs(Kind::weekday) || xIs(Kind::month) || (x != nullptr && x->number)
                   ? std::optional<std::size_t>(1)
                   : std::nullopt;
    case Kind::by:
        return x != nullptr ? std::optional<std::size_t>(1) : std::nullopt;
    default:
        break;
    }

    if (const auto weekday = w.value(Kind::weekday)) {
        return reading.setDay(Day::next(*weekday, today.now(), today.calendar()), 1);
    }
    const auto month = w.value(Kind::month);
    if (month && x != nullptr && x->number) {
        auto day = monthDay(*month, *x->number, today.day());
        return day ? reading.setDay(std::move(*day), 2) : std::nullopt;
    }
    if (w.number && xIs(Kind::month)) {
        auto day = monthDay(x->entry->value, *w.number, today.day());
        return day ? reading.setDay(std::move(*day), 2) : std::nullopt;
    }
    if (xIs(Kind::am) || xIs(Kind::pm)) {
        if (const auto minute = joinedTime(w, *x)) {
            return reading.setTime(*minute, 2);
        }
    }
    if (const auto part = w.value(Kind::dayPart)) {
        // "at noon 1pm": the permission for a lone hour survives a day part.
        reading.bare = bare;
        reading.part = reading.part.value_or(*part);
        return 1;
    }
    if (const auto minute = bare ? w.bareTime : w.time) {
        return reading.setTime(*minute, 1);
    }
    return std::nullopt;
}

std::optional<Schedule> read(std::span<const Word> words, Today& today) {
    Reading reading;
    for (std::size_t at = 0; at < words.size();) {
        const Word* x = at + 1 < words.size() ? &words[at + 1] : nullptr;
        const Word* y = at + 2 < words.size() ? &words[at + 2] : nullptr;
        const auto consumed = step(reading, words[at], x, y, today);
        if (!consumed) {
            return std::nullopt;
        }
        at += *consumed;
    }
    if (!reading.day && !reading.time && !reading.part) {
        return std::nullopt;
    }
    const auto minute = reading.time ? reading.time : reading.part;
    return Schedule{std::move(reading.day),
                    minute ? std::optional<std::int64_t>(*minute) : std::nullopt};
}

} // namespace

namespace QuickParse {

Parsed parse(std::string_view text, Timestamp now, const Calendar& calendar) {
    const Line line(text);
    const std::span<const Word> words = line.words();
    Today today(now, calendar);
    // The smallest k leaves the longest phrase: "buy milk tomorrow tomorrow" keeps one in the
    // title.
    for (std::size_t k = 1; k < words.size(); ++k) {
        auto phrase = read(words.subspan(k), today);
        if (!phrase) {
            continue;
        }
        const std::string title = joined(words.first(k));
        const std::string_view trimmed = trimJunk(title);
        if (!trimmed.empty()) {
            return Parsed{std::move(*phrase), std::string(trimmed)};
        }
    }
    return Parsed{{}, joined(words)};
}

Parsed plan(std::string_view text, Bucket bucket, Timestamp now, const Calendar& calendar) {
    Parsed parsed = parse(text, now, calendar);
    // An undated line in Backlog stays there, unless its time asks for today.
    if (!parsed.day && !(bucket == Bucket::backlog && !parsed.minute)) {
        const CivilDay today = calendar.local(now).day;
        parsed.day = Day::key(bucket == Bucket::upcoming ? today.adding(1) : today);
    }
    return parsed;
}

std::optional<Schedule> when(std::string_view text, Timestamp now, const Calendar& calendar) {
    const Line line(text);
    Today today(now, calendar);
    return read(line.words(), today);
}

std::string phrase(const std::optional<DayKey>& day, const std::optional<std::int64_t>& minute,
                   Timestamp now, const Calendar& calendar) {
    using QuickParseWords::monthNames;
    using QuickParseWords::weekdayNames;
    std::string text;
    if (const auto start = day ? Day::date(*day, calendar) : std::nullopt) {
        const CivilDay shown = calendar.local(*start).day;
        const std::int64_t ahead = shown.serial() - calendar.local(now).day.serial();
        if (ahead == 0) {
            text = "today";
        } else if (ahead == 1) {
            text = "tomorrow";
        } else if (ahead >= 2 && ahead <= 6) {
            // Within a week a weekday name reads back as this very day.
            text = weekdayNames[static_cast<std::size_t>(shown.weekday() - 1)];
        } else {
            text = std::string(monthNames[static_cast<std::size_t>(shown.month - 1)]) + ' ' +
                   std::to_string(shown.day);
        }
    }
    if (minute) {
        const std::int64_t hour = *minute / 60 % 12;
        const std::int64_t rest = *minute % 60;
        const char* suffix = *minute < 720 ? "am" : "pm";
        char time[48];
        const int length =
            rest != 0 ? std::snprintf(time, sizeof time, "%lld:%02lld%s",
                                      static_cast<long long>(hour == 0 ? 12 : hour),
                                      static_cast<long long>(rest), suffix)
                      : std::snprintf(time, sizeof time, "%lld%s",
                                      static_cast<long long>(hour == 0 ? 12 : hour), suffix);
        if (!text.empty()) {
            text.push_back(' ');
        }
        text.append(time, static_cast<std::size_t>(length));
    }
    return text;
}

} // namespace QuickParse
} // namespace kelo
