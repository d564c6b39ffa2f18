#pragma once

#include "calendar.h"
#include "day.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kelo::Format {

// A minute of the day in the locale's preferred form: "5:00 PM", "17:00"; compact drops the
// day period ("5:00").
[[nodiscard]] std::string time(std::int64_t minute, bool compact, const Calendar& calendar);

// "Today", "Tomorrow", "Yesterday", a weekday name within the week ahead, else a short date.
// A text that is not a day key comes back unchanged.
[[nodiscard]] std::string day(std::string_view key, Timestamp now, const Calendar& calendar);

// The moment's date as the locale writes an abbreviated weekday, month and day: "Mon, Nov 16".
[[nodiscard]] std::string date(Timestamp moment, const Calendar& calendar);

// "Today · 5:00 PM", "Tomorrow", or "Backlog" without a day.
[[nodiscard]] std::string when(const std::optional<DayKey>& day,
                               const std::optional<std::int64_t>& minute, Timestamp now,
                               const Calendar& calendar);

} // namespace kelo::Format
