#include "desktop_scheme.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QPalette>

using namespace Qt::StringLiterals;

namespace kelo::views {

namespace {

const QString portalService = u"org.freedesktop.portal.Desktop"_s;
const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString settingsInterface = u"org.freedesktop.portal.Settings"_s;
const QString appearance = u"org.freedesktop.appearance"_s;
const QString colorScheme = u"color-scheme"_s;

bool paletteIsDark() {
    return QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
}

// The portal answers with the value wrapped in variants, one or two deep by version.
QVariant unwrapped(QVariant value) {
    while (value.canConvert<QDBusVariant>() && value.userType() == qMetaTypeId<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

} // namespace

DesktopScheme::DesktopScheme(QObject* parent)
    : QObject(parent)
    , dark_(paletteIsDark()) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.connect(portalService, portalPath, settingsInterface, u"SettingChanged"_s, this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    // Asked without waiting: a session without the portal must not hold up the island.
    QDBusMessage read =
        QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface, u"Read"_s);
    read << appearance << colorScheme;
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(read), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this](QDBusPendingCallWatcher* call) {
                const QDBusPendingReply<QVariant> reply = *call;
                if (!reply.isError()) {
                    setPreference(reply.value());
                }
                call->deleteLater();
            });
    qGuiApp->installEventFilter(this);
}

bool DesktopScheme::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ApplicationPaletteChange) {
        setPreference({});
    }
    return QObject::eventFilter(watched, event);
}

bool DesktopScheme::dark() const {
    return dark_;
}

void DesktopScheme::settingChanged(const QString& group, const QString& key,
                                   const QDBusVariant& value) {
    if (group == appearance && key == colorScheme) {
        setPreference(value.variant());
    }
}

void DesktopScheme::setPreference(const QVariant& value) {
    const QVariant plain = unwrapped(value);
    if (plain.isValid()) {
        preference_ = plain.toUInt();
    }
    const bool dark = preference_ == 1U ? true : preference_ == 2U ? false : paletteIsDark();
    if (dark != dark_) {
        dark_ = dark;
        Q_EMIT darkChanged();
    }
}

} // namespace kelo::views
