#pragma once

#include <QObject>
#include <QQmlEngine>
#include <QStringList>
#include <island_model.h>
#include <memory>
#include <model_rig.h>

namespace kelo::testing {

// The model tests' rig for QML: a fresh model at 2025-03-06 09:00 unless started elsewhere.
class ViewRig : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(kelo::IslandModel* model READ model NOTIFY modelChanged FINAL)
    // Every request the model made of the desktop, such as "quit" or "reveal <path>".
    Q_PROPERTY(QStringList calls READ calls FINAL)

public:
    explicit ViewRig(QObject* parent = nullptr);

    [[nodiscard]] IslandModel* model() const { return rig_->model.get(); }
    [[nodiscard]] QStringList calls() const { return rig_->platform.calls; }

    Q_INVOKABLE void startAt(int year, int month, int day, int hour, int minute);
    // Adds a task straight to the store and returns its id. `day` is a key, "today" or
    // undefined; `minute` a number or undefined.
    Q_INVOKABLE QString addTask(const QString& title, const QVariant& day = {},
                                const QVariant& minute = {}, bool done = false);
    Q_INVOKABLE QVariant task(const QString& id) const;
    // Lets time pass, running the delayed work that falls due, and ticks.
    Q_INVOKABLE void advance(int milliseconds);
    // Makes registering the login item fail: a file stands where its folder would be.
    Q_INVOKABLE void blockAutostart();

Q_SIGNALS:
    void modelChanged();

private:
    std::unique_ptr<Rig> rig_;
};

} // namespace kelo::testing
