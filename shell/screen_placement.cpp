#include "screen_placement.h"

#include "island_geometry.h"

#include <QGuiApplication>

namespace kelo::shell {

ScreenPlacement::ScreenPlacement(std::optional<int> notchPixels, QObject* parent)
    : QObject(parent)
    , notchPixels_(notchPixels) {
    const auto* app = qGuiApp;
    connect(app, &QGuiApplication::screenAdded, this, [this](QScreen* screen) {
        watch(screen);
        Q_EMIT screensChanged();
    });
    // A removed screen is still in the list while this signal is delivered; the re-measuring
    // waits for the event loop, by which time it is gone.
    connect(app, &QGuiApplication::screenRemoved, this, &ScreenPlacement::screensChanged,
            Qt::QueuedConnection);
    connect(app, &QGuiApplication::primaryScreenChanged, this, &ScreenPlacement::screensChanged);
    for (QScreen* screen : QGuiApplication::screens()) {
        watch(screen);
    }
}

void ScreenPlacement::watch(QScreen* screen) {
    connect(screen, &QScreen::geometryChanged, this, &ScreenPlacement::screensChanged);
    connect(screen, &QScreen::availableGeometryChanged, this, &ScreenPlacement::screensChanged);
}

void ScreenPlacement::measure() {
    const QList<QScreen*> screens = QGuiApplication::screens();
    QList<ScreenFacts> facts;
    facts.reserve(screens.size());
    for (const QScreen* screen : screens) {
        facts.append({screen->name(), screen->geometry(), screen->availableGeometry(),
                      screen->devicePixelRatio()});
    }
    const auto placement =
        placeNotch(facts, screens.indexOf(QGuiApplication::primaryScreen()), notchPixels_);
    if (!placement) {
        screen_ = nullptr;
        return;
    }
    screen_ = screens[placement->screen];
    notch_ = placement->notch;
}

} // namespace kelo::shell
