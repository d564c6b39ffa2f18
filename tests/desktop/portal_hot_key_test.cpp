#include "global_hot_key.h"
#include "portal_hot_key.h"
#include "scoped_variable.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>
#include <QTest>
#include <QThread>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace {

using kelo::testing::Value;

const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString portalService = u"org.freedesktop.portal.Desktop"_s;

// A connection of its own to the test's private bus, which dbus-run-session starts with no
// service folders, so no real portal ever answers.
QDBusConnection connection() {
    static int count = 0;
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus,
                                         u"test-"_s % QString::number(++count));
}

struct Behaviour {
    QString refusedMethod; // answered with `code` rather than success
    uint code = 0;
    bool sessionAsPath = false; // the session handle as an object path, as some portals send it
    bool offersShortcuts = true;
    bool errorReply = false; // the refused method fails rather than answering
};
using Portal = std::optional<Behaviour>;                  // none: no portal on the bus at all
using Shortcuts = QList<std::pair<QString, QVariantMap>>; // id and properties of each

// The desktop portal's global shortcuts, on a connection and a thread of its own: it answers
// while PortalHotKey::isAvailable blocks the test's thread. Each Response goes out before its
// method returns, the harshest order a real portal can produce.
class FakePortal : public QDBusVirtualObject {
    Q_OBJECT

public:
    explicit FakePortal(Behaviour behaviour)
        : behaviour_(std::move(behaviour)) {
        bus_.registerVirtualObject(portalPath, this);
        bus_.registerService(portalService);
        moveToThread(&thread_);
        thread_.start();
    }
    ~FakePortal() override {
        thread_.quit();
        thread_.wait();
        bus_.unregisterService(portalService);
        bus_.unregisterObject(portalPath);
        QDBusConnection::disconnectFromBus(bus_.name());
    }

    // A press of the shortcut `id` in `session`, as the desktop reports it.
    void activate(const QString& session, const QString& id) {
        QDBusMessage signal = QDBusMessage::createSignal(
            portalPath, u"org.freedesktop.portal.GlobalShortcuts"_s, u"Activated"_s);
        signal << QVariant::fromValue(QDBusObjectPath(session)) << id << qulonglong{1000}
               << QVariantMap();
        bus_.send(signal);
    }

    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection&) override {
        const QList<QVariant> arguments = message.arguments();
        if (message.member() == u"Get"_s && behaviour_.offersShortcuts) { // the version
            return bus_.send(message.createReply(QVariant::fromValue(QDBusVariant(1U))));
        }
        // The caller's session or request: ":1.42" with the token "t" gives ".../1_42/t".
        const auto callersPath = [&](const QString& kind, const QString& tokenOption) -> QString {
            return portalPath % kind % message.service().mid(1).replace(u'.', u'_') % u'/' %
                   qdbus_cast<QVariantMap>(arguments.constLast()).value(tokenOption).toString();
        };
        QVariantMap results;
        if (message.member() == u"CreateSession"_s) {
            session_ = callersPath(u"/session/"_s, u"session_handle_token"_s);
            results.insert(u"session_handle"_s, behaviour_.sessionAsPath
                                                    ? QVariant::fromValue(QDBusObjectPath(session_))
                                                    : QVariant(session_));
        } else if (message.member() == u"BindShortcuts"_s &&
                   arguments.constFirst().value<QDBusObjectPath>().path() == session_) {
            Shortcuts shortcuts;
            arguments.at(1).value<QDBusArgument>() >> shortcuts;
            Q_EMIT bound(session_, shortcuts);
        } else {
            return false;
        }
        const QString request = callersPath(u"/request/"_s, u"handle_token"_s);
        const bool refused = message.member() == behaviour_.refusedMethod;
        if (refused && behaviour_.errorReply) {
            return false;
        }
        QDBusMessage response = QDBusMessage::createTargetedSignal(
            message.service(), request, u"org.freedesktop.portal.Request"_s, u"Response"_s);
        response << (refused ? behaviour_.code : 0U) << (refused ? QVariantMap() : results);
        return bus_.send(response) &&
               bus_.send(message.createReply(QVariant::fromValue(QDBusObjectPath(request))));
    }

Q_SIGNALS:
    void bound(const QString& session, const Shortcuts& shortcuts);

private:
    Behaviour behaviour_;
    QDBusConnection bus_ = connection();
    QString session_;
    QThread thread_;
};

} // namespace

Q_DECLARE_METATYPE(Portal)

namespace kelo::shell {

class PortalHotKeyTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Ctrl+Alt+T comes from the portal in a Wayland session whose bus offers it, else from the X11
    // grab. Through the portal Kelo binds it and hears only its own presses, or logs the refusal.
    void theHotKeyComesFromThePortalWhenTheSessionHasOne_data() {
        QTest::addColumn<Value>("waylandDisplay");
        QTest::addColumn<Value>("sessionType");
        QTest::addColumn<Portal>("portal");
        QTest::addColumn<int>("status"); // -1: the X11 grab; 0: bound; else the status logged
        const Value wl = "wayland-0", none, wayland = "wayland";
        const auto refusing = [](const QString& method, uint code, bool errorReply = false) {
            return Portal(Behaviour{method, code, false, true, errorReply});
        };
        QTest::newRow("X11 session with a portal")
            << none << Value("x11") << Portal(Behaviour{}) << -1;
        QTest::newRow("Wayland without a portal") << wl << none << Portal() << -1;
        QTest::newRow("Wayland with a portal without shortcuts")
            << wl << wayland << Portal(Behaviour{{}, 0, false, false, false}) << -1;
        QTest::newRow("Wayland display, session handle as a string")
            << wl << none << Portal(Behaviour{}) << 0;
        QTest::newRow("Wayland session type, session handle as an object path")
            << none << wayland << Portal(Behaviour{{}, 0, true, true, false}) << 0;
        QTest::newRow("session declined") << wl << none << refusing(u"CreateSession"_s, 1) << 1;
        QTest::newRow("binding declined") << wl << none << refusing(u"BindShortcuts"_s, 1) << 1;
        QTest::newRow("binding failed") << wl << none << refusing(u"BindShortcuts"_s, 2) << 2;
        QTest::newRow("binding answered with an error")
            << wl << none << refusing(u"BindShortcuts"_s, 0, true) << 2;
    }

    void theHotKeyComesFromThePortalWhenTheSessionHasOne() {
        QFETCH(Value, waylandDisplay);
        QFETCH(Value, sessionType);
        QFETCH(Portal, portal);
        QFETCH(int, status);
        const auto display = testing::scopedVariable("WAYLAND_DISPLAY", waylandDisplay);
        const auto type = testing::scopedVariable("XDG_SESSION_TYPE", sessionType);
        std::optional<FakePortal> fake;
        QString session;
        Shortcuts shortcuts;
        if (portal) {
            fake.emplace(*portal);
            connect(&*fake, &FakePortal::bound, this,
                    [&](const QString& created, const Shortcuts& bound) {
                        session = created;
                        shortcuts = bound;
                    });
        }
        QStringList log;
        const auto hotKey = makeHotKey(
            connection(), [&log](std::string_view line) { log.append(QString::fromUtf8(line)); });
        QCOMPARE(qobject_cast<GlobalHotKey*>(hotKey.get()) != nullptr, status < 0);
        if (status < 0) {
            // Only a Wayland session that has to do without the portal tells how to bind a key.
            QCOMPARE(log, waylandDisplay || sessionType == "wayland"
                              ? QStringList{QString::fromUtf8(wantingPortal)}
                              : QStringList());
            return;
        }
        QVERIFY(qobject_cast<PortalHotKey*>(hotKey.get()));
        int presses = 0;
        connect(hotKey.get(), &HotKey::activated, this, [&presses] { ++presses; });
        hotKey->registerCtrlAltT();
        if (status > 0) {
            QTRY_COMPARE(log, QStringList{QString::fromStdString(
                                  registrationFailure(std::to_string(status)))});
            return;
        }
        QTRY_VERIFY2(!shortcuts.isEmpty(), qPrintable(log.join(u'\n')));
        const QVariantMap properties{{u"description"_s, u"Open or close the Kelo island"_s},
                                     {u"preferred_trigger"_s, u"CTRL+ALT+t"_s}};
        QCOMPARE(shortcuts, (Shortcuts{{u"toggle-island"_s, properties}}));
        // Presses arrive in order, so the two that must be ignored are seen before the third.
        fake->activate(portalPath % u"/session/1_99/other"_s, u"toggle-island"_s);
        fake->activate(session, u"another-shortcut"_s);
        for (int wanted = 1; wanted <= 2; ++wanted) {
            fake->activate(session, u"toggle-island"_s);
            QTRY_COMPARE(presses, wanted);
        }
        QCOMPARE(log, QStringList());
    }
};

} // namespace kelo::shell

QTEST_GUILESS_MAIN(kelo::shell::PortalHotKeyTest)
#include "portal_hot_key_test.moc"
