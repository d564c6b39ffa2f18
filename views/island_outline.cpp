#include "island_outline.h"

#include <island_metrics.h>

namespace kelo::views {

double IslandOutline::topRadius(island::ModeKind mode) {
    return metrics::radii(mode).top;
}

double IslandOutline::bottomRadius(island::ModeKind mode) {
    return metrics::radii(mode).bottom;
}

} // namespace kelo::views
