#include "island_model.h"

// The faces of the model that QML uses: ids as text, absent values as null, tasks looked up in
// the store by id so that a view never hands over a stale copy.
namespace kelo {

namespace {

std::optional<DayKey> dayFrom(const QVariant& value) {
    if (value.typeId() != QMetaType::QString) {
        return std::nullopt;
    }
    return stdText(value.toString());
}

// QML passes numbers as doubles; anything that is not a whole number is no minute.
std::optional<std::int64_t> minuteFrom(const QVariant& value) {
    bool ok = false;
    const double number = value.toDouble(&ok);
    if (value.isNull() || !ok || number != static_cast<double>(static_cast<std::int64_t>(number))) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(number);
}

} // namespace

island::BucketTab IslandModel::bucketTab() const {
    return static_cast<island::BucketTab>(bucket_);
}

void IslandModel::setBucketTab(island::BucketTab tab) {
    if (const std::optional<Bucket> bucket = bucketFromRaw(static_cast<int>(tab))) {
        setBucket(*bucket);
    }
}

QDateTime IslandModel::nowDateTime() const {
    return dateTimeOf(now_);
}

QString IslandModel::editingId() const {
    return idText(editing_);
}

void IslandModel::setEditingId(const QString& id) {
    setEditing(idFrom(id));
}

QString IslandModel::schedulingId() const {
    return idText(scheduling_);
}

void IslandModel::setSchedulingId(const QString& id) {
    setScheduling(idFrom(id));
}

PlanValue IslandModel::planValue() const {
    return kelo::planValue(derived_.plan);
}

TaskValue IslandModel::alertTodoValue() const {
    return derived_.alertTodo ? taskValue(*derived_.alertTodo) : TaskValue{};
}

ProgressValue IslandModel::progressValue() const {
    return kelo::progressValue(derived_.progress);
}

TaskValue IslandModel::nextTimedValue() const {
    return derived_.nextTimed ? taskValue(*derived_.nextTimed) : TaskValue{};
}

QString IslandModel::todayKey() const {
    return qtText(derived_.day.today);
}

QString IslandModel::tomorrowKey() const {
    return qtText(derived_.day.tomorrow);
}

QString IslandModel::weekendKey() const {
    return qtText(derived_.day.weekend);
}

QString IslandModel::nextWeekKey() const {
    return qtText(derived_.day.nextWeek);
}

QString IslandModel::headerDate() const {
    return qtText(derived_.day.headerDate);
}

std::optional<Todo> IslandModel::todoWithId(const QString& id) const {
    const std::optional<Uuid> uuid = idFrom(id);
    return uuid ? todoWithId(*uuid) : std::nullopt;
}

void IslandModel::pickDay(const QVariant& day) {
    pickDay(dayFrom(day));
}

void IslandModel::pickTime(const QVariant& minute) {
    pickTime(minuteFrom(minute));
}

void IslandModel::rename(const QString& id, const QString& text) {
    if (const std::optional<Todo> task = todoWithId(id)) {
        rename(*task, text);
    }
}

void IslandModel::move(const QString& id, const QVariant& day, const QVariant& minute) {
    if (const std::optional<Todo> task = todoWithId(id)) {
        move(*task, dayFrom(day), minuteFrom(minute));
    }
}

bool IslandModel::reschedule(const QString& id, const QString& phrase) {
    const std::optional<Todo> task = todoWithId(id);
    return task && reschedule(*task, phrase);
}

void IslandModel::toggle(const QString& id) {
    if (const std::optional<Todo> task = todoWithId(id)) {
        toggle(*task);
    }
}

void IslandModel::deleteTask(const QString& id) {
    if (const std::optional<Todo> task = todoWithId(id)) {
        deleteTodo(*task);
    }
}

void IslandModel::check(const QString& id) {
    if (const std::optional<Todo> task = todoWithId(id)) {
        check(*task);
    }
}

void IslandModel::snooze(const QString& id) {
    if (const std::optional<Todo> task = todoWithId(id)) {
        snooze(*task);
    }
}

void IslandModel::showDataFile() {
    platform().revealFile(QString::fromStdString(TodoStore::defaultPath().string()));
}

void IslandModel::quit() {
    platform().quit();
}

} // namespace kelo
