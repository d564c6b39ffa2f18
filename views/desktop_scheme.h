#pragma once

#include <QDBusVariant>
#include <QObject>
#include <QQmlEngine>
#include <QVariant>
#include <optional>

namespace kelo::views {

// Whether the desktop is in its dark colour scheme, for the glass island's System look: the
// freedesktop appearance setting ("color-scheme") through the settings portal where the session
// offers it, followed as it changes; else the lightness of Qt's palette.
class DesktopScheme : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool dark READ dark NOTIFY darkChanged FINAL)

public:
    explicit DesktopScheme(QObject* parent = nullptr);

    [[nodiscard]] bool dark() const;
    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void darkChanged();

private Q_SLOTS:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void setPreference(const QVariant& value);

    // 1 prefers dark, 2 prefers light, 0 (or none) leaves it to the palette.
    std::optional<uint> preference_;
    bool dark_ = false;
};

} // namespace kelo::views
