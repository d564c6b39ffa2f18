#include "preferences.h"

#include <QSettings>

using namespace Qt::StringLiterals;

namespace kelo {

namespace {

const QString themeKey = u"theme"_s;
const QString glassLookKey = u"glassLook"_s;
const QString reminderSoundKey = u"reminderSound"_s;

// A boolean read back from an INI file is the text "true" or "false"; a value set in this run
// and not yet re-read is a real boolean. Anything else is not a boolean.
std::optional<bool> booleanOf(const QVariant& value) {
    if (value.typeId() == QMetaType::Bool) {
        return value.toBool();
    }
    if (value.typeId() == QMetaType::QString) {
        const QString text = value.toString();
        if (text == "true"_L1) {
            return true;
        }
        if (text == "false"_L1) {
            return false;
        }
    }
    return std::nullopt;
}

QString textOf(const QVariant& value) {
    return value.typeId() == QMetaType::QString ? value.toString() : QString();
}

void write(QSettings& settings, const QString& key, const QVariant& value) {
    settings.setValue(key, value);
    // Written through at once: Kelo is usually ended by logging out, not by quitting.
    settings.sync();
}

} // namespace

QString rawValue(IslandTheme theme) {
    switch (theme) {
    case IslandTheme::Glass:
        return u"glass"_s;
    case IslandTheme::Standard:
        break;
    }
    return u"standard"_s;
}

QString rawValue(GlassLook look) {
    switch (look) {
    case GlassLook::Light:
        return u"light"_s;
    case GlassLook::Dark:
        return u"dark"_s;
    case GlassLook::System:
        break;
    }
    return u"system"_s;
}

Preferences readPreferences(const QSettings& settings) {
    Preferences preferences;
    if (textOf(settings.value(themeKey)) == rawValue(IslandTheme::Glass)) {
        preferences.theme = IslandTheme::Glass;
    }
    const QString look = textOf(settings.value(glassLookKey));
    if (look == rawValue(GlassLook::Light)) {
        preferences.glassLook = GlassLook::Light;
    } else if (look == rawValue(GlassLook::Dark)) {
        preferences.glassLook = GlassLook::Dark;
    }
    preferences.reminderSound = booleanOf(settings.value(reminderSoundKey)).value_or(true);
    return preferences;
}

void writeTheme(QSettings& settings, IslandTheme theme) {
    write(settings, themeKey, rawValue(theme));
}

void writeGlassLook(QSettings& settings, GlassLook look) {
    write(settings, glassLookKey, rawValue(look));
}

void writeReminderSound(QSettings& settings, bool on) {
    write(settings, reminderSoundKey, on);
}

} // namespace kelo
