#include "preferences.h"

#include <QSettings>
#include <optional>

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

template <typename T>
void assign(T& field, T value, Preferences* owner, void (Preferences::*signal)()) {
    if (field != value) {
        field = value;
        Q_EMIT(owner->*signal)();
    }
}

} // namespace

QString rawValue(IslandTheme theme) {
    return theme == IslandTheme::Glass ? u"glass"_s : u"standard"_s;
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

Preferences::Preferences(std::unique_ptr<QSettings> settings, QObject* parent)
    : QObject(parent)
    , settings_(std::move(settings)) {
    if (textOf(settings_->value(themeKey)) == rawValue(IslandTheme::Glass)) {
        theme_ = IslandTheme::Glass;
    }
    const QString look = textOf(settings_->value(glassLookKey));
    if (look == rawValue(GlassLook::Light)) {
        glassLook_ = GlassLook::Light;
    } else if (look == rawValue(GlassLook::Dark)) {
        glassLook_ = GlassLook::Dark;
    }
    reminderSound_ = booleanOf(settings_->value(reminderSoundKey)).value_or(true);
}

Preferences::~Preferences() = default;

void Preferences::setTheme(IslandTheme theme) {
    assign(theme_, theme, this, &Preferences::themeChanged);
    write(themeKey, rawValue(theme));
}

void Preferences::setGlassLook(GlassLook look) {
    assign(glassLook_, look, this, &Preferences::glassLookChanged);
    write(glassLookKey, rawValue(look));
}

void Preferences::setReminderSound(bool on) {
    assign(reminderSound_, on, this, &Preferences::reminderSoundChanged);
    write(reminderSoundKey, on);
}

std::optional<QString> Preferences::storedTheme() const {
    settings_->sync();
    const QVariant value = settings_->value(themeKey);
    return value.isValid() ? std::optional(value.toString()) : std::nullopt;
}

void Preferences::write(const QString& key, const QVariant& value) {
    if (isolated_) {
        return;
    }
    settings_->setValue(key, value);
    // Written through at once: Kelo is usually ended by logging out, not by quitting.
    settings_->sync();
}

} // namespace kelo
