#include "island_model.h"
#include "qml_values.h"

// The faces of the model that QML uses: ids as text, absent values as null, tasks looked up in
// the store by id so that a view never hands over a stale copy.
namespace kelo {

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

QVariant IslandModel::editingValue() const {
    return idValue(editing_);
}

void IslandModel::setEditingValue(const QVariant& id) {
    setEditing(idFrom(id));
}

QVariant IslandModel::schedulingValue() const {
    return idValue(scheduling_);
}

void IslandModel::setSchedulingValue(const QVariant& id) {
    setScheduling(idFrom(id));
}

QVariant IslandModel::toastValue() const {
    return toast_ ? QVariant::fromValue(*toast_) : QVariant::fromValue(nullptr);
}

QVariantMap IslandModel::planValue() const {
    return parsedValue(plan());
}

QVariant IslandModel::alertTodoValue() const {
    const std::optional<Todo> todo = alertTodo();
    return todo ? QVariant(todoValue(*todo)) : QVariant::fromValue(nullptr);
}

std::optional<Todo> IslandModel::todoWithId(const QString& id) const {
    const std::optional<Uuid> uuid = Uuid::parse(stdText(id));
    return uuid ? todoWithId(*uuid) : std::nullopt;
}

void IslandModel::chooseDay(const QVariant& day) {
    const bool present = day.typeId() == QMetaType::QString;
    pickDay(present ? std::optional(stdText(day.toString())) : std::nullopt);
}

void IslandModel::chooseTime(const QVariant& minute) {
    bool ok = false;
    const qint64 value = minute.toLongLong(&ok);
    pickTime(ok && !minute.isNull() ? std::optional<std::int64_t>(value) : std::nullopt);
}

void IslandModel::renameTask(const QString& id, const QString& text) {
    if (const std::optional<Todo> task = todoWithId(id)) {
        rename(*task, text);
    }
}

bool IslandModel::rescheduleTask(const QString& id, const QString& phrase) {
    const std::optional<Todo> task = todoWithId(id);
    return task && reschedule(*task, phrase);
}

void IslandModel::toggleTask(const QString& id) {
    if (const std::optional<Todo> task = todoWithId(id)) {
        toggle(*task);
    }
}

void IslandModel::deleteTask(const QString& id) {
    if (const std::optional<Todo> task = todoWithId(id)) {
        deleteTodo(*task);
    }
}

void IslandModel::snoozeTask(const QString& id) {
    if (const std::optional<Todo> task = todoWithId(id)) {
        snooze(*task);
    }
}

} // namespace kelo
