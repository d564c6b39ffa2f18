#include "hot_key.h"

#include "global_hot_key.h"
#include "portal_hot_key.h"

#include <QtGlobal>

namespace kelo::shell {

std::string registrationFailure(std::string_view status) {
    return "Kelo: could not register ⌃⌥T (" + std::string(status) + "). Click the notch instead.";
}
namespace {

// Kelo itself runs on the xcb platform under Wayland, so Qt's platform name cannot tell.
bool isWaylandSession() {
    return qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
           qEnvironmentVariable("XDG_SESSION_TYPE") == QLatin1String("wayland");
}

} // namespace

std::unique_ptr<HotKey> makeHotKey(const QDBusConnection& bus, const LogSink& log) {
    if (isWaylandSession()) {
        if (PortalHotKey::isAvailable(bus)) {
            return std::make_unique<PortalHotKey>(PortalHotKey::Options{.bus = bus, .log = log});
        }
        log(wantingPortal);
    }
    return std::make_unique<GlobalHotKey>();
}

} // namespace kelo::shell
