#pragma once

#include <QPointer>
#include <QQuickWindow>
#include <QRect>
#include <optional>

namespace kelo {
class IslandModel;
}

namespace kelo::shell {

// The one window of Kelo: frameless, transparent, above everything, on every desktop and in no
// task bar. It is mapped once and stays mapped.
//
// It takes the keyboard only when asked (takeKeyboard(), when the model opens the island from
// the hot key) or when clicked, so appearing and hovering leave the user's typing alone. Until
// then it tells the window manager that it takes no keyboard input: window managers that ignore
// the user time of a window they map (fluxbox) would otherwise give it the keyboard at once.
//
// It also routes the two keyboard events the island reacts to as a whole: Esc that no view used
// goes to the model's escape(), and losing the keyboard while open closes the island, as clicking
// into another application should.
class IslandWindow : public QQuickWindow {
    Q_OBJECT

public:
    explicit IslandWindow(IslandModel& model);

    // Where the window belongs; it goes there at once.
    void place(const QRect& geometry);

    // Shows the window without giving it the keyboard.
    void showWithoutActivating();

    // Accepts the keyboard again and asks the window manager for it.
    void takeKeyboard();
    // Lets go of the keyboard without handing it to anyone: the X input focus follows the
    // pointer until the user or the window manager gives it to a window.
    void releaseKeyboard();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void moveEvent(QMoveEvent* event) override;

private:
    void acceptKeyboard(bool accept);

    QPointer<IslandModel> model_;
    std::optional<QRect> home_;
    // Some window managers place a utility window themselves when they map it, whatever
    // position it asks for: fluxbox puts it in the top left corner, i3 moves it by the title bar
    // it first meant to give it. The window asks for its place once more after being mapped,
    // and only once, so that it never fights a window manager that insists.
    bool mayAskAgain_ = false;
};

} // namespace kelo::shell
