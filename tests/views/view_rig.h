#pragma once

#include <QObject>
#include <QQmlEngine>
#include <QStringList>
#include <island_model.h>
#include <memory>
#include <model_rig.h>

namespace kelo::testing {

// One island model for a view test, as the model tests build it: scratch files, a recording
// desktop and time that passes only when the test says so (from Thursday 2025-03-06 09:00 in
// Berlin unless the test starts it elsewhere).
class ViewRig : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(kelo::IslandModel* model READ model NOTIFY modelChanged FINAL)
    // Every request the model made of the desktop, such as "quit" or "reveal <path>".
    Q_PROPERTY(QStringList calls READ calls FINAL)
    Q_PROPERTY(QString today READ today NOTIFY modelChanged FINAL)

public:
    explicit ViewRig(QObject* parent = nullptr);

    [[nodiscard]] IslandModel* model() const { return rig_->model.get(); }
    [[nodiscard]] QStringList calls() const { return rig_->platform.calls; }
    [[nodiscard]] QString today() const;

    // A fresh model whose clock starts at the given wall time.
    Q_INVOKABLE void startAt(int year, int month, int day, int hour, int minute);
    // Adds a task straight to the store; returns its id. `day` may be a key, "today", or
    // undefined for none; `minute` a number or undefined.
    Q_INVOKABLE QString addTask(const QString& title, const QVariant& day = {},
                                const QVariant& minute = {}, bool done = false);
    Q_INVOKABLE void deleteTask(const QString& id);
    Q_INVOKABLE QVariant task(const QString& id) const;
    // Lets time pass, running the model's delayed work that falls due, and ticks.
    Q_INVOKABLE void advance(int milliseconds);
    // Makes registering the login item fail: a file stands where its folder would be.
    Q_INVOKABLE void blockAutostart();

Q_SIGNALS:
    void modelChanged();

private:
    std::unique_ptr<Rig> rig_;
};

} // namespace kelo::testing
