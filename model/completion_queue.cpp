#include "completion_queue.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace kelo {

CompletionQueue::CompletionQueue(std::function<void(const Uuid&)> complete,
                                 std::function<Timestamp()> clock, QObject* parent)
    : QObject(parent)
    , complete_(std::move(complete))
    , clock_(std::move(clock))
    , timer_(new DelaySlot(this)) {
    timer_->setObjectName(u"completions"_s);
}

bool CompletionQueue::add(const Uuid& id) {
    if (contains(id)) {
        return false;
    }
    waiting_.push_back({id, clock_() + delay});
    if (!timer_->isPending()) {
        timer_->schedule(delay, [this] { completeDue(); });
    }
    Q_EMIT changed();
    return true;
}

bool CompletionQueue::contains(const Uuid& id) const {
    return std::ranges::any_of(waiting_, [&](const Waiting& waiting) { return waiting.id == id; });
}

// Completions wait in the order they were asked for, each for the same delay, so the front is
// always the next one due.
void CompletionQueue::completeDue() {
    const Waiting front = waiting_.front();
    waiting_.pop_front();
    complete_(front.id);
    Q_EMIT changed();
    if (!waiting_.empty()) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(waiting_.front().due - clock_());
        timer_->schedule(std::max(left, std::chrono::milliseconds{0}), [this] { completeDue(); });
    }
}

} // namespace kelo
