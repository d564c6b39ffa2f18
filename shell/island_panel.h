#pragma once

#include <QObject>
#include <QPointer>
#include <QQmlEngine>
#include <QTimer>
#include <memory>

class QQuickItem;

namespace kelo {
class IslandModel;
}

namespace kelo::shell {

class IslandFrame;
class IslandWindow;
class ScreenPlacement;

// The island on the desktop: its window with the IslandView in it, placed over the notch and
// sized after the model. It writes the measured notch into the model and follows the model's
// island size and mode from then on.
class IslandPanel : public QObject {
    Q_OBJECT

public:
    // Builds, places and shows the island; it does not take the keyboard.
    IslandPanel(IslandModel& model, std::unique_ptr<ScreenPlacement> placement);
    ~IslandPanel() override;

    [[nodiscard]] IslandWindow& window() const { return *window_; }

private:
    void placeOnScreen();
    void applyFrame();

    QPointer<IslandModel> model_;
    // Declared before the window so that the window, and the view items in it, go first.
    QQmlEngine engine_;
    std::unique_ptr<IslandWindow> window_;
    std::unique_ptr<QQuickItem> host_;
    std::unique_ptr<ScreenPlacement> placement_;
    IslandFrame* frame_ = nullptr;
    // Several of the model's properties change in one operation; the frame follows once, from
    // the event loop, when they all hold their new values.
    QTimer follow_;
};

} // namespace kelo::shell
