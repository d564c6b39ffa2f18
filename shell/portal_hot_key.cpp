#include "portal_hot_key.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QList>
#include <string>

namespace kelo::shell {
namespace {

using namespace Qt::Literals::StringLiterals;

const QString portalService = u"org.freedesktop.portal.Desktop"_s;
const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString shortcutsInterface = u"org.freedesktop.portal.GlobalShortcuts"_s;
const QString toggleIsland = u"toggle-island"_s;

// Kelo makes each request once per process, so fixed tokens are unique for its bus name.
const QString createSessionToken = u"kelo_create_session"_s;
const QString bindShortcutsToken = u"kelo_bind_shortcuts"_s;
const QString sessionToken = u"kelo"_s;

// A first start of the portal through D-Bus activation takes about a second; one that takes
// longer than this is treated as absent rather than holding up the island's start.
constexpr int availabilityTimeoutMs = 3000;

// Outcome 2 of a portal request: it ended some other way than success or the user declining.
constexpr uint portalGaveUp = 2;

// One entry of BindShortcuts' a(sa{sv}).
struct Shortcut {
    QString id;
    QVariantMap properties;
};

QDBusArgument& operator<<(QDBusArgument& argument, const Shortcut& shortcut) {
    argument.beginStructure();
    argument << shortcut.id << shortcut.properties;
    argument.endStructure();
    return argument;
}

// Only there because QtDBus registers a type with both directions; Kelo never reads shortcuts.
const QDBusArgument& operator>>(const QDBusArgument& argument, Shortcut& shortcut) {
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.properties;
    argument.endStructure();
    return argument;
}

// The interface documents the session handle as a string holding an object path; some portals
// send an object path proper.
QString objectPath(const QVariant& value) {
    if (value.metaType() == QMetaType::fromType<QDBusObjectPath>()) {
        return value.value<QDBusObjectPath>().path();
    }
    return value.toString();
}

} // namespace

PortalHotKey::PortalHotKey(Options options, QObject* parent)
    : HotKey(parent)
    , bus_(std::move(options.bus))
    , log_(std::move(options.log)) {
    qDBusRegisterMetaType<Shortcut>();
    qDBusRegisterMetaType<QList<Shortcut>>();
}

bool PortalHotKey::isAvailable(const QDBusConnection& bus) {
    QDBusMessage get = QDBusMessage::createMethodCall(
        portalService, portalPath, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    get << shortcutsInterface << u"version"_s;
    const QDBusMessage reply = bus.call(get, QDBus::Block, availabilityTimeoutMs);
    return reply.type() == QDBusMessage::ReplyMessage && reply.arguments().size() == 1 &&
           reply.arguments().constFirst().value<QDBusVariant>().variant().toUInt() >= 1;
}

void PortalHotKey::registerCtrlAltT() {
    request(u"CreateSession"_s, {}, {{u"session_handle_token"_s, sessionToken}}, createSessionToken,
            SLOT(sessionCreated(uint, QVariantMap)));
}

void PortalHotKey::sessionCreated(uint response, const QVariantMap& results) {
    if (response != 0) {
        fail(response);
        return;
    }
    session_ = objectPath(results.value(u"session_handle"_s));
    if (session_.isEmpty()) {
        fail(portalGaveUp);
        return;
    }
    // Subscribed before binding, so that a press right after the binding is heard.
    bus_.connect(portalService, portalPath, shortcutsInterface, u"Activated"_s, this,
                 SLOT(shortcutActivated(QDBusObjectPath, QString, qulonglong, QVariantMap)));
    const QList<Shortcut> shortcuts{{toggleIsland,
                                     {{u"description"_s, u"Open or close the Kelo island"_s},
                                      {u"preferred_trigger"_s, u"CTRL+ALT+t"_s}}}};
    // No parent window: this happens at start-up, before the user has opened the island, so a
    // confirmation the desktop may show belongs to none of Kelo's windows.
    request(
        u"BindShortcuts"_s,
        {QVariant::fromValue(QDBusObjectPath(session_)), QVariant::fromValue(shortcuts), QString()},
        {}, bindShortcutsToken, SLOT(shortcutsBound(uint, QVariantMap)));
}

void PortalHotKey::shortcutsBound(uint response, const QVariantMap&) {
    if (response != 0) {
        fail(response);
    }
}

// Other applications' sessions may use the same shortcut id, so only Kelo's session counts.
void PortalHotKey::shortcutActivated(const QDBusObjectPath& session, const QString& shortcutId,
                                     qulonglong, const QVariantMap&) {
    if (session.path() == session_ && shortcutId == toggleIsland) {
        Q_EMIT activated();
    }
}

void PortalHotKey::request(const QString& method, QVariantList arguments, QVariantMap options,
                           const QString& token, const char* slot) {
    // A request object answers once and then goes away, so the subscription is simply left.
    bus_.connect(portalService, requestPath(token), u"org.freedesktop.portal.Request"_s,
                 u"Response"_s, this, slot);
    options.insert(u"handle_token"_s, token);
    arguments.append(options);

    QDBusMessage call =
        QDBusMessage::createMethodCall(portalService, portalPath, shortcutsInterface, method);
    call.setArguments(arguments);
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this](QDBusPendingCallWatcher* finished) {
                finished->deleteLater();
                if (finished->isError()) {
                    fail(portalGaveUp);
                }
            });
}

QString PortalHotKey::requestPath(const QString& token) const {
    QString sender = bus_.baseService().mid(1);
    sender.replace(u'.', u'_');
    return portalPath % u"/request/"_s % sender % u'/' % token;
}

void PortalHotKey::fail(uint status) {
    log_(registrationFailure(std::to_string(status)));
}

} // namespace kelo::shell
