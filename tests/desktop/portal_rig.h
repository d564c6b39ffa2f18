#pragma once

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QTemporaryDir>
#include <functional>
#include <optional>

// A D-Bus session bus of the test's own with the fake portal on it, so that the portal hot key
// meets a portal without a desktop and no real portal ever answers.
namespace kelo::testing {

// Runs the event loop until `done` holds. There is no deadline of its own: a test that never
// gets there runs into its CTest TIMEOUT. Callers include in `done` whatever ends the wait early,
// such as a helper process exiting.
void waitUntil(const std::function<bool()>& done);

// A dbus-daemon with no service folders, so that nothing on it starts by activation, and the
// test's connection to it. Everything goes when it is destroyed.
class PrivateBus {
public:
    PrivateBus();
    ~PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    // Empty when the bus could not be started; then failure() says why.
    [[nodiscard]] QString address() const { return address_; }
    [[nodiscard]] QString failure() const { return failure_; }
    [[nodiscard]] QDBusConnection connection() const;

private:
    QTemporaryDir folder_;
    QProcess daemon_;
    QString address_;
    QString failure_;
    QString connectionName_;
};

// The fake_portal program (KELO_FAKE_PORTAL) on a private bus, started with `environment` added
// to the test's own. It is ready once the constructor returns with ready() true.
class FakePortal {
public:
    FakePortal(const PrivateBus& bus, const QProcessEnvironment& environment = {});
    ~FakePortal();
    FakePortal(const FakePortal&) = delete;
    FakePortal& operator=(const FakePortal&) = delete;

    [[nodiscard]] bool ready() const { return ready_; }
    // The next line the fake prints; none when it exits first or `giveUp` holds first.
    [[nodiscard]] std::optional<QString> nextLine(const std::function<bool()>& giveUp);
    // Has the fake report a press of `shortcutId` in `session`; false when the fake refused.
    [[nodiscard]] bool activate(const QDBusObjectPath& session, const QString& shortcutId);
    // Everything the fake wrote to standard error, for failure messages.
    [[nodiscard]] QString errors();

private:
    QDBusConnection bus_;
    QProcess process_;
    bool ready_ = false;
};

} // namespace kelo::testing
