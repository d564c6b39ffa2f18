#include "island_frame.h"

#include "island_geometry.h"

#include <QQuickItem>
#include <QWindow>

namespace kelo::shell {

IslandFrame::IslandFrame(QWindow& window, QQuickItem& host)
    : QObject(&window)
    , window_(&window)
    , host_(&host) {
    shrink_.setSingleShot(true);
    shrink_.setInterval(shrinkDelay);
    connect(&shrink_, &QTimer::timeout, this, [this] { resize(shrinkTarget_); });
}

void IslandFrame::setScreen(QScreen* screen) {
    screen_ = screen;
}

void IslandFrame::apply(QSize target) {
    if (!screen_ || !window_) {
        return;
    }
    const QSize current = frame_;
    shrink_.stop();
    resize(current.expandedTo(target));
    if (target.width() >= current.width() && target.height() >= current.height()) {
        return;
    }
    shrinkTarget_ = target;
    shrink_.start();
}

void IslandFrame::resize(QSize size) {
    if (!screen_ || !window_) {
        return;
    }
    frame_ = size;
    window_->setGeometry(frameOnScreen(screen_->geometry(), size));
    if (host_) {
        // Centred on the frame and hanging from its top edge; wider than the frame in every
        // mode but open, so x is mostly negative.
        host_->setPosition(QPointF((size.width() - host_->width()) / 2, 0));
    }
}

} // namespace kelo::shell
