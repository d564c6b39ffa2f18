#include "hover_tracker.h"

#include "island_model.h"

#include <QEvent>
#include <QWindow>

namespace kelo::shell {

HoverTracker::HoverTracker(QWindow& window, IslandModel& model)
    : QObject(&window)
    , model_(&model) {
    window.installEventFilter(this);
}

bool HoverTracker::eventFilter(QObject* watched, QEvent* event) {
    const bool entered = event->type() == QEvent::Enter;
    if ((entered || event->type() == QEvent::Leave) && model_ && !model_->isolated()) {
        model_->hover(entered);
    }
    return QObject::eventFilter(watched, event);
}

} // namespace kelo::shell
