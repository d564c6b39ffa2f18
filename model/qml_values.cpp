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

namespace {

ScheduleValue scheduleValue(const Schedule& schedule) {
    return {
        schedule.day.has_value(),
        qtText(schedule.day.value_or(DayKey())),
        schedule.minute.has_value(),
        static_cast<int>(schedule.minute.value_or(0)),
    };
}

} // namespace

TaskValue taskValue(const Todo& todo) {
    TaskValue value;
    static_cast<ScheduleValue&>(value) = scheduleValue(todo);
    value.id = idText(todo.id);
    value.title = qtText(todo.title);
    value.done = todo.isDone();
    return value;
}

PlanValue planValue(const Parsed& parsed) {
    PlanValue value;
    static_cast<ScheduleValue&>(value) = scheduleValue(parsed);
    value.title = qtText(parsed.title);
    return value;
}

ProgressValue progressValue(const DayProgress& progress) {
    return {progress.done, progress.total};
}

} // namespace kelo
