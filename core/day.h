#pragma once

#include "calendar.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kelo {

// A calendar day as the text YYYY-MM-DD in the calendar's zone. Keys of the years 1000...9999
// have a fixed width, so comparing two keys as text orders them by date; Kelo never converts
// keys back to dates to compare them.
using DayKey = std::string;

namespace Day {

// The key of the day on which the moment falls in the calendar's zone.
[[nodiscard]] DayKey key(Timestamp time, const Calendar& calendar);
[[nodiscard]] DayKey key(CivilDay day);

// The three numbers of a key: pieces between hyphens, empty and non-numeric pieces dropped.
// None unless exactly three numbers remain.
[[nodiscard]] std::optional<CivilDay> civil(std::string_view key);

// The start of the named day (its first moment in the calendar's zone).
[[nodiscard]] std::optional<Timestamp> date(std::string_view key, const Calendar& calendar);

// Hour × 60 + minute on the calendar's wall clock, seconds ignored. [0, 1439]
[[nodiscard]] std::int64_t minuteOf(Timestamp time, const Calendar& calendar);

// The key n calendar days after the given one (n may be negative). A text that is not a key
// comes back unchanged.
[[nodiscard]] DayKey adding(std::int64_t days, std::string_view key);

// The key of the first day strictly after the moment's day whose weekday is w (1 = Sunday ...
// 7 = Saturday): the same weekday means a week later.
[[nodiscard]] DayKey next(int weekday, Timestamp after, const Calendar& calendar);

// The moment's own day when it is a Saturday, else the coming Saturday.
[[nodiscard]] DayKey weekendAfter(Timestamp time, const Calendar& calendar);

} // namespace Day
} // namespace kelo
