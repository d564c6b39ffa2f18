#pragma once

#include "desktop_platform.h"
#include "hot_key.h"

#include <QObject>
#include <QTimer>
#include <filesystem>
#include <memory>

namespace kelo {
class DataFileWatcher;
class IslandModel;
} // namespace kelo

namespace kelo::shell {

class IslandBus;
class IslandPanel;

// Owns Kelo's long-lived parts and starts them in the order the rest of Kelo relies on: data
// file, store and model first; the island, the hot key and the clock once the event loop runs.
// Nothing is torn down early: the store has written every change already.
class AppDelegate : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::seconds clockInterval{10};

    // Loads the data file and reads the preferences.
    explicit AppDelegate(const std::filesystem::path& dataFile);
    ~AppDelegate() override;

    // Shows the island over the notch, registers Ctrl+Alt+T, takes the data file's name on the
    // session bus, starts the clock and ticks once, so that a task due at launch alerts at once.
    void launchFinished();

private:
    // In the order they are built, so that each goes before what it uses.
    DesktopPlatform platform_;
    std::unique_ptr<IslandModel> model_;
    std::unique_ptr<DataFileWatcher> dataFileWatcher_;
    std::unique_ptr<IslandPanel> panel_;
    std::unique_ptr<HotKey> hotKey_;
    std::unique_ptr<IslandBus> bus_;
    QTimer clock_;
};

} // namespace kelo::shell
