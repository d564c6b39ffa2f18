#pragma once

#include "fake_platform.h"
#include "virtual_time.h"

#include <QString>
#include <QTemporaryDir>
#include <calendar.h>
#include <island_model.h>
#include <memory>
#include <string>
#include <vector>

namespace kelo::testing {

// Berlin, English: fixed whatever the machine's zone and locale are.
[[nodiscard]] Calendar testCalendar();

// A moment on the test calendar's wall clock.
[[nodiscard]] Timestamp at(int year, int month, int day, int hour, int minute);

// One model under test with everything it touches kept apart: a data file and a settings file
// in a fresh temporary folder, virtual time starting on Thursday 2025-03-06 at 09:00, a
// recording platform, and the store's log lines.
struct Rig {
    explicit Rig(Timestamp start = at(2025, 3, 6, 9, 0));

    [[nodiscard]] QString dataFile() const;
    [[nodiscard]] QString settingsFile() const;
    // A fresh model over the same data and settings files, watched by the virtual time.
    [[nodiscard]] std::unique_ptr<IslandModel> makeModel();

    [[nodiscard]] DayKey today() const;
    // Adds a task straight to the store, as data that was there before the test.
    Todo addTask(const std::string& title, std::optional<DayKey> day = std::nullopt,
                 std::optional<std::int64_t> minute = std::nullopt);
    [[nodiscard]] std::optional<Todo> task(const Uuid& id) const;

    QTemporaryDir folder;
    VirtualTime time;
    FakePlatform platform;
    std::vector<std::string> logLines;
    std::unique_ptr<IslandModel> model;
};

} // namespace kelo::testing
