#include "qml_values.h"

using namespace Qt::StringLiterals;

namespace kelo {

QString qtText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string stdText(const QString& text) {
    return text.toStdString();
}

QString idText(const Uuid& id) {
    return qtText(id.text());
}

QVariant idValue(const std::optional<Uuid>& id) {
    return id ? QVariant(idText(*id)) : QVariant::fromValue(nullptr);
}

std::optional<Uuid> idFrom(const QVariant& value) {
    if (value.typeId() != QMetaType::QString) {
        return std::nullopt;
    }
    return Uuid::parse(stdText(value.toString()));
}

QDateTime dateTimeOf(Timestamp time) {
    return QDateTime::fromMSecsSinceEpoch(time.time_since_epoch().count(), Qt::UTC);
}

QVariant nullable(const QVariant& value, bool present) {
    return present ? value : QVariant::fromValue(nullptr);
}

QVariantMap parsedValue(const Parsed& parsed) {
    return {
        {u"title"_s, qtText(parsed.title)},
        {u"day"_s, nullable(qtText(parsed.day.value_or(DayKey())), parsed.day.has_value())},
        {u"minute"_s, nullable(qint64{parsed.minute.value_or(0)}, parsed.minute.has_value())},
    };
}

QVariantMap todoValue(const Todo& todo) {
    return {
        {u"id"_s, idText(todo.id)},
        {u"title"_s, qtText(todo.title)},
        {u"day"_s, nullable(qtText(todo.day.value_or(DayKey())), todo.day.has_value())},
        {u"minute"_s, nullable(qint64{todo.minute.value_or(0)}, todo.minute.has_value())},
        {u"done"_s, todo.isDone()},
    };
}

} // namespace kelo
