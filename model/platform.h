#pragma once

#include <QObject>
#include <QString>
#include <cstdint>
#include <optional>

namespace kelo {

// Another running application as the desktop names it. On X11 this is the window that held the
// keyboard (the _NET_ACTIVE_WINDOW of the moment), which is what the window manager can be asked
// to activate again.
struct ApplicationRef {
    std::uint64_t handle = 0;

    bool operator==(const ApplicationRef&) const = default;
};

// Everything the island model asks of the desktop. The shell implements it for X11; tests and
// isolated runs use NullPlatform. Every call may do nothing on a desktop that lacks the service,
// and the panel calls are skipped while no panel exists.
class Platform : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    // Whether Kelo is the active application (one of its windows has the desktop's focus).
    [[nodiscard]] virtual bool isActive() const = 0;
    virtual void activate() = 0;
    virtual void deactivate() = 0;

    // The application that has the keyboard now, remembered before Kelo takes it.
    [[nodiscard]] virtual std::optional<ApplicationRef> frontmost() const = 0;
    [[nodiscard]] virtual bool isThisApplication(const ApplicationRef& app) const = 0;
    // Yields activation to the application and asks it to activate itself; true when the desktop
    // accepted the request.
    [[nodiscard]] virtual bool handBack(const ApplicationRef& app) = 0;

    // Makes the island panel the key window and brings it to the front.
    virtual void makePanelKey() = 0;
    [[nodiscard]] virtual bool isPanelKey() const = 0;
    // Gives the keyboard back without activating anything: drops the panel's focus item, orders
    // the panel out and at once front again without making it key. A panel can be key while Kelo
    // is not active, and then key strokes would otherwise stay with it.
    virtual void releaseKeyboard() = 0;

    // Shows the file in the desktop's file manager, or at least its folder.
    virtual void revealFile(const QString& path) = 0;
    // Ends Kelo.
    virtual void quit() = 0;

    virtual void playReminderSound() = 0;
    // The short alignment tap. Linux desktops have no haptic device, but the seam stays so that
    // the model asks at the right moments.
    virtual void performHaptic() = 0;
};

} // namespace kelo
