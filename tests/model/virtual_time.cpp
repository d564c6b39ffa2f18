#include "virtual_time.h"

#include <QPointer>
#include <algorithm>

namespace kelo::testing {

VirtualTime::VirtualTime(Timestamp start)
    : now_(start) {}

std::function<Timestamp()> VirtualTime::clock() const {
    return [time = QPointer(this)] { return time->now(); };
}

void VirtualTime::watch(const QObject& owner) {
    for (DelaySlot* slot : owner.findChildren<DelaySlot*>()) {
        connect(slot, &DelaySlot::scheduled, this,
                [this, slot] { deadlines_[slot] = now_ + *slot->delay(); });
        connect(slot, &QObject::destroyed, this, [this, slot] { deadlines_.erase(slot); });
    }
}

void VirtualTime::advance(std::chrono::milliseconds span) {
    advanceTo(now_ + span);
}

void VirtualTime::advanceTo(Timestamp time) {
    for (;;) {
        const auto next = std::min_element(deadlines_.begin(), deadlines_.end(),
                                           [](const auto& a, const auto& b) {
                                               if (a.first->isPending() != b.first->isPending()) {
                                                   return a.first->isPending();
                                               }
                                               return a.second < b.second;
                                           });
        if (next == deadlines_.end() || !next->first->isPending() || next->second > time) {
            break;
        }
        now_ = std::max(now_, next->second);
        next->first->fire();
    }
    now_ = std::max(now_, time);
}

} // namespace kelo::testing
