#pragma once

#include "island_outline.h"

#include <QObject>
#include <QTimer>
#include <chrono>
#include <functional>

namespace kelo::shell {

// Keeps the island's shape at the regions its mode asks for. Growth is immediate, so the view's
// growing animation is never cut off; shrinking waits half a second, so the view can animate
// down inside the larger shape first. A new target within that half second cancels the pending
// shrink and starts over from the shape as it then stands.
class IslandFrame : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds shrinkDelay{500};

    // `write` puts regions on the window; it is called only when they change.
    explicit IslandFrame(std::function<void(const IslandRegions&)> write,
                         QObject* parent = nullptr);

    void apply(const IslandRegions& target);
    // Takes the target at once, dropping a pending shrink: for a window that was just resized,
    // where the regions shown so far no longer mean the same pixels.
    void reset(const IslandRegions& target);

    [[nodiscard]] const IslandRegions& shown() const { return shown_; }

private:
    void show(const IslandRegions& regions);

    std::function<void(const IslandRegions&)> write_;
    IslandRegions shown_;
    IslandRegions shrinkTarget_;
    QTimer shrink_;
};

} // namespace kelo::shell
