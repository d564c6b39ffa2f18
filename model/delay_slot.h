#pragma once

#include <QObject>
#include <QTimer>
#include <chrono>
#include <functional>
#include <optional>

namespace kelo {

// One slot of delayed work on the main thread: scheduling replaces what the slot held, cancelling
// drops it. The slot is a child of the object whose work it runs, so the work dies with that
// object and never runs against a destroyed one.
class DelaySlot : public QObject {
    Q_OBJECT

public:
    explicit DelaySlot(QObject* parent);

    void schedule(std::chrono::milliseconds delay, std::function<void()> work);
    void cancel();

    [[nodiscard]] bool isPending() const { return work_.has_value(); }
    // The delay the pending work was scheduled with.
    [[nodiscard]] std::optional<std::chrono::milliseconds> delay() const;

    // Runs the pending work now, as if its time had come; the slot is empty before it runs, so
    // the work may schedule the slot again. Tests that keep virtual time call this.
    void fire();

Q_SIGNALS:
    // Emitted after every schedule, so that a virtual clock can note the deadline.
    void scheduled();

private:
    QTimer timer_;
    std::optional<std::function<void()>> work_;
};

} // namespace kelo
