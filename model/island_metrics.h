#pragma once

#include "island_types.h"

#include <QSizeF>
#include <algorithm>

// The island's measurements, in points, defined once for the model (its size per mode), the
// views (the outline) and the shell (the window and its shape).
namespace kelo::metrics {

// Widths beyond the notch's.
inline constexpr double closedExtraWidth = 12;
// The closed island widens by this much when today has tasks: room for the ring and the label.
inline constexpr double plannedExtraWidth = 88;
inline constexpr double peekExtraWidth = 200;
inline constexpr double peekExtraHeight = 30;
inline constexpr double openExtraWidth = 460;
inline constexpr double openMaxHeight = 480;
inline constexpr double alertExtraWidth = 260;
inline constexpr double alertMinWidth = 440;
inline constexpr double alertExtraHeight = 54;

// Room around the open island for its drop shadow.
inline constexpr double shadowMarginWidth = 60;
inline constexpr double shadowMarginHeight = 40;

// The island's size in a mode, for a notch and (when open) the open view's measured height.
[[nodiscard]] inline QSizeF islandSize(ModeKind mode, QSizeF notch, bool planned,
                                       double openHeight) {
    const double nw = notch.width();
    const double nh = notch.height();
    switch (mode) {
    case ModeKind::Closed:
        return {nw + closedExtraWidth + (planned ? plannedExtraWidth : 0), nh};
    case ModeKind::Peek:
        return {nw + peekExtraWidth, nh + peekExtraHeight};
    case ModeKind::Open:
        return {nw + openExtraWidth, std::min(openHeight, openMaxHeight)};
    case ModeKind::Alert:
        return {std::max(nw + alertExtraWidth, alertMinWidth), nh + alertExtraHeight};
    }
    return notch;
}

// The largest island there can be for a notch, shadow included: the open island at its
// greatest height.
[[nodiscard]] inline QSizeF largestIsland(QSizeF notch) {
    return {notch.width() + openExtraWidth + shadowMarginWidth, openMaxHeight + shadowMarginHeight};
}

// The radii of the outline: the flared top corners and the rounded bottom ones.
struct Radii {
    double top = 0;
    double bottom = 0;

    bool operator==(const Radii&) const = default;
};

[[nodiscard]] constexpr Radii radii(ModeKind mode) {
    switch (mode) {
    case ModeKind::Open:
        return {10, 24};
    case ModeKind::Closed:
        return {6, 10};
    case ModeKind::Peek:
    case ModeKind::Alert:
        break;
    }
    return {6, 16};
}

} // namespace kelo::metrics
