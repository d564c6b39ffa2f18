#pragma once

#include <QDir>
#include <QFile>
#include <QObject>
#include <QQmlEngine>
#include <model_rig.h>
#include <qml_values.h>

namespace kelo::testing {

// The model tests' rig for QML: a fresh model at 2025-03-06 09:00 unless started elsewhere.
class ViewRig : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(kelo::IslandModel* model READ model NOTIFY modelChanged FINAL)
    // Every request the model made of the desktop, such as "quit" or "reveal <path>".
    Q_PROPERTY(QStringList calls READ calls FINAL)

public:
    using QObject::QObject;

    IslandModel* model() const { return rig_->model.get(); }
    QStringList calls() const { return rig_->platform.calls; }

    Q_INVOKABLE void startAt(int year, int month, int day, int hour, int minute) {
        rig_ = std::make_unique<Rig>(at(year, month, day, hour, minute));
        Q_EMIT modelChanged();
    }
    // Adds a task straight to the store and returns its id. `day` is a key, "today" or
    // undefined; `minute` a number or undefined.
    Q_INVOKABLE QString addTask(const QString& title, const QVariant& day = {},
                                const QVariant& minute = {}, bool done = false) {
        const DayKey key = day.toString() == u"today" ? rig_->today() : stdText(day.toString());
        const Todo task =
            rig_->addTask(stdText(title), day.isNull() ? std::nullopt : std::optional(key),
                          minute.isNull() ? std::nullopt : std::optional(minute.toLongLong()));
        if (done) {
            rig_->model->store().toggle(task.id, rig_->now);
        }
        return idText(task.id);
    }
    Q_INVOKABLE QVariant task(const QString& id) const {
        const Todo* found = idFrom(id) ? rig_->model->store().find(*idFrom(id)) : nullptr;
        return found ? QVariant::fromValue(taskValue(*found)) : QVariant();
    }
    // Lets time pass, running the delayed work that falls due, and ticks.
    Q_INVOKABLE void advance(int milliseconds) {
        rig_->advance(std::chrono::milliseconds(milliseconds));
        rig_->model->tick();
    }
    // Makes registering the login item fail: a file stands where its folder would be.
    Q_INVOKABLE bool blockAutostart() {
        QFile file(rig_->autostartFolder());
        return QDir(rig_->autostartFolder()).removeRecursively() && file.open(QIODevice::WriteOnly);
    }

Q_SIGNALS:
    void modelChanged();

private:
    std::unique_ptr<Rig> rig_ = std::make_unique<Rig>();
};

} // namespace kelo::testing
