#include "island_model.h"
#include "qml_values.h"

#include <algorithm>
#include <format.h>

using namespace Qt::StringLiterals;

namespace kelo {

namespace {

bool isLineBreak(QChar c) {
    return c == u'\n' || c == u'\r' || c == u'\v' || c == u'\f' || c == QChar(0x85) ||
           c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
}

// Blanks, tabs and the other space characters, but no line breaks: a draft of line breaks alone
// is not blank, and then the store decides about its title.
bool isBlank(const QString& text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) {
        return c == u'\t' || (c.category() == QChar::Separator_Space && !isLineBreak(c));
    });
}

} // namespace

Bucket IslandModel::targetBucket(const std::optional<DayKey>& day) const {
    return bucketOf(day, derived_.day.today);
}

void IslandModel::addDraft() {
    if (isBlank(draft_)) {
        return;
    }
    const Parsed planned = derived_.plan;
    withSpring(Spring::List, [&] {
        // The bucket follows the plan even when the store refuses an empty title.
        static_cast<void>(store_->add(planned.title, planned.day, planned.minute));
        const Bucket target = targetBucket(planned.day);
        if (bucket_ != target) {
            setBucket(target);
        }
    });
    setDraft(QString());
}

void IslandModel::addLine(const QString& line) {
    if (isBlank(line)) {
        return;
    }
    const Parsed planned = QuickParse::plan(stdText(line), Bucket::today, now_, calendar_);
    withSpring(Spring::List,
               [&] { static_cast<void>(store_->add(planned.title, planned.day, planned.minute)); });
}

void IslandModel::pickDay(const std::optional<DayKey>& day) {
    const Parsed parsed = QuickParse::parse(stdText(draft_), now_, calendar_);
    std::optional<std::int64_t> minute = parsed.minute;
    if (!day) {
        // In Backlog the plan gives the draft no default day again.
        if (bucket_ != Bucket::backlog) {
            setBucket(Bucket::backlog);
        }
        minute.reset();
    }
    rewriteDraft(parsed.title, day, minute);
}

void IslandModel::pickTime(std::optional<std::int64_t> minute) {
    const Parsed parsed = QuickParse::parse(stdText(draft_), now_, calendar_);
    rewriteDraft(parsed.title, parsed.day, minute);
}

void IslandModel::rewriteDraft(const std::string& title, const std::optional<DayKey>& day,
                               std::optional<std::int64_t> minute) {
    const std::string phrase = QuickParse::phrase(day, minute, now_, calendar_);
    setDraft(phrase.empty() ? qtText(title) : QString(qtText(title) % u' ' % qtText(phrase)));
    // The chip that was clicked must not keep the keyboard.
    requestFocus();
}

void IslandModel::rename(const Todo& task, const QString& text) {
    const std::string title = stdText(text.trimmed());
    if (title.empty() || title == task.title) {
        return;
    }
    store_->update(task.id, [&](Todo& todo) { todo.title = title; });
}

void IslandModel::move(const Todo& task, const std::optional<DayKey>& day,
                       std::optional<std::int64_t> minute) {
    std::optional<std::int64_t> newMinute = minute;
    if (!day) {
        if (!task.day && !task.minute) {
            return;
        }
        // A task without a day has no time.
        newMinute.reset();
    } else if (day == task.day && minute == task.minute) {
        return;
    }
    // A task moved to a new time may alert again.
    alerted_.erase(task.id);
    withSpring(Spring::List, [&] {
        store_->update(task.id, [&](Todo& todo) {
            todo.day = day;
            todo.minute = newMinute;
        });
    });
    if (targetBucket(day) == bucket_) {
        return;
    }
    if (scheduling_ == task.id) {
        endEditing();
    }
    // Undo restores only the schedule: a title changed meanwhile stays.
    showToast(u"Moved to "_s % qtText(Format::when(day, newMinute, now_, calendar_)),
              [this, id = task.id, oldDay = task.day, oldMinute = task.minute] {
                  store_->update(id, [&](Todo& todo) {
                      todo.day = oldDay;
                      todo.minute = oldMinute;
                  });
              });
}

bool IslandModel::reschedule(const Todo& task, const QString& phrase) {
    const std::optional<Schedule> when = QuickParse::when(stdText(phrase), now_, calendar_);
    if (!when) {
        return false;
    }
    const DayKey day = when->day.value_or(task.day.value_or(derived_.day.today));
    const std::optional<std::int64_t> minute = when->minute ? when->minute : task.minute;
    move(task, day, minute);
    return true;
}

void IslandModel::toggle(const Todo& task) {
    // Completion is stamped with the real time, not the clock's last reading.
    withSpring(Spring::List, [&] { store_->toggle(task.id, clock_()); });
}

void IslandModel::deleteTodo(const Todo& task) {
    std::optional<Todo> removed;
    withSpring(Spring::List, [&] { removed = store_->remove(task.id); });
    if (scheduling_ == task.id) {
        endEditing();
    }
    // A task that was already gone still gets its toast, but there is nothing to bring back:
    // restoring the copy would resurrect a task deleted elsewhere.
    std::optional<std::function<void()>> undo;
    if (removed) {
        undo = [this, task = *removed] { store_->restore(task); };
    }
    showToast(u"Deleted “"_s % qtText(task.title) % u"”"_s, std::move(undo));
}

void IslandModel::check(const Todo& task) {
    if (task.isDone()) {
        toggle(task);
        return;
    }
    completions_->add(task.id);
}

void IslandModel::showToast(const QString& text, std::optional<std::function<void()>> undo) {
    toast_->show(text, std::move(undo));
}

void IslandModel::undoLast() {
    toast_->undo();
}

} // namespace kelo
