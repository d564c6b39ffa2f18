#pragma once

#include <QDateTime>
#include <QString>
#include <QVariant>
#include <optional>
#include <quick_parse.h>
#include <string>
#include <string_view>
#include <todo.h>

// Conversions between the task core's values and what QML reads: text as QString, absent values
// as null, task ids as their upper-case text.
namespace kelo {

[[nodiscard]] QString qtText(std::string_view text);
[[nodiscard]] std::string stdText(const QString& text);

[[nodiscard]] QString idText(const Uuid& id);
[[nodiscard]] QVariant idValue(const std::optional<Uuid>& id);
// None unless the value is the text of a UUID.
[[nodiscard]] std::optional<Uuid> idFrom(const QVariant& value);

[[nodiscard]] QDateTime dateTimeOf(Timestamp time);
// Null for none.
[[nodiscard]] QVariant nullable(const QVariant& value, bool present);

// {title, day, minute}
[[nodiscard]] QVariantMap parsedValue(const Parsed& parsed);
// {id, title, day, minute, done}
[[nodiscard]] QVariantMap todoValue(const Todo& todo);

} // namespace kelo
