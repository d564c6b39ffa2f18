#include "portal_rig.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QDBusMessage>
#include <QFile>
#include <QStandardPaths>

namespace kelo::testing {
namespace {

using namespace Qt::Literals::StringLiterals;

// The session bus's rules without its service folders, listening in the test's own folder.
const QString busConfiguration = uR"(<!DOCTYPE busconfig PUBLIC
 "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
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

} // namespace

void waitUntil(const std::function<bool()>& done) {
    while (!done()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

PrivateBus::PrivateBus() {
    const QString program = QStandardPaths::findExecutable(u"dbus-daemon"_s);
    if (program.isEmpty()) {
        failure_ = u"dbus-daemon is not installed (Debian package dbus-daemon)"_s;
        return;
    }
    QFile configuration(folder_.filePath(u"bus.conf"_s));
    if (!configuration.open(QIODevice::WriteOnly) ||
        configuration.write(busConfiguration.arg(folder_.path()).toUtf8()) < 0) {
        failure_ = u"could not write "_s % configuration.fileName();
        return;
    }
    configuration.close();

    daemon_.start(program, {u"--config-file="_s % configuration.fileName(), u"--print-address"_s,
                            u"--nofork"_s});
    while (!daemon_.canReadLine() && daemon_.waitForReadyRead(-1)) {
    }
    if (!daemon_.canReadLine()) {
        failure_ = u"dbus-daemon did not start: "_s % daemon_.errorString() % u' ' %
                   QString::fromLocal8Bit(daemon_.readAllStandardError());
        return;
    }
    const QString address = QString::fromUtf8(daemon_.readLine().trimmed());
    static int connections = 0;
    connectionName_ = u"kelo-test-"_s % QString::number(++connections);
    const QDBusConnection bus = QDBusConnection::connectToBus(address, connectionName_);
    if (!bus.isConnected()) {
        failure_ = u"could not connect to the private bus: "_s % bus.lastError().message();
        return;
    }
    address_ = address;
}

PrivateBus::~PrivateBus() {
    if (!connectionName_.isEmpty()) {
        QDBusConnection::disconnectFromBus(connectionName_);
    }
    if (daemon_.state() != QProcess::NotRunning) {
        daemon_.kill();
        daemon_.waitForFinished(-1);
    }
}

QDBusConnection PrivateBus::connection() const {
    return QDBusConnection(connectionName_);
}

FakePortal::FakePortal(const PrivateBus& bus, const QProcessEnvironment& environment)
    : bus_(bus.connection()) {
    QProcessEnvironment all = QProcessEnvironment::systemEnvironment();
    all.insert(environment);
    all.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address());
    process_.setProcessEnvironment(all);
    process_.start(qEnvironmentVariable("KELO_FAKE_PORTAL"), {});
    ready_ = nextLine([] { return false; }) == u"ready"_s;
}

FakePortal::~FakePortal() {
    if (process_.state() != QProcess::NotRunning) {
        process_.kill();
        process_.waitForFinished(-1);
    }
}

std::optional<QString> FakePortal::nextLine(const std::function<bool()>& giveUp) {
    waitUntil([&] {
        return process_.canReadLine() || process_.state() == QProcess::NotRunning || giveUp();
    });
    if (!process_.canReadLine()) {
        return std::nullopt;
    }
    QString line = QString::fromUtf8(process_.readLine());
    line.chop(1);
    return line;
}

bool FakePortal::activate(const QDBusObjectPath& session, const QString& shortcutId) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(u"org.freedesktop.portal.Desktop"_s, u"/kelo/test"_s,
                                       u"org.kelo.FakePortal"_s, u"Activate"_s);
    call << QVariant::fromValue(session) << shortcutId;
    return bus_.call(call).type() == QDBusMessage::ReplyMessage;
}

QString FakePortal::errors() {
    return QString::fromLocal8Bit(process_.readAllStandardError());
}

} // namespace kelo::testing
