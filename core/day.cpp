#include "day.h"

#include <charconv>
#include <vector>

namespace kelo::Day {

DayKey key(CivilDay day) {
    char text[28];
    return DayKey(text, day.write(text));
}

DayKey key(Timestamp time, const Calendar& calendar) {
    return key(calendar.local(time).day);
}

std::optional<CivilDay> civil(std::string_view key) {
    std::int64_t numbers[3] = {};
    int count = 0;
    while (!key.empty()) {
        const auto hyphen = key.find('-');
        const std::string_view piece = key.substr(0, hyphen);
        key = hyphen == std::string_view::npos ? std::string_view() : key.substr(hyphen + 1);
        std::int64_t value = 0;
        const auto* end = piece.data() + piece.size();
        const auto [stop, error] = std::from_chars(piece.data(), end, value);
        if (piece.empty() || error != std::errc() || stop != end) {
            continue;
        }
        if (count == 3) {
            return std::nullopt;
        }
        numbers[count++] = value;
    }
    // Beyond these bounds a number cannot be a month or a day of one, and would overflow the
    // day arithmetic.
    constexpr std::int64_t limit = 1'000'000;
    if (count != 3 || numbers[0] < -limit || numbers[0] > limit || numbers[1] < -limit ||
        numbers[1] > limit || numbers[2] < -limit || numbers[2] > limit) {
        return std::nullopt;
    }
    return CivilDay{numbers[0], static_cast<int>(numbers[1]), static_cast<int>(numbers[2])};
}

std::optional<Timestamp> date(std::string_view key, const Calendar& calendar) {
    const auto day = civil(key);
    if (!day) {
        return std::nullopt;
    }
    return calendar.at(*day);
}

std::int64_t minuteOf(Timestamp time, const Calendar& calendar) {
    const LocalTime local = calendar.local(time);
    return local.hour * 60 + local.minute;
}

DayKey adding(std::int64_t days, std::string_view text) {
    const auto day = civil(text);
    if (!day) {
        return DayKey(text);
    }
    return key(day->adding(days));
}

DayKey next(int weekday, Timestamp after, const Calendar& calendar) {
    const CivilDay today = calendar.local(after).day;
    int delta = ((weekday - today.weekday()) % 7 + 7) % 7; // [0, 6]
    if (delta == 0) {
        delta = 7;
    }
    return key(today.adding(delta));
}

DayKey weekendAfter(Timestamp time, const Calendar& calendar) {
    constexpr int saturday = 7;
    const CivilDay today = calendar.local(time).day;
    return today.weekday() == saturday ? key(today) : next(saturday, time, calendar);
}

} // namespace kelo::Day
