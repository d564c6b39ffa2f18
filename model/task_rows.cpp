#include "task_rows.h"

#include <format.h>
#include <lists.h>

namespace kelo {

namespace {

class Rows {
public:
    Rows(Timestamp now, const Calendar& calendar)
        : now_(now)
        , calendar_(calendar) {}

    void section(const std::string& name, std::string text, SectionTint tint = SectionTint::Quiet) {
        rows_.push_back(
            {RowKind::Section, "section:" + name, std::nullopt, Meta::None, std::move(text), tint});
    }

    void task(const Todo& todo, Meta meta) {
        std::string text;
        if (meta == Meta::Time && todo.minute) {
            text = Format::time(*todo.minute, false, calendar_);
        } else if (meta == Meta::Day && todo.day) {
            text = Format::day(*todo.day, now_, calendar_);
        }
        rows_.push_back({RowKind::Task, todo.id.text(), todo, meta, std::move(text)});
    }

    void tasks(const std::vector<Todo>& todos, Meta meta) {
        for (const Todo& todo : todos) {
            task(todo, meta);
        }
    }

    void nowLine(std::int64_t minute) {
        rows_.push_back({RowKind::NowLine, "now", std::nullopt, Meta::None,
                         Format::time(minute, false, calendar_)});
    }

    [[nodiscard]] std::vector<TaskRow> take() { return std::move(rows_); }

private:
    Timestamp now_;
    const Calendar& calendar_;
    std::vector<TaskRow> rows_;
};

} // namespace

std::vector<TaskRow> todayRows(const std::vector<Todo>& todos, Timestamp now,
                               const Calendar& calendar) {
    const TodaySections sections = todaySections(todos, now, calendar);
    Rows rows(now, calendar);
    if (!sections.overdue.empty()) {
        rows.section("overdue", "Overdue", SectionTint::Overdue);
        rows.tasks(sections.overdue, Meta::Day);
    }
    // The now line alone separates past from coming times: a task of this very minute is below it.
    const std::int64_t minute = Day::minuteOf(now, calendar);
    bool lineDrawn = false;
    for (const Todo& todo : sections.timed) {
        if (!lineDrawn && todo.minute.value_or(0) >= minute) {
            rows.nowLine(minute);
            lineDrawn = true;
        }
        rows.task(todo, Meta::Time);
    }
    if (!lineDrawn && !sections.timed.empty()) {
        rows.nowLine(minute);
    }
    if (!sections.anytime.empty()) {
        rows.section("anytime", "Anytime");
        rows.tasks(sections.anytime, Meta::Time);
    }
    if (!sections.done.empty()) {
        rows.section("done", "Done");
        rows.tasks(sections.done, Meta::Time);
    }
    return rows.take();
}

std::vector<TaskRow> upcomingRows(const std::vector<Todo>& todos, Timestamp now,
                                  const Calendar& calendar) {
    Rows rows(now, calendar);
    for (const DayGroup& group : upcoming(todos, now, calendar)) {
        rows.section(group.day, Format::day(group.day, now, calendar));
        rows.tasks(group.items, Meta::Time);
    }
    return rows.take();
}

std::vector<TaskRow> backlogRows(const std::vector<Todo>& todos, Timestamp now,
                                 const Calendar& calendar) {
    Rows rows(now, calendar);
    rows.tasks(backlog(todos, now, calendar), Meta::None);
    return rows.take();
}

} // namespace kelo
