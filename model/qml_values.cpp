#include "qml_values.h"

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

QString idText(const std::optional<Uuid>& id) {
    return id ? idText(*id) : QString();
}

std::optional<Uuid> idFrom(const QString& text) {
    return Uuid::parse(stdText(text));
}

QDateTime dateTimeOf(Timestamp time) {
    return QDateTime::fromMSecsSinceEpoch(time.time_since_epoch().count(), Qt::UTC);
}

TaskValue taskValue(const Todo& todo) {
    return {
        idText(todo.id),         qtText(todo.title),
        todo.day.has_value(),    qtText(todo.day.value_or(DayKey())),
        todo.minute.has_value(), static_cast<int>(todo.minute.value_or(0)),
        todo.isDone(),
    };
}

PlanValue planValue(const Parsed& parsed) {
    return {
        qtText(parsed.title),
        parsed.day.has_value(),
        qtText(parsed.day.value_or(DayKey())),
        parsed.minute.has_value(),
        static_cast<int>(parsed.minute.value_or(0)),
    };
}

ProgressValue progressValue(const DayProgress& progress) {
    return {progress.done, progress.total};
}

} // namespace kelo
