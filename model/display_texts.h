#pragma once

#include <QObject>
#include <QString>
#include <calendar.h>
#include <functional>

namespace kelo {

// The island's display texts for QML, in the user's calendar and locale. The texts of a day
// depend on the day it is now; the model's own properties (the rows' texts, planText,
// headerDate) follow the clock, these calls answer for the moment they are made.
class DisplayTexts : public QObject {
    Q_OBJECT

public:
    DisplayTexts(const Calendar& calendar, std::function<Timestamp()> now, QObject* parent);

    // "5:00 PM"; compact drops the day period ("5:00").
    Q_INVOKABLE [[nodiscard]] QString time(int minute, bool compact) const;
    // "Today", "Tomorrow", a weekday within the week ahead, else a short date.
    Q_INVOKABLE [[nodiscard]] QString day(const QString& key) const;
    // "Today · 5:00 PM", "Tomorrow", "Backlog".
    Q_INVOKABLE [[nodiscard]] QString when(bool hasDay, const QString& day, bool hasMinute,
                                           int minute) const;

private:
    const Calendar& calendar_;
    std::function<Timestamp()> now_;
};

} // namespace kelo
