#pragma once

#include "hot_key.h"
#include "system_log.h"

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QString>
#include <QVariantList>
#include <QVariantMap>

namespace kelo::shell {

// Ctrl+Alt+T through the desktop portal's GlobalShortcuts interface: under Wayland only the
// compositor sees keys meant for other applications, and the portal is how it shares them. The
// desktop, not Kelo, owns the combination: Kelo names Ctrl+Alt+T as the preferred trigger and
// the desktop may ask the user to confirm it or to pick another.
//
// A portal request answers twice: the method returns a request object at once, and the outcome
// follows as that object's Response signal. The object's path follows from Kelo's bus name and
// a token Kelo picks, so Kelo listens there before asking and cannot miss an outcome that
// overtakes the method's return.
class PortalHotKey : public HotKey {
    Q_OBJECT

public:
    struct Options {
        QDBusConnection bus = QDBusConnection::sessionBus();
        LogSink log = systemLog;
    };

    explicit PortalHotKey(Options options, QObject* parent = nullptr);

    // Whether the bus has a desktop portal that offers global shortcuts. Blocks for at most a few
    // seconds, as the first question may start the portal.
    [[nodiscard]] static bool isAvailable(const QDBusConnection& bus);

    // Opens a portal session and binds the shortcut in it. The logged status is the portal's
    // response code (1: the user declined, 2: the portal gave up), or 2 when a request got no
    // answer at all, which leaves the user in the same place as the portal giving up.
    void registerCtrlAltT() override;

private Q_SLOTS:
    void sessionCreated(uint response, const QVariantMap& results);
    void shortcutsBound(uint response, const QVariantMap& results);
    void shortcutActivated(const QDBusObjectPath& session, const QString& shortcutId,
                           qulonglong timestamp, const QVariantMap& options);

private:
    // Calls a portal method whose outcome arrives as a Response signal, delivered to `slot`.
    // `options` is the method's last argument, to which the request's token is added.
    void request(const QString& method, QVariantList arguments, QVariantMap options,
                 const QString& token, const char* slot);
    [[nodiscard]] QString requestPath(const QString& token) const;
    void fail(uint status);

    QDBusConnection bus_;
    LogSink log_;
    QString session_;
};

} // namespace kelo::shell
