#pragma once

#include <QStringList>
#include <QTemporaryDir>
#include <chrono>
#include <delay_slot.h>
#include <island_model.h>
#include <map>
#include <memory>
#include <platform.h>

namespace kelo::testing {

inline Calendar testCalendar() {
    return *Calendar::make("Europe/Berlin", "en_US");
}

// A moment on the wall clock of Berlin, whatever the machine's zone is.
inline Timestamp at(int year, int month, int day, int hour, int minute) {
    return testCalendar().at(CivilDay{year, month, day}, hour, minute);
}

// A desktop that records every request in `calls`; activation and key status follow them.
struct FakePlatform final : Platform {
    static constexpr ApplicationRef self{1}; // how this desktop knows Kelo itself

    bool active = false, panelKey = false, acceptsHandBack = true;
    std::optional<ApplicationRef> front;
    QStringList calls;

    bool isActive() const override { return active; }
    bool isPanelKey() const override { return panelKey; }
    std::optional<ApplicationRef> frontmost() const override { return front; }
    bool isThisApplication(const ApplicationRef& app) const override { return app == self; }
    void activate() override { active = record("activate", true); }
    void deactivate() override { active = panelKey = record("deactivate", false); }
    void makePanelKey() override { panelKey = record("makePanelKey", true); }
    void releaseKeyboard() override { panelKey = record("releaseKeyboard", false); }
    void revealFile(const QString& path) override { record("reveal " + path.toStdString()); }
    void quit() override { record("quit"); }
    void playReminderSound() override { record("sound"); }
    void performHaptic() override { record("haptic"); }
    bool handBack(const ApplicationRef& app) override {
        record("handBack " + std::to_string(app.handle));
        active = panelKey = !acceptsHandBack && active;
        return acceptsHandBack;
    }
    // Notes the request and returns the state it leaves.
    bool record(const std::string& call, bool state = false) {
        calls << QString::fromStdString(call);
        return state;
    }
};

// One model with everything it touches kept apart: data, settings and autostart in a fresh
// folder, a recording platform, and time from Thursday 2025-03-06 09:00 that passes only when the
// test says so. The rig runs the model's delayed work in deadline order, so a test of the 12 s
// alert takes no time.
struct Rig {
    explicit Rig(Timestamp start = at(2025, 3, 6, 9, 0))
        : now(start)
        , model(makeModel()) {}

    QString settingsFile() const { return folder.filePath(QStringLiteral("Kelo.conf")); }
    QString autostartFolder() const { return folder.filePath(QStringLiteral("autostart")); }
    std::unique_ptr<IslandModel> makeModel() {
        const auto clock = [this] { return now; };
        auto made = std::make_unique<IslandModel>(
            std::make_unique<TodoStore>(folder.filePath(QStringLiteral("todos.json")).toStdString(),
                                        TodoStore::Options{clock, [](auto) {}}),
            IslandModel::Options{testCalendar(), clock, settingsFile(),
                                 LaunchAtLogin::Options{autostartFolder(),
                                                        QStringLiteral("/usr/bin/kelo"),
                                                        [](auto) {}}});
        made->setPlatform(&platform);
        for (DelaySlot* slot : made->findChildren<DelaySlot*>()) {
            QObject::connect(slot, &DelaySlot::scheduled, slot,
                             [this, slot] { deadlines[slot] = now + *slot->delay(); });
            QObject::connect(slot, &QObject::destroyed, [this, slot] { deadlines.erase(slot); });
        }
        return made;
    }

    void advance(std::chrono::milliseconds span) { advanceTo(now + span); }
    void advanceTo(Timestamp time) {
        for (;;) { // the earliest pending work that falls due, until none does
            std::erase_if(deadlines, [](const auto& slot) { return !slot.first->isPending(); });
            const auto next = std::ranges::min_element(
                deadlines, {}, [](const auto& slot) { return slot.second; });
            if (next == deadlines.end() || next->second > time) {
                break;
            }
            now = std::max(now, next->second);
            next->first->fire();
        }
        now = std::max(now, time);
    }

    DayKey today() const { return Day::key(now, testCalendar()); }
    // Adds a task straight to the store, as data that was there before the test.
    Todo addTask(const std::string& title, std::optional<DayKey> day = std::nullopt,
                 std::optional<std::int64_t> minute = std::nullopt) {
        return model->store().add(title, std::move(day), minute).value();
    }

    QTemporaryDir folder;
    FakePlatform platform;
    Timestamp now;
    std::map<DelaySlot*, Timestamp> deadlines;
    std::unique_ptr<IslandModel> model;
};

} // namespace kelo::testing
