#include "portal_rig.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QDBusMessage>
#include <QFile>

namespace kelo::testing {
namespace {

using namespace Qt::Literals::StringLiterals;

// The session bus's rules without its service folders, listening in the test's own folder.
const QString busConfiguration = uR"(<busconfig>
  <type>session</type>
  <listen>unix:dir=%1</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)"_s;

void stop(QProcess& process) {
    process.kill();
    process.waitForFinished(-1);
}

} // namespace

void waitUntil(const std::function<bool()>& done) {
    while (!done()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

PrivateBus::PrivateBus() {
    QFile configuration(folder_.filePath(u"bus.conf"_s));
    if (!configuration.open(QIODevice::WriteOnly) ||
        configuration.write(busConfiguration.arg(folder_.path()).toUtf8()) < 0) {
        qFatal("could not write %s", qPrintable(configuration.fileName()));
    }
    configuration.close();
    daemon_.start(u"dbus-daemon"_s, {u"--config-file="_s % configuration.fileName(),
                                     u"--print-address"_s, u"--nofork"_s});
    while (!daemon_.canReadLine() && daemon_.waitForReadyRead(-1)) {
    }
    if (!daemon_.canReadLine()) {
        qFatal("dbus-daemon did not start: %s %s", qPrintable(daemon_.errorString()),
               daemon_.readAllStandardError().constData());
    }
    address_ = QString::fromUtf8(daemon_.readLine().trimmed());
    static int connections = 0;
    name_ = u"kelo-test-"_s % QString::number(++connections);
    const QDBusConnection bus = QDBusConnection::connectToBus(address_, name_);
    if (!bus.isConnected()) {
        qFatal("could not connect to the private bus: %s", qPrintable(bus.lastError().message()));
    }
}

PrivateBus::~PrivateBus() {
    QDBusConnection::disconnectFromBus(name_);
    stop(daemon_);
}

FakePortal::FakePortal(const PrivateBus& bus, const QString& variable, const QString& value)
    : bus_(bus.connection()) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!value.isEmpty()) {
        environment.insert(variable, value);
    }
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address());
    process_.setProcessEnvironment(environment);
    process_.start(qEnvironmentVariable("KELO_FAKE_PORTAL"), {});
    if (nextLine([] { return false; }) != u"ready"_s) {
        qFatal("fake_portal did not start: %s", qPrintable(errors()));
    }
}

FakePortal::~FakePortal() {
    stop(process_);
}

std::optional<QString> FakePortal::nextLine(const std::function<bool()>& giveUp) {
    waitUntil([&] {
        return process_.canReadLine() || process_.state() == QProcess::NotRunning || giveUp();
    });
    if (!process_.canReadLine()) {
        return std::nullopt;
    }
    return QString::fromUtf8(process_.readLine()).chopped(1);
}

bool FakePortal::activate(const QDBusObjectPath& session, const QString& shortcutId) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(u"org.freedesktop.portal.Desktop"_s, u"/kelo/test"_s,
                                       u"org.freedesktop.portal.GlobalShortcuts"_s, u"Activate"_s);
    call << QVariant::fromValue(session) << shortcutId;
    return bus_.call(call).type() == QDBusMessage::ReplyMessage;
}

} // namespace kelo::testing
