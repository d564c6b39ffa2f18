#include "lists.h"

#include <algorithm>

namespace kelo {

namespace {

// Sorting pointers keeps the stable sorts cheap: a swap moves one word instead of a task with
// its strings.
using Selection = std::vector<const Todo*>;

bool byOrder(const Todo* a, const Todo* b) {
    return Todo::order(*a, *b);
}

std::vector<Todo> copies(const Selection& selection) {
    std::vector<Todo> result;
    result.reserve(selection.size());
    for (const Todo* todo : selection) {
        result.push_back(*todo);
    }
    return result;
}

// Today shows what is planned for today, what is still open from earlier days, and what was
// planned earlier but completed today, so that ticking off an overdue task keeps it in sight
// until midnight.
bool belongsToToday(const Todo& todo, const DayKey& today, const Calendar& calendar) {
    if (!todo.day || *todo.day > today) {
        return false;
    }
    if (*todo.day == today || !todo.doneAt) {
        return true;
    }
    return Day::key(*todo.doneAt, calendar) == today;
}

bool isTimedToday(const Todo& todo, const DayKey& today) {
    return !todo.isDone() && todo.minute && todo.day == today;
}

// The open timed tasks of today in the order of the `timed` section. On one day and all open,
// Todo::order compares by minute and then by creation.
Selection timedToday(const std::vector<Todo>& todos, const DayKey& today) {
    Selection timed;
    for (const Todo& todo : todos) {
        if (isTimedToday(todo, today)) {
            timed.push_back(&todo);
        }
    }
    std::stable_sort(timed.begin(), timed.end(), byOrder);
    return timed;
}

} // namespace

TodaySections todaySections(const std::vector<Todo>& todos, Timestamp now,
                            const Calendar& calendar) {
    const DayKey today = Day::key(now, calendar);
    Selection selection;
    for (const Todo& todo : todos) {
        if (belongsToToday(todo, today, calendar)) {
            selection.push_back(&todo);
        }
    }
    std::stable_sort(selection.begin(), selection.end(), byOrder);

    TodaySections sections;
    for (const Todo* todo : selection) {
        if (todo->isDone()) {
            sections.done.push_back(*todo);
        } else if (*todo->day < today) {
            sections.overdue.push_back(*todo);
        } else if (todo->minute) {
            sections.timed.push_back(*todo);
        } else {
            sections.anytime.push_back(*todo);
        }
    }
    return sections;
}

std::vector<DayGroup> upcoming(const std::vector<Todo>& todos, Timestamp now,
                               const Calendar& calendar) {
    const DayKey today = Day::key(now, calendar);
    Selection selection;
    for (const Todo& todo : todos) {
        if (todo.day && *todo.day > today) {
            selection.push_back(&todo);
        }
    }
    // By day first, then Todo::order inside a day: the same as sorting by Todo::order and then
    // gathering each day's tasks, which would otherwise list every open task before any done one.
    std::stable_sort(selection.begin(), selection.end(), [](const Todo* a, const Todo* b) {
        return *a->day != *b->day ? *a->day < *b->day : Todo::order(*a, *b);
    });

    std::vector<DayGroup> groups;
    for (const Todo* todo : selection) {
        if (groups.empty() || groups.back().day != *todo->day) {
            groups.push_back(DayGroup{*todo->day, {}});
        }
        groups.back().items.push_back(*todo);
    }
    return groups;
}

std::vector<Todo> backlog(const std::vector<Todo>& todos, Timestamp now, const Calendar& calendar) {
    const DayKey today = Day::key(now, calendar);
    Selection open;
    Selection done;
    for (const Todo& todo : todos) {
        if (todo.day) {
            continue;
        }
        if (!todo.doneAt) {
            open.push_back(&todo);
        } else if (Day::key(*todo.doneAt, calendar) == today) {
            done.push_back(&todo);
        }
    }
    // Newest first: what was just put aside is what the user looks for.
    std::stable_sort(open.begin(), open.end(),
                     [](const Todo* a, const Todo* b) { return a->created > b->created; });
    open.insert(open.end(), done.begin(), done.end());
    return copies(open);
}

DayProgress progress(const std::vector<Todo>& todos, Timestamp now, const Calendar& calendar) {
    // The four sections split Today's selection without overlap, so counting the selection gives
    // the sizes of the sections without building them.
    const DayKey today = Day::key(now, calendar);
    DayProgress counts;
    for (const Todo& todo : todos) {
        if (belongsToToday(todo, today, calendar)) {
            ++counts.total;
            counts.done += todo.isDone() ? 1 : 0;
        }
    }
    return counts;
}

std::optional<Todo> nextTimed(const std::vector<Todo>& todos, Timestamp now,
                              const Calendar& calendar) {
    const std::int64_t minute = Day::minuteOf(now, calendar);
    const Selection timed = timedToday(todos, Day::key(now, calendar));
    const auto next = std::find_if(timed.begin(), timed.end(),
                                   [minute](const Todo* todo) { return *todo->minute >= minute; });
    if (next == timed.end()) {
        return std::nullopt;
    }
    return **next;
}

std::vector<Todo> dueNow(const std::vector<Todo>& todos, Timestamp now, const Calendar& calendar) {
    // A task stays due for the five minutes that begin at its time, so a clock tick that comes a
    // little late still raises its alert.
    const std::int64_t minute = Day::minuteOf(now, calendar);
    Selection due = timedToday(todos, Day::key(now, calendar));
    std::erase_if(due, [minute](const Todo* todo) {
        return *todo->minute < minute - 4 || *todo->minute > minute;
    });
    return copies(due);
}

} // namespace kelo
