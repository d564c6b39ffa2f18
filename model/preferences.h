#pragma once

#include "island_types.h"

#include <QObject>
#include <QString>
#include <memory>
#include <optional>

class QSettings;

namespace kelo {

// The user's three preferences, kept in QSettings: "theme" and "glassLook" as their raw value
// texts, "reminderSound" as a boolean (true or false in the INI file). They are read once, when
// built; unknown texts and values of the wrong kind read as the defaults and are replaced only
// when the user next chooses. Every assignment is written, even of the value held, so that the
// stored copy always matches what the user last chose; nothing is written while isolated.
class Preferences : public QObject {
    Q_OBJECT
    Q_PROPERTY(kelo::island::IslandTheme theme READ theme WRITE setTheme NOTIFY themeChanged FINAL)
    Q_PROPERTY(kelo::island::GlassLook glassLook READ glassLook WRITE setGlassLook NOTIFY
                   glassLookChanged FINAL)
    Q_PROPERTY(bool reminderSound READ reminderSound WRITE setReminderSound NOTIFY
                   reminderSoundChanged FINAL)

public:
    Preferences(std::unique_ptr<QSettings> settings, QObject* parent);
    ~Preferences() override;

    [[nodiscard]] IslandTheme theme() const { return theme_; }
    void setTheme(IslandTheme theme);
    [[nodiscard]] GlassLook glassLook() const { return glassLook_; }
    void setGlassLook(GlassLook look);
    [[nodiscard]] bool reminderSound() const { return reminderSound_; }
    void setReminderSound(bool on);

    void setIsolated(bool isolated) { isolated_ = isolated; }

    // The theme as stored now, whatever the run holds in memory; none when nothing is stored.
    [[nodiscard]] std::optional<QString> storedTheme() const;

Q_SIGNALS:
    void themeChanged();
    void glassLookChanged();
    void reminderSoundChanged();

private:
    void write(const QString& key, const QVariant& value);

    std::unique_ptr<QSettings> settings_;
    IslandTheme theme_ = IslandTheme::Standard;
    GlassLook glassLook_ = GlassLook::System;
    bool reminderSound_ = true;
    bool isolated_ = false;
};

[[nodiscard]] QString rawValue(IslandTheme theme);
[[nodiscard]] QString rawValue(GlassLook look);

} // namespace kelo
