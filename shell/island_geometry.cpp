#include "island_geometry.h"

#include "island_metrics.h"

#include <algorithm>
#include <cmath>

namespace kelo::shell {
namespace {

bool isBuiltInPanel(const QString& name) {
    return name.startsWith(QLatin1String("eDP")) || name.startsWith(QLatin1String("LVDS")) ||
           name.startsWith(QLatin1String("DSI"));
}

} // namespace

std::optional<NotchPlacement> placeNotch(const QList<ScreenFacts>& screens, qsizetype primary,
                                         std::optional<int> notchPixels) {
    if (screens.isEmpty()) {
        return std::nullopt;
    }
    const qsizetype fallbackScreen = primary >= 0 && primary < screens.size() ? primary : 0;
    if (notchPixels) {
        const auto builtIn = std::find_if(screens.begin(), screens.end(), [](const auto& screen) {
            return isBuiltInPanel(screen.name);
        });
        const qsizetype index =
            builtIn != screens.end() ? std::distance(screens.begin(), builtIn) : fallbackScreen;
        const qreal ratio = std::max<qreal>(screens[index].devicePixelRatio, 1);
        return NotchPlacement{index, QSizeF(fallbackNotchWidth, *notchPixels / ratio)};
    }
    const ScreenFacts& screen = screens[fallbackScreen];
    const qreal topPanel = screen.available.top() - screen.geometry.top();
    return NotchPlacement{fallbackScreen,
                          QSizeF(fallbackNotchWidth, std::max(topPanel, minimumNotchHeight))};
}

QRect windowOnScreen(const QRect& screen, QSizeF notch) {
    const QSizeF largest = metrics::largestIsland(notch);
    const QSize size(static_cast<int>(std::ceil(largest.width())),
                     static_cast<int>(std::ceil(largest.height())));
    return QRect(screen.x() + (screen.width() - size.width()) / 2, screen.y(), size.width(),
                 size.height());
}

} // namespace kelo::shell
