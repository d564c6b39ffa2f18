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

// A moment on the wall clock of Berlin, whatever the machine's zone is.
[[nodiscard]] Timestamp at(int year, int month, int day, int hour, int minute);

// A desktop that records every request in `calls`; activation and key status follow them.
class FakePlatform final : public Platform {
public:
    using Platform::Platform;

    // The handle by which this desktop knows Kelo itself.
    static constexpr ApplicationRef self{1};

    bool active = false;
    bool panelKey = false;
    std::optional<ApplicationRef> front;
    bool acceptsHandBack = true;
    QStringList calls;

    [[nodiscard]] bool isActive() const override { return active; }
    [[nodiscard]] bool isPanelKey() const override { return panelKey; }
    [[nodiscard]] std::optional<ApplicationRef> frontmost() const override { return front; }
    [[nodiscard]] bool isThisApplication(const ApplicationRef& app) const override {
        return app == self;
    }
    void activate() override { active = record("activate", true); }
    void deactivate() override { active = panelKey = record("deactivate", false); }
    void makePanelKey() override { panelKey = record("makePanelKey", true); }
    void releaseKeyboard() override { panelKey = record("releaseKeyboard", false); }
    void revealFile(const QString& path) override { calls << QStringLiteral("reveal ") + path; }
    void quit() override { record("quit"); }
    void playReminderSound() override { record("sound"); }
    void performHaptic() override { record("haptic"); }
    [[nodiscard]] bool handBack(const ApplicationRef& app) override {
        calls << QStringLiteral("handBack %1").arg(app.handle);
        if (acceptsHandBack) {
            active = panelKey = false;
        }
        return acceptsHandBack;
    }

private:
    // Notes the request and returns the state it leaves.
    bool record(const char* call, bool state = false) {
        calls << QString::fromLatin1(call);
        return state;
    }
};

// Time that passes only when a test says so. It is the model's clock, and it runs the delayed
// work of the models it watches in deadline order, so a test of the 12 s alert takes no time.
class VirtualTime {
public:
    explicit VirtualTime(Timestamp start)
        : now_(start) {}

    [[nodiscard]] Timestamp now() const { return now_; }
    void watch(const QObject& owner);
    void advance(std::chrono::milliseconds span) { advanceTo(now_ + span); }
    void advanceTo(Timestamp time);

private:
    Timestamp now_;
    std::map<DelaySlot*, Timestamp> deadlines_;
};

// One model with everything it touches kept apart: data, settings and autostart in a fresh folder,
// virtual time from Thursday 2025-03-06 09:00 and a recording platform.
struct Rig {
    explicit Rig(Timestamp start = at(2025, 3, 6, 9, 0));

    [[nodiscard]] QString settingsFile() const;
    [[nodiscard]] QString autostartFolder() const;
    [[nodiscard]] std::unique_ptr<IslandModel> makeModel();

    [[nodiscard]] DayKey today() const;
    // Adds a task straight to the store, as data that was there before the test.
    Todo addTask(const std::string& title, std::optional<DayKey> day = std::nullopt,
                 std::optional<std::int64_t> minute = std::nullopt);
    // Adds a task due this minute and ticks, which raises its alert.
    Todo raiseAlert();
    // Puts the model into the mode the way the user or the clock would.
    void enter(ModeKind mode);
    [[nodiscard]] std::optional<Todo> task(const Uuid& id) const;

    QTemporaryDir folder;
    VirtualTime time;
    FakePlatform platform;
    std::unique_ptr<IslandModel> model;
};

} // namespace kelo::testing
