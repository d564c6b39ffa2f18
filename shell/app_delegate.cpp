#include "app_delegate.h"

#include "data_file_watcher.h"
#include "device_notch.h"
#include "harness.h"
#include "island_bus.h"
#include "island_model.h"
#include "island_panel.h"
#include "island_window.h"
#include "launch_at_login.h"
#include "screen_placement.h"
#include "todo_store.h"

namespace kelo::shell {

AppDelegate::AppDelegate(const std::filesystem::path& dataFile)
    : model_(std::make_unique<IslandModel>(std::make_unique<TodoStore>(dataFile)))
    , dataFileWatcher_(std::make_unique<DataFileWatcher>(model_->store()))
    , bus_(std::make_unique<IslandBus>(*model_, dataFile)) {
    model_->setPlatform(&platform_);
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::launchFinished() {
    panel_ = std::make_unique<IslandPanel>(*model_,
                                           std::make_unique<ScreenPlacement>(deviceNotchHeight()));
    platform_.setPanel(&panel_->window());
    connect(
        &panel_->window(), &QQuickWindow::frameSwapped, this,
        [this] { model_->store().writeBackup(); }, Qt::SingleShotConnection);

    hotKey_ = makeHotKey();
    connect(hotKey_.get(), &HotKey::activated, model_.get(), &IslandModel::hotKey);
    hotKey_->registerCtrlAltT();
    bus_->publish();

    clock_.setInterval(clockInterval);
    connect(&clock_, &QTimer::timeout, model_.get(), &IslandModel::tick);
    clock_.start();
    model_->tick();

    // A login item left pointing at a program that is gone (a deleted build folder, say) starts
    // this Kelo from now on.
    model_->launchAtLogin()->refreshStaleEntry();

    // The self-check and snapshot runs start here, after the first tick, so that they find a
    // complete application to drive.
    Harness::start(*model_, {&panel_->window(), [panel = panel_.get()] { panel->hide(); },
                             [panel = panel_.get()] { return panel->islandFrame(); }});
}

} // namespace kelo::shell
