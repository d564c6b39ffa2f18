#pragma once

#include "delay_slot.h"

#include <QObject>
#include <chrono>
#include <deque>
#include <functional>
#include <timestamp.h>
#include <uuid.h>

namespace kelo {

// Ticking a task off draws it done at once and completes it a moment later, so that the check
// can be seen before the row moves to Done. The completions wait here rather than in the rows,
// so that a row scrolled out of a list still completes its task. A second tick of a task that is
// waiting changes nothing.
class CompletionQueue : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds delay{450};

    // `complete` runs when a task's time has come; `clock` tells the time.
    CompletionQueue(std::function<void(const Uuid&)> complete, std::function<Timestamp()> clock,
                    QObject* parent);

    // False when the task is waiting already.
    bool add(const Uuid& id);
    [[nodiscard]] bool contains(const Uuid& id) const;

Q_SIGNALS:
    // A task started or stopped waiting.
    void changed();

private:
    void completeDue();

    struct Waiting {
        Uuid id;
        Timestamp due;
    };

    std::function<void(const Uuid&)> complete_;
    std::function<Timestamp()> clock_;
    DelaySlot* timer_;
    std::deque<Waiting> waiting_;
};

} // namespace kelo
