#include "commands.h"
#include "json_io.h"
#include "lists.h"
#include "todo_json.h"

#include <iostream>

namespace kelo::cli {

int runLists(const Invocation& invocation, std::ostream& out) {
    // The strict reader without the store: looking at a file must not back it up or move it.
    const auto read = readTodosFile(invocation.file);
    if (const auto* error = std::get_if<std::string>(&read)) {
        std::cerr << "kelo-core: could not read " << invocation.file.string() << " (" << *error
                  << ")\n";
        return 1;
    }
    const auto& todos = std::get<std::vector<Todo>>(read);
    const Timestamp now = invocation.now;
    const Calendar& calendar = invocation.calendar;

    const TodaySections today = todaySections(todos, now, calendar);
    Json days = Json::array();
    for (const DayGroup& group : upcoming(todos, now, calendar)) {
        days.push_back(Json{{"day", group.day}, {"items", ids(group.items)}});
    }
    const DayProgress counts = progress(todos, now, calendar);
    const auto next = nextTimed(todos, now, calendar);
    out << compact(Json{{"overdue", ids(today.overdue)},
                        {"timed", ids(today.timed)},
                        {"anytime", ids(today.anytime)},
                        {"done", ids(today.done)},
                        {"upcoming", days},
                        {"backlog", ids(backlog(todos, now, calendar))},
                        {"progress", Json{{"done", counts.done}, {"total", counts.total}}},
                        {"nextTimed", next ? Json(next->id.text()) : Json(nullptr)},
                        {"dueNow", ids(dueNow(todos, now, calendar))}})
        << '\n'
        << std::flush;
    return 0;
}

} // namespace kelo::cli
