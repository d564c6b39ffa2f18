#include "desktop_platform.h"

#include "island_window.h"
#include "x11.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDesktopServices>
#include <QFileInfo>
#include <QGuiApplication>
#include <QUrl>
#include <system_log.h>

using namespace Qt::StringLiterals;

namespace kelo::shell {

void DesktopPlatform::setPanel(IslandWindow* window) {
    panel_ = window;
}

bool DesktopPlatform::isActive() const {
    return QGuiApplication::applicationState() == Qt::ApplicationActive;
}

void DesktopPlatform::activate() {
    makePanelKey();
}

void DesktopPlatform::deactivate() {
    // Nothing to hand the keyboard to by name: let the window manager choose, as it does when a
    // focused window goes away.
    releaseKeyboard();
}

std::optional<ApplicationRef> DesktopPlatform::frontmost() const {
    const auto x = x11::connection();
    if (!x) {
        return std::nullopt;
    }
    const xcb_window_t active = x11::activeWindow(*x);
    if (active == XCB_NONE) {
        return std::nullopt;
    }
    return ApplicationRef{active};
}

bool DesktopPlatform::isThisApplication(const ApplicationRef& app) const {
    return panel_ && app.handle == static_cast<std::uint64_t>(panel_->winId());
}

bool DesktopPlatform::handBack(const ApplicationRef& app) {
    const auto x = x11::connection();
    const auto window = static_cast<xcb_window_t>(app.handle);
    if (!x || !x11::windowExists(*x, window)) {
        return false;
    }
    x11::requestActivation(*x, window);
    return true;
}

void DesktopPlatform::makePanelKey() {
    if (!panel_) {
        return;
    }
    panel_->takeKeyboard();
    // Qt asks as the application, with the time of the last event Qt saw; the hot key's press is
    // not among those, so a window manager that prevents focus stealing may refuse. A pager's
    // request is honoured.
    if (const auto x = x11::connection()) {
        x11::requestActivation(*x, static_cast<xcb_window_t>(panel_->winId()));
    }
}

bool DesktopPlatform::isPanelKey() const {
    return panel_ && panel_->isActive();
}

void DesktopPlatform::releaseKeyboard() {
    if (panel_) {
        panel_->releaseKeyboard();
    }
}

void DesktopPlatform::revealFile(const QString& path) {
    // The file manager's own interface selects the file; without one the folder opens.
    QDBusMessage call = QDBusMessage::createMethodCall(
        u"org.freedesktop.FileManager1"_s, u"/org/freedesktop/FileManager1"_s,
        u"org.freedesktop.FileManager1"_s, u"ShowItems"_s);
    call << QStringList{QUrl::fromLocalFile(path).toString()} << QString();
    const QDBusMessage reply = QDBusConnection::sessionBus().call(call, QDBus::Block, 2000);
    if (reply.type() == QDBusMessage::ReplyMessage) {
        return;
    }
    const QString folder = QFileInfo(path).absolutePath();
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(folder))) {
        systemLog("Kelo: could not show " + path.toStdString() + " in a file manager.");
    }
}

void DesktopPlatform::quit() {
    QCoreApplication::quit();
}

void DesktopPlatform::playReminderSound() {
    sound_.play();
}

void DesktopPlatform::performHaptic() {
    // Linux desktops have no haptic device to tap.
}

} // namespace kelo::shell
