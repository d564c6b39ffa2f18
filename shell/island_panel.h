#pragma once

#include "compositor_watch.h"

#include <QObject>
#include <QPointer>
#include <QQmlEngine>
#include <QRegion>
#include <QTimer>
#include <memory>
#include <optional>

class QQuickItem;

namespace kelo {
class IslandModel;
}

namespace kelo::shell {

class IslandFrame;
class IslandWindow;
class ScreenPlacement;
struct IslandRegions;

// The island on the desktop: one still window with the IslandView in it, placed over the notch
// at the size of the largest island, and shaped like the island the model asks for. It writes
// the measured notch and whether a compositor runs into the model, and follows the model's
// island size, mode and theme from then on.
//
// The window is mapped once and moves or resizes only when the screen changes: window managers
// differ in how they place, move and resize a window that asks for it (some keep its bottom edge
// clear of a panel's strip, some place it anew after a resize), and a window that never asks is
// left where it was mapped. What changes with the island is only the window's shape.
class IslandPanel : public QObject {
    Q_OBJECT

public:
    // Builds, places and shows the island; it does not take the keyboard.
    IslandPanel(IslandModel& model, std::unique_ptr<ScreenPlacement> placement);
    ~IslandPanel() override;

    [[nodiscard]] IslandWindow& window() const { return *window_; }

    // Where the island is drawn in the window now.
    [[nodiscard]] QRectF islandFrame() const;
    // For the self-check and snapshot runs: from now on the window shows nothing and lets the
    // pointer through, while the island goes on being drawn (and grabbed) inside it.
    void hide();

private:
    void placeOnScreen();
    void applyShape();
    [[nodiscard]] IslandRegions targetRegions() const;

    QPointer<IslandModel> model_;
    // Declared before the window so that the window, and the view items in it, go first.
    QQmlEngine engine_;
    std::unique_ptr<IslandWindow> window_;
    std::unique_ptr<QQuickItem> host_;
    std::unique_ptr<ScreenPlacement> placement_;
    CompositorWatch compositor_;
    IslandFrame* frame_ = nullptr;
    // What the compositor was last asked to blur behind the glass island.
    std::optional<QRegion> blurred_;
    bool hidden_ = false;
    // Several of the model's properties change in one operation; the shape follows once, from
    // the event loop, when they all hold their new values.
    QTimer follow_;
};

} // namespace kelo::shell
