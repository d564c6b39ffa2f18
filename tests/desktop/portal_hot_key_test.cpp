#include "global_hot_key.h"
#include "portal_hot_key.h"
#include "portal_rig.h"
#include "scoped_variable.h"

#include <QStringList>
#include <QTest>
#include <optional>
#include <string_view>

using namespace Qt::Literals::StringLiterals;

namespace kelo::shell {
namespace {

using testing::FakePortal;
using testing::PrivateBus;
using testing::ScopedVariable;

std::optional<QByteArray> setUnlessEmpty(const QString& value) {
    return value.isEmpty() ? std::nullopt : std::optional(value.toUtf8());
}

} // namespace

class PortalHotKeyTest : public QObject {
    Q_OBJECT

private:
    QStringList log_;

    LogSink logSink() {
        return [this](std::string_view line) {
            log_.append(QString::fromUtf8(line.data(), qsizetype(line.size())));
        };
    }

    PortalHotKey::Options options(const PrivateBus& bus) {
        return {.bus = bus.connection(), .log = logSink()};
    }

private Q_SLOTS:
    void init() { log_.clear(); }

    void bindsCtrlAltTAndOnlyItsOwnPressesRunTheAction_data() {
        QTest::addColumn<QString>("sessionAsPath");
        QTest::newRow("session handle as a string") << QString();
        QTest::newRow("session handle as an object path") << u"1"_s;
    }

    void bindsCtrlAltTAndOnlyItsOwnPressesRunTheAction() {
        QFETCH(QString, sessionAsPath);
        const PrivateBus bus;
        FakePortal portal(bus, u"KELO_FAKE_PORTAL_SESSION_AS_PATH"_s, sessionAsPath);

        PortalHotKey hotKey(options(bus));
        int presses = 0;
        connect(&hotKey, &HotKey::activated, this, [&presses] { ++presses; });
        hotKey.registerCtrlAltT();

        const auto failed = [this] { return !log_.empty(); };
        const std::optional<QString> session = portal.nextLine(failed);
        QVERIFY2(session && session->startsWith(u"session "_s),
                 qPrintable(log_.join(u'\n') % portal.errors()));
        QCOMPARE(portal.nextLine(failed),
                 u"shortcuts toggle-island description=Open or close the Kelo island;"
                 "preferred_trigger=CTRL+ALT+t"_s);

        // The last press can only arrive after the two before it, which must be ignored.
        const QDBusObjectPath own(session->mid(8));
        const QString toggle = u"toggle-island"_s;
        QVERIFY(portal.activate(
            QDBusObjectPath(u"/org/freedesktop/portal/desktop/session/1_99/other"_s), toggle));
        QVERIFY(portal.activate(own, u"another-shortcut"_s));
        for (int wanted = 1; wanted <= 2; ++wanted) {
            QVERIFY(portal.activate(own, toggle));
            testing::waitUntil([&] { return presses >= wanted; });
            QCOMPARE(presses, wanted);
        }
        QCOMPARE(log_, QStringList());
    }

    void aRefusalIsLoggedWithThePortalsCode_data() {
        QTest::addColumn<QString>("refuse"); // empty: no portal on the bus at all
        QTest::addColumn<int>("status");
        QTest::newRow("session declined") << u"CreateSession:1"_s << 1;
        QTest::newRow("binding declined") << u"BindShortcuts:1"_s << 1;
        QTest::newRow("binding failed") << u"BindShortcuts:2"_s << 2;
        QTest::newRow("no portal") << QString() << 2;
    }

    void aRefusalIsLoggedWithThePortalsCode() {
        QFETCH(QString, refuse);
        QFETCH(int, status);
        const PrivateBus bus;
        std::optional<FakePortal> portal;
        if (!refuse.isEmpty()) {
            portal.emplace(bus, u"KELO_FAKE_PORTAL_REFUSE"_s, refuse);
        }
        PortalHotKey hotKey(options(bus));
        hotKey.registerCtrlAltT();
        testing::waitUntil([this] { return !log_.empty(); });
        QCOMPARE(log_, QStringList{u"Kelo: could not register ⌃⌥T ("_s % QString::number(status) %
                                   u"). Click the notch instead."_s});
    }

    void theSessionChoosesBetweenPortalAndX11Grab_data() {
        QTest::addColumn<QString>("waylandDisplay");
        QTest::addColumn<QString>("sessionType");
        QTest::addColumn<QString>("portal");
        QTest::addColumn<bool>("usesPortal");
        const QString full = u"full"_s, none, wl = u"wayland-0"_s;
        QTest::newRow("X11 session with a portal") << none << u"x11"_s << full << false;
        QTest::newRow("Wayland without a portal") << wl << none << none << false;
        QTest::newRow("Wayland with a portal without shortcuts")
            << wl << u"wayland"_s << u"without shortcuts"_s << false;
        QTest::newRow("Wayland display with a portal") << wl << none << full << true;
        QTest::newRow("Wayland session type with a portal") << none << u"wayland"_s << full << true;
    }

    void theSessionChoosesBetweenPortalAndX11Grab() {
        QFETCH(QString, waylandDisplay);
        QFETCH(QString, sessionType);
        QFETCH(QString, portal);
        QFETCH(bool, usesPortal);
        const ScopedVariable display("WAYLAND_DISPLAY", setUnlessEmpty(waylandDisplay));
        const ScopedVariable type("XDG_SESSION_TYPE", setUnlessEmpty(sessionType));
        const PrivateBus bus;
        std::optional<FakePortal> fake;
        if (!portal.isEmpty()) {
            fake.emplace(bus, u"KELO_FAKE_PORTAL_WITHOUT_SHORTCUTS"_s,
                         portal == u"full"_s ? QString() : u"1"_s);
        }
        const auto hotKey = makeHotKey(bus.connection(), logSink());
        QCOMPARE(qobject_cast<PortalHotKey*>(hotKey.get()) != nullptr, usesPortal);
        QCOMPARE(qobject_cast<GlobalHotKey*>(hotKey.get()) != nullptr, !usesPortal);
        // Only a Wayland session that has to do without the portal tells how to bind a key.
        const bool wayland = !waylandDisplay.isEmpty() || sessionType == u"wayland"_s;
        QCOMPARE(log_, wayland && !usesPortal
                           ? QStringList{QString::fromUtf8(wantingPortal.data(),
                                                           qsizetype(wantingPortal.size()))}
                           : QStringList());
    }
};

} // namespace kelo::shell

QTEST_GUILESS_MAIN(kelo::shell::PortalHotKeyTest)
#include "portal_hot_key_test.moc"
