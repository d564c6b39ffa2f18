#pragma once

#include <QObject>
#include <QPointer>
#include <QScreen>
#include <QSize>
#include <QTimer>

class QQuickItem;
class QWindow;

namespace kelo::shell {

// Keeps the window's frame at the size the island asks for. Growth is immediate, so the view's
// growing animation is never clipped; shrinking waits half a second, so the view can animate
// down inside the larger frame first. A new size within that half second cancels the pending
// shrink and starts over from the frame as it then stands.
class IslandFrame : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds shrinkDelay{500};

    IslandFrame(QWindow& window, QQuickItem& host);

    // The screen to hang from; without one, apply() keeps the frame as it is.
    void setScreen(QScreen* screen);
    void apply(QSize target);

private:
    void resize(QSize size);

    QPointer<QWindow> window_;
    QPointer<QQuickItem> host_;
    QPointer<QScreen> screen_;
    // The size last asked for. The window's own size follows only when the window system has
    // confirmed it, which is too late for a change that comes right after.
    QSize frame_;
    QTimer shrink_;
    QSize shrinkTarget_;
};

} // namespace kelo::shell
