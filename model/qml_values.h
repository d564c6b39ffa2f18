#pragma once

#include <QDateTime>
#include <QObject>
#include <QString>
#include <lists.h>
#include <optional>
#include <quick_parse.h>
#include <string>
#include <string_view>
#include <todo.h>

// The task core's values as QML reads them: text as QString, task ids as their upper-case text,
// and an absent day or minute as a false `has…` beside the value, since QML has no optionals.
// The views' QML module registers these gadgets as value types.
namespace kelo {

[[nodiscard]] QString qtText(std::string_view text);
[[nodiscard]] std::string stdText(const QString& text);

[[nodiscard]] QString idText(const Uuid& id);
// Empty for none.
[[nodiscard]] QString idText(const std::optional<Uuid>& id);
// None unless the text is a UUID.
[[nodiscard]] std::optional<Uuid> idFrom(const QString& text);

[[nodiscard]] QDateTime dateTimeOf(Timestamp time);

// A day and a time of day, either absent.
struct ScheduleValue {
    Q_GADGET
    Q_PROPERTY(bool hasDay MEMBER hasDay FINAL)
    Q_PROPERTY(QString day MEMBER day FINAL)
    Q_PROPERTY(bool hasMinute MEMBER hasMinute FINAL)
    Q_PROPERTY(int minute MEMBER minute FINAL)

public:
    bool hasDay = false;
    QString day;
    bool hasMinute = false;
    int minute = 0;

    bool operator==(const ScheduleValue&) const = default;
};

// One task.
struct TaskValue : ScheduleValue {
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id FINAL)
    Q_PROPERTY(QString title MEMBER title FINAL)
    Q_PROPERTY(bool done MEMBER done FINAL)

public:
    QString id;
    QString title;
    bool done = false;

    bool operator==(const TaskValue&) const = default;
};

[[nodiscard]] TaskValue taskValue(const Todo& todo);

// What the add field makes of the draft.
struct PlanValue : ScheduleValue {
    Q_GADGET
    Q_PROPERTY(QString title MEMBER title FINAL)

public:
    QString title;

    bool operator==(const PlanValue&) const = default;
};

[[nodiscard]] PlanValue planValue(const Parsed& parsed);

// Today's done and total counts.
struct ProgressValue {
    Q_GADGET
    Q_PROPERTY(int done MEMBER done FINAL)
    Q_PROPERTY(int total MEMBER total FINAL)
    // done / total, or 0 when there is no task today.
    Q_PROPERTY(double fraction READ fraction FINAL)

public:
    int done = 0;
    int total = 0;

    [[nodiscard]] double fraction() const { return total > 0 ? double(done) / total : 0.0; }

    bool operator==(const ProgressValue&) const = default;
};

[[nodiscard]] ProgressValue progressValue(const DayProgress& progress);

} // namespace kelo
