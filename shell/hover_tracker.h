#pragma once

#include <QObject>
#include <QPointer>

class QWindow;

namespace kelo {
class IslandModel;
}

namespace kelo::shell {

// Reports the pointer entering and leaving the island's window to the model, which decides what
// hovering does and when. The whole window counts, transparent margins included, so the island
// does not flicker between peek and closed while it animates inside a larger frame. Silent while
// the model is isolated, so a scripted run is not disturbed by a stray pointer.
class HoverTracker : public QObject {
    Q_OBJECT

public:
    HoverTracker(QWindow& window, IslandModel& model);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPointer<IslandModel> model_;
};

} // namespace kelo::shell
