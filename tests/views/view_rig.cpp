#include "view_rig.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <qml_values.h>

namespace kelo::testing {

ViewRig::ViewRig(QObject* parent)
    : QObject(parent)
    , rig_(std::make_unique<Rig>()) {}

void ViewRig::startAt(int year, int month, int day, int hour, int minute) {
    rig_ = std::make_unique<Rig>(at(year, month, day, hour, minute));
    Q_EMIT modelChanged();
}

QString ViewRig::addTask(const QString& title, const QVariant& day, const QVariant& minute,
                         bool done) {
    std::optional<DayKey> key;
    if (day.typeId() == QMetaType::QString) {
        key = day.toString() == u"today" ? rig_->today() : stdText(day.toString());
    }
    const Todo task = rig_->addTask(
        stdText(title), key, minute.isNull() ? std::nullopt : std::optional(minute.toLongLong()));
    if (done) {
        rig_->model->store().toggle(task.id, rig_->time.now());
    }
    return idText(task.id);
}

QVariant ViewRig::task(const QString& id) const {
    const auto uuid = idFrom(id);
    const auto found = uuid ? rig_->task(*uuid) : std::nullopt;
    return found ? QVariant::fromValue(taskValue(*found)) : QVariant();
}

void ViewRig::blockAutostart() {
    QDir(rig_->autostartFolder()).removeRecursively();
    QFile file(rig_->autostartFolder());
    QVERIFY(file.open(QIODevice::WriteOnly));
}

void ViewRig::advance(int milliseconds) {
    rig_->time.advance(std::chrono::milliseconds(milliseconds));
    rig_->model->tick();
}

} // namespace kelo::testing
