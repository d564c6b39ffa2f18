#pragma once

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <functional>
#include <optional>

// A session bus of the test's own with the fake portal on it, so no real portal ever answers.
// A rig that cannot start stops the test program with the reason.
namespace kelo::testing {

// Runs the event loop until `done` holds; a test that never gets there runs into its TIMEOUT.
void waitUntil(const std::function<bool()>& done);

// A dbus-daemon with no service folders, so nothing starts by activation, and a connection to it.
class PrivateBus {
public:
    PrivateBus();
    ~PrivateBus();
    [[nodiscard]] QString address() const { return address_; }
    [[nodiscard]] QDBusConnection connection() const { return QDBusConnection(name_); }

private:
    QTemporaryDir folder_;
    QProcess daemon_;
    QString address_;
    QString name_;
};

// The fake_portal program (KELO_FAKE_PORTAL) on `bus`, with `variable` set to `value` if given.
class FakePortal {
public:
    explicit FakePortal(const PrivateBus& bus, const QString& variable = {},
                        const QString& value = {});
    ~FakePortal();
    // The next line the fake prints; none when it exits first or `giveUp` holds first.
    [[nodiscard]] std::optional<QString> nextLine(const std::function<bool()>& giveUp);
    // Has the fake report a press of `shortcutId` in `session`; false when the fake refused.
    [[nodiscard]] bool activate(const QDBusObjectPath& session, const QString& shortcutId);
    [[nodiscard]] QString errors() {
        return QString::fromLocal8Bit(process_.readAllStandardError());
    }

private:
    QDBusConnection bus_;
    QProcess process_;
};

} // namespace kelo::testing
