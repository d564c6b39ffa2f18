#include "desktop_tool_tip.h"

#include <QToolTip>

namespace kelo::views {

void DesktopToolTip::show(QQuickItem* item, const QString& text) {
    if (!item || !item->window()) {
        return;
    }
    const QPointF below(item->width() / 2, item->height() + 4);
    QToolTip::showText(item->mapToGlobal(below).toPoint(), text);
}

void DesktopToolTip::hide() {
    QToolTip::hideText();
}

} // namespace kelo::views
