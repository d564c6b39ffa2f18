#pragma once

#include <QList>
#include <QRect>
#include <QSizeF>
#include <QString>
#include <optional>

// The arithmetic of placing the island, kept apart from QScreen and QWindow so that it can be
// checked without a display. Sizes are in points (Qt's device-independent pixels).
namespace kelo::shell {

// What placement needs to know about one screen.
struct ScreenFacts {
    QString name;    // the output's name, e.g. "eDP-1"
    QRect geometry;  // the whole screen
    QRect available; // without the desktop's panels
    qreal devicePixelRatio = 1;
};

struct NotchPlacement {
    qsizetype screen = 0; // index into the screens passed in
    QSizeF notch;
};

// Where the camera notch is when the system cannot tell: about the width of a real one, and as
// tall as the top panel that the island then sits over.
inline constexpr qreal fallbackNotchWidth = 185;
inline constexpr qreal minimumNotchHeight = 24;

// The notched screen first; else the primary screen with the fallback notch. `notchPixels` is the
// device's notch height in device pixels, when it reports one (see deviceNotchHeight()); it
// belongs to the built-in panel, which X11 and DRM name eDP (or LVDS, DSI on older hardware).
// When no output carries such a name (XWayland names its outputs after itself) the primary
// screen is taken to be the built-in one. None without screens.
[[nodiscard]] std::optional<NotchPlacement>
placeNotch(const QList<ScreenFacts>& screens, qsizetype primary, std::optional<int> notchPixels);

// The island's window: as large as the largest island there can be for the notch, in whole
// pixels, hanging from the top edge of the screen and centred on it (the notch is centred on the
// screen). The window keeps this place while the island changes; the island shows only where
// its shape lets it.
[[nodiscard]] QRect windowOnScreen(const QRect& screen, QSizeF notch);

} // namespace kelo::shell
