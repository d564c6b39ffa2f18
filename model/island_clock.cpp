#include "island_model.h"

#include <algorithm>
#include <lists.h>

using namespace std::chrono_literals;

namespace kelo {

namespace {

// How long an alert stays when nobody touches it.
constexpr auto alertLifetime = 12000ms;
constexpr std::int64_t snoozeMinutes = 10;
constexpr std::int64_t lastMinuteOfDay = 1439;

} // namespace

void IslandModel::tick() {
    setNow(clock_());
    // No alert interrupts an open island or another alert; a task that comes due meanwhile is
    // caught by a later tick while it is still in its five-minute window.
    if (mode_.kind() != ModeKind::Closed && mode_.kind() != ModeKind::Peek) {
        return;
    }
    const std::vector<Todo> due = dueNow(store_->todos(), now_, calendar_);
    const auto next = std::find_if(
        due.begin(), due.end(), [this](const Todo& todo) { return !alerted_.contains(todo.id); });
    if (next == due.end()) {
        return;
    }
    const Uuid id = next->id;
    alerted_.insert(id);
    setMode(Mode::alert(id));
    if (!isolated_) {
        platform().performHaptic();
        if (preferences_->reminderSound()) {
            platform().playReminderSound();
        }
    }
    after(alertLifetime, [this] { setMode(Mode::closed()); });
}

void IslandModel::snooze(const Todo& task) {
    // Never past 23:59: a snooze does not push a task into tomorrow.
    const std::int64_t minute =
        std::min(Day::minuteOf(now_, calendar_) + snoozeMinutes, lastMinuteOfDay);
    store_->update(task.id, [&](Todo& todo) {
        todo.day = derived_.day.today;
        todo.minute = minute;
    });
    // So that it alerts again when the new minute comes.
    alerted_.erase(task.id);
    setMode(Mode::closed());
}

void IslandModel::completeAlert() {
    if (const std::optional<Uuid> id = mode_.alertId()) {
        store_->toggle(*id, clock_());
    }
    setMode(Mode::closed());
}

} // namespace kelo
