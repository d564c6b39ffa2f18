#pragma once

#include "island_types.h"

#include <QString>

class QSettings;

namespace kelo {

// The user's three preferences as stored: "theme" and "glassLook" as their raw value texts,
// "reminderSound" as a boolean (true or false in the INI file).
struct Preferences {
    IslandTheme theme = IslandTheme::Standard;
    GlassLook glassLook = GlassLook::System;
    bool reminderSound = true;

    bool operator==(const Preferences&) const = default;
};

[[nodiscard]] QString rawValue(IslandTheme theme);
[[nodiscard]] QString rawValue(GlassLook look);

// Unknown texts and values of the wrong kind read as the defaults; they are replaced only when
// the user next changes that preference.
[[nodiscard]] Preferences readPreferences(const QSettings& settings);

void writeTheme(QSettings& settings, IslandTheme theme);
void writeGlassLook(QSettings& settings, GlassLook look);
void writeReminderSound(QSettings& settings, bool on);

} // namespace kelo
