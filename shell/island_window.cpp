#include "island_window.h"

#include "island_model.h"
#include "x11.h"
#include "x11_island_hints.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QMoveEvent>
#include <QQuickItem>
#include <QSurfaceFormat>

namespace kelo::shell {

IslandWindow::IslandWindow(IslandModel& model)
    : model_(&model) {
    setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
             Qt::NoDropShadowWindowHint | Qt::WindowDoesNotAcceptFocus);
    QSurfaceFormat surface = format();
    surface.setAlphaBufferSize(8);
    setFormat(surface);
    setColor(Qt::transparent);
    // Qt's xcb platform maps a window with this property with _NET_WM_USER_TIME 0, which tells
    // the window manager not to focus it.
    setProperty("_q_showWithoutActivating", true);
}

void IslandWindow::place(const QRect& geometry) {
    home_ = geometry;
    setGeometry(geometry);
}

void IslandWindow::showWithoutActivating() {
    // The window manager reads the EWMH states when it maps the window.
    create();
    applyIslandHints(*this);
    mayAskAgain_ = true;
    show();
}

void IslandWindow::takeKeyboard() {
    acceptKeyboard(true);
    raise();
    requestActivate();
}

void IslandWindow::releaseKeyboard() {
    if (QQuickItem* focused = activeFocusItem()) {
        focused->setFocus(false);
    }
    const bool hadKeyboard = isActive();
    acceptKeyboard(false);
    if (const auto x = x11::connection(); x && hadKeyboard) {
        xcb_set_input_focus(x->xcb, XCB_INPUT_FOCUS_POINTER_ROOT, XCB_INPUT_FOCUS_POINTER_ROOT,
                            XCB_CURRENT_TIME);
        xcb_flush(x->xcb);
    }
}

void IslandWindow::acceptKeyboard(bool accept) {
    setFlag(Qt::WindowDoesNotAcceptFocus, !accept);
}

void IslandWindow::keyPressEvent(QKeyEvent* event) {
    QQuickWindow::keyPressEvent(event);
    if (event->key() == Qt::Key_Escape && !event->isAccepted() && model_) {
        event->accept();
        model_->escape();
    }
}

// A click gives the island the keyboard, as a click gives it to any window; the window manager
// would not, since the window said it takes none.
void IslandWindow::mousePressEvent(QMouseEvent* event) {
    // A scripted run's clicks must not take the user's keyboard.
    const bool isolated = model_ && model_->isolated();
    if (flags().testFlag(Qt::WindowDoesNotAcceptFocus) && !isolated) {
        acceptKeyboard(true);
        requestActivate();
    }
    QQuickWindow::mousePressEvent(event);
}

void IslandWindow::focusOutEvent(QFocusEvent* event) {
    QQuickWindow::focusOutEvent(event);
    acceptKeyboard(false);
    if (model_ && !model_->isolated() && model_->mode().kind() == ModeKind::Open) {
        model_->setMode(Mode::closed());
    }
}

void IslandWindow::moveEvent(QMoveEvent* event) {
    QQuickWindow::moveEvent(event);
    if (home_ && mayAskAgain_ && isVisible() && event->pos() != home_->topLeft()) {
        mayAskAgain_ = false;
        setPosition(home_->topLeft());
    }
}

} // namespace kelo::shell
