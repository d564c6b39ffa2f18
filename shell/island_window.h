#pragma once

#include <QPointer>
#include <QQuickWindow>

namespace kelo {
class IslandModel;
}

namespace kelo::shell {

// The one window of Kelo: frameless, transparent, above everything, on every desktop and in no
// task bar. It never takes the keyboard by being shown or resized, only when the model asks for
// it (see DesktopPlatform::makePanelKey), so hovering the notch leaves the user's typing alone.
//
// It also routes the two keyboard events the island reacts to as a whole: Esc that no view used
// goes to the model's escape(), and losing the keyboard while open closes the island, as clicking
// into another application should.
class IslandWindow : public QQuickWindow {
    Q_OBJECT

public:
    explicit IslandWindow(IslandModel& model);

    // Shows the window without giving it the keyboard. Also used to hand the keyboard back: the
    // window manager passes the focus on when the window is unmapped, and mapping it again
    // without activation leaves the focus there.
    void showWithoutActivating();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    QPointer<IslandModel> model_;
};

} // namespace kelo::shell
