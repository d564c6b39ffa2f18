#include "delay_slot.h"

#include <utility>

namespace kelo {

DelaySlot::DelaySlot(QObject* parent)
    : QObject(parent) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &DelaySlot::fire);
}

void DelaySlot::schedule(std::chrono::milliseconds delay, std::function<void()> work) {
    work_ = std::move(work);
    timer_.start(delay);
    Q_EMIT scheduled();
}

void DelaySlot::cancel() {
    timer_.stop();
    work_.reset();
}

std::optional<std::chrono::milliseconds> DelaySlot::delay() const {
    if (!work_) {
        return std::nullopt;
    }
    return timer_.intervalAsDuration();
}

void DelaySlot::fire() {
    if (!work_) {
        return;
    }
    timer_.stop();
    auto work = std::exchange(work_, std::nullopt);
    (*work)();
}

} // namespace kelo
