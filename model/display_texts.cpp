#include "display_texts.h"

#include "qml_values.h"

#include <format.h>

namespace kelo {

DisplayTexts::DisplayTexts(const Calendar& calendar, std::function<Timestamp()> now,
                           QObject* parent)
    : QObject(parent)
    , calendar_(calendar)
    , now_(std::move(now)) {}

QString DisplayTexts::time(int minute, bool compact) const {
    return qtText(Format::time(minute, compact, calendar_));
}

QString DisplayTexts::day(const QString& key) const {
    return qtText(Format::day(stdText(key), now_(), calendar_));
}

QString DisplayTexts::when(bool hasDay, const QString& day, bool hasMinute, int minute) const {
    return qtText(Format::when(hasDay ? std::optional(stdText(day)) : std::nullopt,
                               hasMinute ? std::optional<std::int64_t>(minute) : std::nullopt,
                               now_(), calendar_));
}

} // namespace kelo
