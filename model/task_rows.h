#pragma once

#include "island_types.h"

#include <calendar.h>
#include <optional>
#include <string>
#include <todo.h>
#include <vector>

// The three lists of the open island as rows, in the order they are drawn: tasks, section
// headings and today's now line. Each row has a key that stays the same while the row stays on
// screen, so that a list can move a row instead of replacing it.
namespace kelo {

struct TaskRow {
    RowKind kind = RowKind::Task;
    // A task's id text; "section:…" for headings; "now" for the now line.
    std::string key;
    // Task rows only.
    std::optional<Todo> task;
    Meta meta = Meta::None;
    // A task's time or day as its meta says; a heading's text; the now line's time.
    std::string text;
    SectionTint tint = SectionTint::Quiet;
    // Task rows: the completion is under way (the circle is already checked).
    bool checking = false;

    bool operator==(const TaskRow&) const = default;
};

// Overdue (with its heading), the timed tasks split by the now line at the current minute,
// Anytime and Done (each with its heading). Empty when today has nothing to show.
[[nodiscard]] std::vector<TaskRow> todayRows(const std::vector<Todo>& todos, Timestamp now,
                                             const Calendar& calendar);
// One heading per day (the day's display text), then that day's tasks.
[[nodiscard]] std::vector<TaskRow> upcomingRows(const std::vector<Todo>& todos, Timestamp now,
                                                const Calendar& calendar);
[[nodiscard]] std::vector<TaskRow> backlogRows(const std::vector<Todo>& todos, Timestamp now,
                                               const Calendar& calendar);

} // namespace kelo
