#include "island_window.h"

#include "island_model.h"
#include "x11_island_hints.h"

#include <QKeyEvent>
#include <QSurfaceFormat>

namespace kelo::shell {

IslandWindow::IslandWindow(IslandModel& model)
    : model_(&model) {
    setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
             Qt::NoDropShadowWindowHint);
    QSurfaceFormat surface = format();
    surface.setAlphaBufferSize(8);
    setFormat(surface);
    setColor(Qt::transparent);
    // Qt's xcb platform maps a window with this property with _NET_WM_USER_TIME 0, which tells
    // the window manager not to focus it.
    setProperty("_q_showWithoutActivating", true);
}

void IslandWindow::showWithoutActivating() {
    // The window manager drops the EWMH states of a window that is unmapped, so they are written
    // again before every mapping.
    create();
    applyIslandHints(*this);
    show();
}

void IslandWindow::keyPressEvent(QKeyEvent* event) {
    QQuickWindow::keyPressEvent(event);
    if (event->key() == Qt::Key_Escape && !event->isAccepted() && model_) {
        event->accept();
        model_->escape();
    }
}

void IslandWindow::focusOutEvent(QFocusEvent* event) {
    QQuickWindow::focusOutEvent(event);
    if (model_ && !model_->isolated() && model_->mode().kind() == ModeKind::Open) {
        model_->setMode(Mode::closed());
    }
}

} // namespace kelo::shell
