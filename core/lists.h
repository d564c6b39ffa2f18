#pragma once

#include "calendar.h"
#include "todo.h"

#include <optional>
#include <vector>

namespace kelo {

// The Today list in its four sections.
struct TodaySections {
    std::vector<Todo> overdue; // open, planned before today
    std::vector<Todo> timed;   // open, today, with a time
    std::vector<Todo> anytime; // open, today, without a time
    std::vector<Todo> done;    // done today, or planned today and done earlier

    [[nodiscard]] bool isEmpty() const {
        return overdue.empty() && timed.empty() && anytime.empty() && done.empty();
    }
    bool operator==(const TodaySections&) const = default;
};

// The upcoming tasks of one day.
struct DayGroup {
    DayKey day;
    std::vector<Todo> items;

    [[nodiscard]] const DayKey& id() const { return day; }
    bool operator==(const DayGroup&) const = default;
};

// Today's done and total counts, for the progress ring.
struct DayProgress {
    int done = 0;
    int total = 0;

    bool operator==(const DayProgress&) const = default;
};

// Every list takes the store's tasks in stored order; every sort is stable.
[[nodiscard]] TodaySections todaySections(const std::vector<Todo>& todos, Timestamp now,
                                          const Calendar& calendar);
[[nodiscard]] std::vector<DayGroup> upcoming(const std::vector<Todo>& todos, Timestamp now,
                                             const Calendar& calendar);
[[nodiscard]] std::vector<Todo> backlog(const std::vector<Todo>& todos, Timestamp now,
                                        const Calendar& calendar);
[[nodiscard]] DayProgress progress(const std::vector<Todo>& todos, Timestamp now,
                                   const Calendar& calendar);
// The first open timed task of today at the current minute or later.
[[nodiscard]] std::optional<Todo> nextTimed(const std::vector<Todo>& todos, Timestamp now,
                                            const Calendar& calendar);
// Open timed tasks of today whose minute lies in the five minutes ending now.
[[nodiscard]] std::vector<Todo> dueNow(const std::vector<Todo>& todos, Timestamp now,
                                       const Calendar& calendar);

} // namespace kelo
