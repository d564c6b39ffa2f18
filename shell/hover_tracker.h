#pragma once

#include <QObject>
#include <QPointer>

class QWindow;

namespace kelo {
class IslandModel;
}

namespace kelo::shell {

// Reports the pointer entering and leaving the island to the model, which decides what hovering
// does and when. The window takes the pointer only inside its input shape, the island's outline,
// so the window's Enter and Leave are the outline's; the shape keeps a larger mode's outline for
// a moment after shrinking, so the island does not flicker between peek and closed while it
// animates down. Silent while the model is isolated, so a scripted run is not disturbed by a
// stray pointer.
class HoverTracker : public QObject {
    Q_OBJECT

public:
    HoverTracker(QWindow& window, IslandModel& model);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPointer<IslandModel> model_;
};

} // namespace kelo::shell
