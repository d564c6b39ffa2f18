#include "model_rig.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace kelo::testing {

namespace {

Calendar testCalendar() {
    return *Calendar::make("Europe/Berlin", "en_US");
}

} // namespace

Timestamp at(int year, int month, int day, int hour, int minute) {
    return testCalendar().at(CivilDay{year, month, day}, hour, minute);
}

void VirtualTime::watch(const QObject& owner) {
    for (DelaySlot* slot : owner.findChildren<DelaySlot*>()) {
        QObject::connect(slot, &DelaySlot::scheduled, slot,
                         [this, slot] { deadlines_[slot] = now_ + *slot->delay(); });
        QObject::connect(slot, &QObject::destroyed, [this, slot] { deadlines_.erase(slot); });
    }
}

void VirtualTime::advanceTo(Timestamp time) {
    for (;;) {
        // The earliest deadline of work still pending.
        const auto next = std::min_element(deadlines_.begin(), deadlines_.end(),
                                           [](const auto& a, const auto& b) {
                                               return std::pair(!a.first->isPending(), a.second) <
                                                      std::pair(!b.first->isPending(), b.second);
                                           });
        if (next == deadlines_.end() || !next->first->isPending() || next->second > time) {
            break;
        }
        now_ = std::max(now_, next->second);
        next->first->fire();
    }
    now_ = std::max(now_, time);
}

Rig::Rig(Timestamp start)
    : time(start) {
    model = makeModel();
}

QString Rig::settingsFile() const {
    return folder.filePath(u"Kelo.conf"_s);
}

QString Rig::autostartFolder() const {
    return folder.filePath(u"autostart"_s);
}

std::unique_ptr<IslandModel> Rig::makeModel() {
    const auto clock = [this] { return time.now(); };
    auto store = std::make_unique<TodoStore>(folder.filePath(u"todos.json"_s).toStdString(),
                                             TodoStore::Options{clock, [](auto) {}});
    auto made = std::make_unique<IslandModel>(
        std::move(store),
        IslandModel::Options{
            testCalendar(), clock, settingsFile(),
            LaunchAtLogin::Options{autostartFolder(), u"/usr/bin/kelo"_s, [](auto) {}}});
    made->setPlatform(&platform);
    time.watch(*made);
    return made;
}

DayKey Rig::today() const {
    return Day::key(time.now(), testCalendar());
}

Todo Rig::addTask(const std::string& title, std::optional<DayKey> day,
                  std::optional<std::int64_t> minute) {
    return model->store().add(title, std::move(day), minute).value();
}

Todo Rig::raiseAlert() {
    const Todo task = addTask("standup", today(), Day::minuteOf(time.now(), testCalendar()));
    model->tick();
    return task;
}

void Rig::enter(ModeKind mode) {
    if (mode == ModeKind::Peek) {
        model->setMode(Mode::peek());
    } else if (mode == ModeKind::Open) {
        model->open(false);
    } else if (mode == ModeKind::Alert) {
        raiseAlert();
    }
}

std::optional<Todo> Rig::task(const Uuid& id) const {
    const auto& todos = model->store().todos();
    const auto found = std::ranges::find(todos, id, &Todo::id);
    return found == todos.end() ? std::nullopt : std::optional(*found);
}

} // namespace kelo::testing
