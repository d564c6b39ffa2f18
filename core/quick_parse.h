#pragma once

#include "calendar.h"
#include "day.h"
#include "schedule.h"
#include "todo.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kelo {

// What a quick-add line means: the day and time of the trailing phrase, and the title before it.
struct Parsed : Schedule {
    std::string title;

    bool operator==(const Parsed&) const = default;
};

namespace QuickParse {

// "dentist fri 3pm" -> dentist, Friday, 900. The phrase must stand at the end of the line and
// read completely; the first word always belongs to the title.
[[nodiscard]] Parsed parse(std::string_view text, Timestamp now, const Calendar& calendar);

// parse, then the default day of the tab the line is typed in: today in Today, tomorrow in
// Upcoming, none in Backlog unless the line carries a time.
[[nodiscard]] Parsed plan(std::string_view text, Bucket bucket, Timestamp now,
                          const Calendar& calendar);

// The whole text read as a phrase, as typed to reschedule a task ("tomorrow 3pm"); either part
// of the result may be absent, not both.
[[nodiscard]] std::optional<Schedule> when(std::string_view text, Timestamp now,
                                           const Calendar& calendar);

// The canonical phrase for a day and time ("tomorrow 3pm", "saturday 9:30am", "mar 13"), which
// `when` reads back to the same day and minute.
[[nodiscard]] std::string phrase(const std::optional<DayKey>& day,
                                 const std::optional<std::int64_t>& minute, Timestamp now,
                                 const Calendar& calendar);

} // namespace QuickParse
} // namespace kelo
