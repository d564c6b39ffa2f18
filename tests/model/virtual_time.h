#pragma once

#include <QObject>
#include <chrono>
#include <delay_slot.h>
#include <functional>
#include <map>
#include <timestamp.h>

namespace kelo::testing {

// Time that passes only when a test says so. It is the clock of the model under test, and it
// runs the model's delayed work when its deadline is reached, in deadline order, so a test of
// the 12 s alert takes no time at all.
class VirtualTime : public QObject {
    Q_OBJECT

public:
    explicit VirtualTime(Timestamp start);

    [[nodiscard]] Timestamp now() const { return now_; }
    [[nodiscard]] std::function<Timestamp()> clock() const;

    // Follows the delay slots among the owner's children.
    void watch(const QObject& owner);

    // Moves time forward, running every piece of delayed work that comes due on the way.
    void advance(std::chrono::milliseconds span);
    void advanceTo(Timestamp time);

private:
    Timestamp now_;
    std::map<DelaySlot*, Timestamp> deadlines_;
};

} // namespace kelo::testing
