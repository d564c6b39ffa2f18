#pragma once

#include "island_outline.h"

#include <QRegion>
#include <optional>

class QWindow;

namespace kelo::shell {

// Gives the island's window its X shape: what is shown of it (the bounding region) and where it
// takes the pointer (the input region). Outside X11 only the input region can be had, through
// Qt's window mask; there a compositor always runs, so what is outside the island is clear anyway.
void applyShape(QWindow& window, const IslandRegions& regions);

// Asks the compositor to blur what lies behind `region` of the window (KWin's
// _KDE_NET_WM_BLUR_BEHIND_REGION); none removes the request. Other compositors ignore it.
void setBlurBehind(QWindow& window, const std::optional<QRegion>& region);

} // namespace kelo::shell
