#pragma once

#include "system_log.h"

#include <QDBusConnection>
#include <QObject>
#include <memory>
#include <string>
#include <string_view>

namespace kelo::shell {

// Ctrl+Alt+T from any application. Each kind of session offers a global key its own way; the
// delegate holds whichever one the session supports and only ever sees presses.
class HotKey : public QObject {
    Q_OBJECT

public:
    explicit HotKey(QObject* parent = nullptr)
        : QObject(parent) {}

    // Asks for Ctrl+Alt+T for the rest of the process's life. A failure writes one log line,
    // "Kelo: could not register ⌃⌥T (<status>). Click the notch instead.", and nothing else:
    // the island stays usable by pointer.
    virtual void registerCtrlAltT() = 0;

Q_SIGNALS:
    // One press, always delivered from the event loop, never from inside Qt's event dispatch.
    void activated();
};

// The one log line of a failed registration; the status is the number the desktop refused with.
[[nodiscard]] std::string registrationFailure(std::string_view status);

// In a Wayland session (WAYLAND_DISPLAY set, or XDG_SESSION_TYPE "wayland") the desktop portal's
// global shortcuts, when the bus has a portal that offers them: Kelo runs through XWayland
// there, and an X11 grab only hears keys while an X11 window has the keyboard. Everywhere else
// the grab on the X11 root window. Asking the bus may block for a few seconds while the portal
// starts.
//
// A Wayland session without the portal (GNOME up to 47) gets the grab too, for the keys typed
// into X11 windows, and one log line (wantingPortal) that tells the user to bind a key to
// `kelo --toggle` in the desktop's keyboard settings.
[[nodiscard]] std::unique_ptr<HotKey>
makeHotKey(const QDBusConnection& bus = QDBusConnection::sessionBus(),
           const LogSink& log = systemLog);

// The log line of a Wayland session without global shortcuts.
inline constexpr std::string_view wantingPortal =
    "Kelo: this Wayland session offers no global shortcuts, so Ctrl+Alt+T reaches Kelo only while "
    "an X11 window has the keyboard. Bind a key to \"kelo --toggle\" in the desktop's keyboard "
    "settings (GNOME: Settings, Keyboard, Custom Shortcuts).";

} // namespace kelo::shell
