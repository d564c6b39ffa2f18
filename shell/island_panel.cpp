#include "island_panel.h"

#include "hover_tracker.h"
#include "island_frame.h"
#include "island_geometry.h"
#include "island_model.h"
#include "island_window.h"
#include "screen_placement.h"
#include "system_log.h"
#include "x11_shape.h"

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
    frame_ = new IslandFrame(
        [window = QPointer<IslandWindow>(window_.get())](const IslandRegions& regions) {
            if (window) {
                shell::applyShape(*window, regions);
            }
        },
        this);
    new HoverTracker(*window_, model);

    follow_.setSingleShot(true);
    follow_.setInterval(0);
    connect(&follow_, &QTimer::timeout, this, &IslandPanel::applyShape);
    for (const auto change : {&IslandModel::islandSizeChanged, &IslandModel::modeChanged,
                              &IslandModel::glassMaterialChanged}) {
        connect(&model, change, &follow_, qOverload<>(&QTimer::start));
    }
    connect(model.preferences(), &Preferences::themeChanged, &follow_, qOverload<>(&QTimer::start));
    connect(&compositor_, &CompositorWatch::runningChanged, &model, &IslandModel::setGlassMaterial);
    connect(&compositor_, &CompositorWatch::runningChanged, &follow_, qOverload<>(&QTimer::start));
    connect(placement_.get(), &ScreenPlacement::screensChanged, this, &IslandPanel::placeOnScreen);

    model.setGlassMaterial(compositor_.running());
    placeOnScreen();
    window_->showWithoutActivating();
}

IslandPanel::~IslandPanel() = default;

void IslandPanel::placeOnScreen() {
    placement_->measure();
    QScreen* screen = placement_->screen();
    if (!screen || !model_) {
        return;
    }
    model_->setNotch(placement_->notch());
    if (window_->screen() != screen) {
        window_->setScreen(screen);
    }
    const QRect geometry = windowOnScreen(screen->geometry(), placement_->notch());
    if (window_->geometry() == geometry) {
        applyShape();
        return;
    }
    window_->place(geometry);
    // The view lays the island out at the top centre of the window, whatever the window's size.
    host_->setSize(geometry.size());
    frame_->reset(hidden_ ? IslandRegions{} : targetRegions());
}

QRectF IslandPanel::islandFrame() const {
    const QSizeF island = model_ ? model_->islandSize() : QSizeF();
    return {(window_->width() - island.width()) / 2, 0, island.width(), island.height()};
}

void IslandPanel::hide() {
    hidden_ = true;
    window_->setOpacity(0);
    frame_->reset(IslandRegions{});
    if (blurred_) {
        blurred_.reset();
        setBlurBehind(*window_, std::nullopt);
    }
}

void IslandPanel::applyShape() {
    if (!model_ || hidden_) {
        return;
    }
    const IslandRegions target = targetRegions();
    frame_->apply(target);
    const bool glassShown = model_->preferences()->theme() == IslandTheme::Glass &&
                            model_->glassMaterial() && model_->mode().kind() != ModeKind::Closed;
    const std::optional<QRegion> blur =
        glassShown ? std::optional<QRegion>(target.input) : std::nullopt;
    if (blur != blurred_) {
        blurred_ = blur;
        setBlurBehind(*window_, blur);
    }
}

IslandRegions IslandPanel::targetRegions() const {
    return islandRegions({.windowWidth = static_cast<qreal>(window_->width()),
                          .island = model_->islandSize(),
                          .mode = model_->mode().kind(),
                          .composited = compositor_.running(),
                          .devicePixelRatio = window_->devicePixelRatio()});
}

} // namespace kelo::shell
