#pragma once

#include "island_metrics.h"

#include <QPainterPath>
#include <QRegion>
#include <QSizeF>

// What the island occupies of its still window: the X shape regions that follow its outline.
namespace kelo::shell {

// The island's outline in a rectangle of `size` whose top edge is the screen's: flared top
// corners that meet the edge, the sides inset by the top radius, rounded bottom corners.
[[nodiscard]] QPainterPath islandOutline(QSizeF size, metrics::Radii radii);

// The two shape regions of the island's window, in the window's device pixels. Outside the
// bounding region nothing of the window is shown; outside the input region the pointer belongs
// to the windows below.
struct IslandRegions {
    QRegion bounding;
    QRegion input;

    bool operator==(const IslandRegions&) const = default;
};

// What the regions follow.
struct IslandShapeFacts {
    qreal windowWidth = 0; // in points; the island hangs from the top centre
    QSizeF island;         // the model's island size
    ModeKind mode = ModeKind::Closed;
    // Whether a compositing manager runs: only then does the window's alpha show, so only then
    // may the bounding region hold the antialiased edge and the open island's shadow.
    bool composited = false;
    qreal devicePixelRatio = 1;
};

// The input region is the outline. Without a compositor the bounding region is the outline too,
// since every pixel it holds is shown opaque. With one it also holds the pixels the outline's
// edge touches, and when open the shadow's room below and beside the island.
[[nodiscard]] IslandRegions islandRegions(const IslandShapeFacts& facts);

} // namespace kelo::shell
