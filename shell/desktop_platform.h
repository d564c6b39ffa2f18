#pragma once

#include "platform.h"
#include "reminder_sound.h"

#include <QPointer>

namespace kelo::shell {

class IslandWindow;

// The model's desktop on X11. X11 has no application activation apart from windows, so Kelo is
// active exactly when its island window has the keyboard, and "another application" is the
// window that had it (the root's _NET_ACTIVE_WINDOW). Activation goes through the window
// manager, as a pager's request.
class DesktopPlatform final : public Platform {
    Q_OBJECT

public:
    using Platform::Platform;

    // The panel's window, once it exists; the panel calls do nothing before.
    void setPanel(IslandWindow* window);

    [[nodiscard]] bool isActive() const override;
    void activate() override;
    void deactivate() override;

    [[nodiscard]] std::optional<ApplicationRef> frontmost() const override;
    [[nodiscard]] bool isThisApplication(const ApplicationRef& app) const override;
    [[nodiscard]] bool handBack(const ApplicationRef& app) override;

    void makePanelKey() override;
    [[nodiscard]] bool isPanelKey() const override;
    void releaseKeyboard() override;

    void revealFile(const QString& path) override;
    void quit() override;

    void playReminderSound() override;
    void performHaptic() override;

private:
    QPointer<IslandWindow> panel_;
    ReminderSound sound_;
};

} // namespace kelo::shell
