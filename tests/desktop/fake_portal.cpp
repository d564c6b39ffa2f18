// The desktop portal's global shortcuts on a private bus, for portal_hot_key_test. It prints
// "ready" once it owns the bus name, then "session <path>", "shortcuts <id> <key>=<value>;..." and
// "error <text>" (a request that broke the protocol) as they happen. The environment can make it
// answer a method with a Response code (KELO_FAKE_PORTAL_REFUSE=<method>:<code>), send the session
// handle as an object path (..._SESSION_AS_PATH) or offer no shortcuts (..._WITHOUT_SHORTCUTS).
// The test presses a shortcut with Activate(o session, s id) on /kelo/test.

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QStringList>
#include <QVariantMap>
#include <cstdio>

using namespace Qt::Literals::StringLiterals;

// Outside any unnamed namespace: QtDBus matches slot parameters to types by their names.
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

const QDBusArgument& operator>>(const QDBusArgument& argument, Shortcut& shortcut) {
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.properties;
    argument.endStructure();
    return argument;
}

namespace {

const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString shortcutsInterface = u"org.freedesktop.portal.GlobalShortcuts"_s;

void say(const QString& line) {
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}

// ":1.42" becomes "1_42", as in the portal's request and session paths.
QString senderElement(const QString& uniqueName) {
    return uniqueName.mid(1).replace(u'.', u'_');
}

} // namespace

class GlobalShortcuts : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.GlobalShortcuts")
    Q_PROPERTY(uint version READ version)

public:
    explicit GlobalShortcuts(QDBusConnection bus)
        : bus_(std::move(bus)) {
        const QStringList refusal = qEnvironmentVariable("KELO_FAKE_PORTAL_REFUSE").split(u':');
        if (refusal.size() == 2) {
            refusedMethod_ = refusal.first();
            refusalCode_ = refusal.last().toUInt();
        }
    }

    [[nodiscard]] uint version() const { return 1; }

public Q_SLOTS:
    // The test's side door on /kelo/test: a press that the compositor would report.
    void Activate(const QDBusObjectPath& session, const QString& shortcutId) {
        QDBusMessage signal = QDBusMessage::createTargetedSignal(
            client_, portalPath, shortcutsInterface, u"Activated"_s);
        signal << QVariant::fromValue(session) << shortcutId << qulonglong{1000} << QVariantMap();
        bus_.send(signal);
    }

    void CreateSession(const QVariantMap& options, const QDBusMessage& message) {
        const QString token = options.value(u"session_handle_token"_s).toString();
        if (token.isEmpty()) {
            refuse(message, u"CreateSession without a session_handle_token"_s);
            return;
        }
        client_ = message.service();
        session_ = portalPath % u"/session/"_s % senderElement(client_) % u'/' % token;
        say(u"session "_s % session_);
        const bool asPath = qEnvironmentVariableIsSet("KELO_FAKE_PORTAL_SESSION_AS_PATH");
        respond(message, options,
                {{u"session_handle"_s,
                  asPath ? QVariant::fromValue(QDBusObjectPath(session_)) : QVariant(session_)}});
    }

    void BindShortcuts(const QDBusObjectPath& session, const QList<Shortcut>& shortcuts,
                       const QString&, const QVariantMap& options, const QDBusMessage& message) {
        if (session.path() != session_) {
            refuse(message, u"BindShortcuts for the unknown session "_s % session.path());
            return;
        }
        QStringList entries;
        for (const Shortcut& shortcut : shortcuts) {
            QStringList properties;
            for (auto it = shortcut.properties.cbegin(); it != shortcut.properties.cend(); ++it) {
                properties.append(it.key() % u'=' % it.value().toString());
            }
            entries.append(shortcut.id % u' ' % properties.join(u';'));
        }
        say(u"shortcuts "_s % entries.join(u" | "_s));
        respond(message, options, {}); // Kelo never reads the bound shortcuts back
    }

private:
    // The Response signal goes out before the method returns, the harshest order a real portal
    // can produce: a client that subscribes only once it has the request path misses it.
    void respond(const QDBusMessage& message, const QVariantMap& options,
                 const QVariantMap& results) {
        const QString token = options.value(u"handle_token"_s).toString();
        if (token.isEmpty()) {
            refuse(message, message.member() % u" without a handle_token"_s);
            return;
        }
        const QString request =
            portalPath % u"/request/"_s % senderElement(message.service()) % u'/' % token;
        const bool refused = message.member() == refusedMethod_;
        QDBusMessage response = QDBusMessage::createTargetedSignal(
            message.service(), request, u"org.freedesktop.portal.Request"_s, u"Response"_s);
        response << (refused ? refusalCode_ : 0U) << (refused ? QVariantMap() : results);
        message.setDelayedReply(true);
        bus_.send(response);
        bus_.send(message.createReply(QVariant::fromValue(QDBusObjectPath(request))));
    }

    void refuse(const QDBusMessage& message, const QString& text) {
        say(u"error "_s % text);
        message.setDelayedReply(true);
        bus_.send(message.createErrorReply(QDBusError::InvalidArgs, text));
    }

    QDBusConnection bus_;
    QString refusedMethod_;
    uint refusalCode_ = 0;
    QString client_;
    QString session_;
};

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    qDBusRegisterMetaType<Shortcut>();
    qDBusRegisterMetaType<QList<Shortcut>>();

    QDBusConnection bus = QDBusConnection::sessionBus();
    GlobalShortcuts portal(bus);
    if (!qEnvironmentVariableIsSet("KELO_FAKE_PORTAL_WITHOUT_SHORTCUTS")) {
        bus.registerObject(portalPath, &portal,
                           QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties);
    }
    bus.registerObject(u"/kelo/test"_s, &portal, QDBusConnection::ExportAllSlots);
    if (!bus.registerService(u"org.freedesktop.portal.Desktop"_s)) {
        std::fprintf(stderr, "fake_portal: %s\n", qPrintable(bus.lastError().message()));
        return 1;
    }
    say(u"ready"_s);
    return QCoreApplication::exec();
}

#include "fake_portal.moc"
