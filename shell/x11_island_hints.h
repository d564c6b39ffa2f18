#pragma once

class QWindow;

namespace kelo::shell {

// Asks the X11 window manager to treat the island like a panel: above other windows, on every
// desktop, and absent from task bars, pagers and window cycling. Qt's own window flags cover
// "above" only, so the rest is written as EWMH properties.
//
// Must run after the native window exists and before it is first shown: these properties are
// read by the window manager when it maps the window, and Qt keeps states it finds already set.
// Does nothing outside X11.
void applyIslandHints(QWindow& window);

} // namespace kelo::shell
