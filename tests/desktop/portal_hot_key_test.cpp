#include "global_hot_key.h"
#include "portal_hot_key.h"
#include "portal_rig.h"

#include <QStringList>
#include <QTest>
#include <optional>
#include <string_view>

using namespace Qt::Literals::StringLiterals;

namespace kelo::shell {
namespace {

using testing::FakePortal;
using testing::PrivateBus;

const QString toggleIsland = u"toggle-island"_s;

// Sets or clears a variable for one test and restores it afterwards.
class ScopedVariable {
public:
    ScopedVariable(const char* name, const QString& value)
        : name_(name)
        , saved_(qEnvironmentVariableIsSet(name) ? std::optional(qgetenv(name)) : std::nullopt) {
        if (value.isEmpty()) {
            qunsetenv(name_);
        } else {
            qputenv(name_, value.toUtf8());
        }
    }
    ~ScopedVariable() {
        if (saved_) {
            qputenv(name_, *saved_);
        } else {
            qunsetenv(name_);
        }
    }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

private:
    const char* name_;
    std::optional<QByteArray> saved_;
};

QProcessEnvironment environment(const QString& name, const QString& value) {
    QProcessEnvironment added;
    if (!value.isEmpty()) {
        added.insert(name, value);
    }
    return added;
}

QString refusal(int status) {
    return u"Kelo: could not register ⌃⌥T ("_s % QString::number(status) %
           u"). Click the notch instead."_s;
}

} // namespace

class PortalHotKeyTest : public QObject {
    Q_OBJECT

private:
    QStringList log_;

    PortalHotKey::Options options(const PrivateBus& bus) {
        return {.bus = bus.connection(), .log = [this](std::string_view line) {
                    log_.append(QString::fromUtf8(line.data(), qsizetype(line.size())));
                }};
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
        QVERIFY2(!bus.address().isEmpty(), qPrintable(bus.failure()));
        FakePortal portal(bus, environment(u"KELO_FAKE_PORTAL_SESSION_AS_PATH"_s, sessionAsPath));
        QVERIFY2(portal.ready(), qPrintable(portal.errors()));

        PortalHotKey hotKey(options(bus));
        int presses = 0;
        connect(&hotKey, &HotKey::activated, this, [&presses] { ++presses; });
        hotKey.registerCtrlAltT();

        const auto failed = [this] { return !log_.empty(); };
        const std::optional<QString> session = portal.nextLine(failed);
        QVERIFY2(session && session->startsWith(u"session "_s),
                 qPrintable(log_.join(u'\n') % portal.errors()));
        const std::optional<QString> shortcuts = portal.nextLine(failed);
        QVERIFY2(shortcuts, qPrintable(log_.join(u'\n') % portal.errors()));
        QCOMPARE(*shortcuts, u"shortcuts toggle-island description=Open or close the Kelo island;"
                             "preferred_trigger=CTRL+ALT+t"_s);

        // The last press can only arrive after the two before it, which must be ignored.
        const QDBusObjectPath own(session->mid(8));
        QVERIFY(portal.activate(
            QDBusObjectPath(u"/org/freedesktop/portal/desktop/session/1_99/other"_s),
            toggleIsland));
        QVERIFY(portal.activate(own, u"another-shortcut"_s));
        QVERIFY(portal.activate(own, toggleIsland));
        testing::waitUntil([&] { return presses > 0; });
        QCOMPARE(presses, 1);
        QVERIFY(portal.activate(own, toggleIsland));
        testing::waitUntil([&] { return presses > 1; });
        QCOMPARE(presses, 2);
        QCOMPARE(log_, QStringList());
    }

    void aRefusalIsLoggedWithThePortalsCode_data() {
        QTest::addColumn<QString>("refuse");
        QTest::addColumn<int>("status");
        QTest::newRow("session declined") << u"CreateSession:1"_s << 1;
        QTest::newRow("binding declined") << u"BindShortcuts:1"_s << 1;
        QTest::newRow("binding failed") << u"BindShortcuts:2"_s << 2;
    }

    void aRefusalIsLoggedWithThePortalsCode() {
        QFETCH(QString, refuse);
        QFETCH(int, status);
        const PrivateBus bus;
        QVERIFY2(!bus.address().isEmpty(), qPrintable(bus.failure()));
        FakePortal portal(bus, environment(u"KELO_FAKE_PORTAL_REFUSE"_s, refuse));
        QVERIFY2(portal.ready(), qPrintable(portal.errors()));

        PortalHotKey hotKey(options(bus));
        hotKey.registerCtrlAltT();
        testing::waitUntil([this] { return !log_.empty(); });
        QCOMPARE(log_, QStringList{refusal(status)});
    }

    void aBusWithoutPortalIsLoggedAsGivenUp() {
        const PrivateBus bus;
        QVERIFY2(!bus.address().isEmpty(), qPrintable(bus.failure()));
        PortalHotKey hotKey(options(bus));
        hotKey.registerCtrlAltT();
        testing::waitUntil([this] { return !log_.empty(); });
        QCOMPARE(log_, QStringList{refusal(2)});
    }

    void theSessionChoosesBetweenPortalAndX11Grab_data() {
        QTest::addColumn<QString>("waylandDisplay");
        QTest::addColumn<QString>("sessionType");
        QTest::addColumn<QString>("portal");
        QTest::addColumn<bool>("usesPortal");
        const QString full = u"full"_s;
        const QString none;
        QTest::newRow("X11 session with a portal") << none << u"x11"_s << full << false;
        QTest::newRow("Wayland without a portal") << u"wayland-0"_s << none << none << false;
        QTest::newRow("Wayland with a portal without shortcuts")
            << u"wayland-0"_s << u"wayland"_s << u"without shortcuts"_s << false;
        QTest::newRow("Wayland display with a portal") << u"wayland-0"_s << none << full << true;
        QTest::newRow("Wayland session type with a portal") << none << u"wayland"_s << full << true;
    }

    void theSessionChoosesBetweenPortalAndX11Grab() {
        QFETCH(QString, waylandDisplay);
        QFETCH(QString, sessionType);
        QFETCH(QString, portal);
        QFETCH(bool, usesPortal);
        const ScopedVariable display("WAYLAND_DISPLAY", waylandDisplay);
        const ScopedVariable type("XDG_SESSION_TYPE", sessionType);
        const PrivateBus bus;
        QVERIFY2(!bus.address().isEmpty(), qPrintable(bus.failure()));
        std::optional<FakePortal> fake;
        if (!portal.isEmpty()) {
            fake.emplace(bus, environment(u"KELO_FAKE_PORTAL_WITHOUT_SHORTCUTS"_s,
                                          portal == u"full"_s ? QString() : u"1"_s));
            QVERIFY2(fake->ready(), qPrintable(fake->errors()));
        }

        const auto hotKey = makeHotKey(bus.connection());
        QCOMPARE(qobject_cast<PortalHotKey*>(hotKey.get()) != nullptr, usesPortal);
        QCOMPARE(qobject_cast<GlobalHotKey*>(hotKey.get()) != nullptr, !usesPortal);
    }
};

} // namespace kelo::shell

QTEST_GUILESS_MAIN(kelo::shell::PortalHotKeyTest)
#include "portal_hot_key_test.moc"
