#include "island_panel.h"

#include "hover_tracker.h"
#include "island_frame.h"
#include "island_geometry.h"
#include "island_model.h"
#include "island_window.h"
#include "screen_placement.h"
#include "system_log.h"

#include <QQmlComponent>
#include <QQuickItem>
#include <QtQml/qqmlextensionplugin.h>
#include <cstdlib>

Q_IMPORT_QML_PLUGIN(KeloPlugin)

namespace kelo::shell {
namespace {

const QUrl islandViewUrl(QStringLiteral("qrc:/qt/qml/Kelo/IslandView.qml"));

std::unique_ptr<QQuickItem> createIslandView(QQmlEngine& engine, IslandModel& model,
                                             QQuickWindow& window) {
    // Qt 6.4 does not search its own resource root for modules; without this the engine spins
    // instead of failing.
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    QQmlComponent component(&engine, islandViewUrl);
    // Qt 6.4 crashes when asked to create from a component that failed to load.
    std::unique_ptr<QObject> root(
        component.isReady() ? component.createWithInitialProperties(
                                  {{QStringLiteral("model"), QVariant::fromValue(&model)}})
                            : nullptr);
    auto* item = qobject_cast<QQuickItem*>(root.get());
    if (!item) {
        // An island that shows nothing would look like a Kelo that works; say why and stop.
        systemLog("Kelo: could not load the island view: " +
                  component.errorString().simplified().toStdString());
        std::exit(1);
    }
    root.release();
    item->setParentItem(window.contentItem());
    return std::unique_ptr<QQuickItem>(item);
}

} // namespace

IslandPanel::IslandPanel(IslandModel& model, std::unique_ptr<ScreenPlacement> placement)
    : model_(&model)
    , window_(std::make_unique<IslandWindow>(model))
    , placement_(std::move(placement)) {
    host_ = createIslandView(engine_, model, *window_);
    frame_ = new IslandFrame(*window_, *host_);
    new HoverTracker(*window_, model);

    follow_.setSingleShot(true);
    follow_.setInterval(0);
    connect(&follow_, &QTimer::timeout, this, &IslandPanel::applyFrame);
    connect(&model, &IslandModel::islandSizeChanged, &follow_, qOverload<>(&QTimer::start));
    connect(&model, &IslandModel::modeChanged, &follow_, qOverload<>(&QTimer::start));
    connect(placement_.get(), &ScreenPlacement::screensChanged, this, &IslandPanel::placeOnScreen);

    placeOnScreen();
    window_->showWithoutActivating();
}

IslandPanel::~IslandPanel() = default;

void IslandPanel::placeOnScreen() {
    placement_->measure();
    QScreen* screen = placement_->screen();
    frame_->setScreen(screen);
    if (!screen || !model_) {
        return;
    }
    model_->setNotch(placement_->notch());
    host_->setSize(hostSizeFor(placement_->notch()));
    if (window_->screen() != screen) {
        window_->setScreen(screen);
    }
    applyFrame();
}

void IslandPanel::applyFrame() {
    if (model_) {
        frame_->apply(frameSizeFor(model_->islandSize(), model_->mode().kind() == ModeKind::Open));
    }
}

} // namespace kelo::shell
