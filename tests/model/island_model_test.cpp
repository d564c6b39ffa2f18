#include "model_rig.h"

#include <QSettings>
#include <QSignalSpy>
#include <QTest>
#include <data_file_watcher.h>
#include <functional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using kelo::testing::at;
using kelo::testing::Rig;

namespace kelo {

namespace {

// Adds a task named t1, t2... in order, due today at `minute`.
Todo addDue(Rig& rig, std::int64_t minute) {
    const auto title = "t" + std::to_string(rig.model->store().todos().size() + 1);
    return rig.addTask(title, rig.today(), minute);
}

Todo first(const Rig& rig) {
    return rig.model->store().todos().at(0);
}

// One word of a script, as the user, the desktop or the clock would act.
const std::map<QString, std::function<void(Rig&)>> steps{
    {u"in"_s, [](Rig& rig) { rig.model->hover(true); }},
    {u"out"_s, [](Rig& rig) { rig.model->hover(false); }},
    {u"peek"_s, [](Rig& rig) { rig.model->setMode(Mode::peek()); }},
    {u"click"_s, [](Rig& rig) { rig.model->open(false); }},
    {u"hotkey"_s, [](Rig& rig) { rig.model->hotKey(); }},
    {u"close"_s, [](Rig& rig) { rig.model->setMode(Mode::closed()); }},
    {u"hold"_s, [](Rig& rig) { rig.model->setMode(rig.model->mode()); }},
    {u"escape"_s, [](Rig& rig) { rig.model->escape(); }},
    {u"settings"_s, [](Rig& rig) { rig.model->toggleSettings(); }},
    {u"upcoming"_s, [](Rig& rig) { rig.model->setBucket(Bucket::upcoming); }},
    {u"type"_s, [](Rig& rig) { rig.model->setDraft(u"buy"_s); }},
    {u"clear"_s, [](Rig& rig) { rig.model->setDraft(QString()); }},
    // A blank draft; a phrase, the chips of today, no day and 17:00; Return.
    // The notch 100 x 30, room for an open island 700 high, a task for tomorrow.
    {u"notch"_s, [](Rig& rig) { rig.model->setNotch(QSizeF(100, 30)); }},
    {u"tall"_s, [](Rig& rig) { rig.model->setOpenHeight(700); }},
    {u"tomorrow"_s, [](Rig& rig) { rig.addTask("later", Day::adding(1, rig.today())); }},
    {u"blank"_s, [](Rig& rig) { rig.model->setDraft(u" \t "_s); }},
    {u"plan"_s, [](Rig& rig) { rig.model->setDraft(u"groceries fri 9am"_s); }},
    {u"today"_s, [](Rig& rig) { rig.model->pickDay(rig.today()); }},
    {u"noday"_s, [](Rig& rig) { rig.model->pickDay(std::nullopt); }},
    {u"5pm"_s, [](Rig& rig) { rig.model->pickTime(std::optional<std::int64_t>(17 * 60)); }},
    {u"add"_s, [](Rig& rig) { rig.model->addDraft(); }},
    {u"edit"_s, [](Rig& rig) { rig.model->setEditing(rig.addTask("taxes").id); }},
    {u"delete"_s, [](Rig& rig) { rig.model->deleteTodo(rig.addTask("taxes")); }},
    {u"schedule"_s, [](Rig& rig) { rig.model->setScheduling(rig.addTask("taxes").id); }},
    {u"isolate"_s, [](Rig& rig) { rig.model->setIsolated(true); }},
    {u"unisolate"_s, [](Rig& rig) { rig.model->setIsolated(false); }},
    {u"silent"_s, [](Rig& rig) { rig.model->preferences()->setReminderSound(false); }},
    {u"sound"_s, [](Rig& rig) { rig.model->preferences()->setReminderSound(true); }},
    {u"glass"_s, [](Rig& rig) { rig.model->preferences()->setTheme(IslandTheme::Glass); }},
    {u"dark"_s, [](Rig& rig) { rig.model->preferences()->setGlassLook(GlassLook::Dark); }},
    // A task due this minute, or the next one; the first task one minute earlier.
    {u"due"_s, [](Rig& rig) { addDue(rig, Day::minuteOf(rig.now, rig.model->calendar())); }},
    {u"soon"_s, [](Rig& rig) { addDue(rig, Day::minuteOf(rig.now, rig.model->calendar()) + 1); }},
    {u"earlier"_s,
     [](Rig& rig) { rig.model->move(first(rig), first(rig).day, *first(rig).minute - 1); }},
    // The first task moved to 10:00 of its day, to the backlog, to 15:30 by a phrase, renamed,
    // ticked off; the last deleted; one deleted elsewhere deleted again.
    {u"retime"_s, [](Rig& rig) { rig.model->move(first(rig), first(rig).day, 600); }},
    {u"backlog"_s, [](Rig& rig) { rig.model->move(first(rig), std::nullopt, 600); }},
    {u"3:30pm"_s, [](Rig& rig) { rig.model->reschedule(first(rig), u"3:30pm"_s); }},
    {u"rename"_s, [](Rig& rig) { rig.model->rename(first(rig), u" daily standup\n"_s); }},
    {u"toggle"_s, [](Rig& rig) { rig.model->toggle(first(rig)); }},
    {u"remove"_s, [](Rig& rig) { rig.model->deleteTodo(Todo(rig.model->store().todos().back())); }},
    {u"vanish"_s,
     [](Rig& rig) { rig.model->deleteTodo(*rig.model->store().remove(rig.addTask("ghost").id)); }},
    {u"undo"_s, [](Rig& rig) { rig.model->undoLast(); }},
    {u"tick"_s, [](Rig& rig) { rig.model->tick(); }},
    {u"snooze"_s, [](Rig& rig) { rig.model->snooze(*rig.model->alertTodo()); }},
    {u"done"_s, [](Rig& rig) { rig.model->completeAlert(); }},
    // The desktop: the application in front before Kelo ("other" or Kelo itself), one that
    // refuses the keyboard, Kelo's activation and key status, its record of requests.
    {u"other"_s, [](Rig& rig) { rig.platform.front = ApplicationRef{42}; }},
    {u"self"_s, [](Rig& rig) { rig.platform.front = rig.platform.self; }},
    {u"refuses"_s, [](Rig& rig) { rig.platform.acceptsHandBack = false; }},
    {u"active"_s, [](Rig& rig) { rig.platform.active = true; }},
    {u"inactive"_s, [](Rig& rig) { rig.platform.active = false; }},
    {u"unkey"_s, [](Rig& rig) { rig.platform.panelKey = false; }},
    {u"forget"_s, [](Rig& rig) { rig.platform.calls.clear(); }},
};

// Such as "Glass Dark silent".
QString preferences(const IslandModel& model) {
    const Preferences& chosen = *model.preferences();
    return QVariant::fromValue(chosen.theme()).toString() % u' ' %
           QVariant::fromValue(chosen.glassLook()).toString() %
           (chosen.reminderSound() ? u" sound"_s : u" silent"_s);
}

// What a script left, by name.
QString fact(Rig& rig, const QString& name) {
    const IslandModel& model = *rig.model;
    const auto yesNo = [](bool yes) { return yes ? u"yes"_s : u"no"_s; };
    const auto alertId = model.mode().alertId();
    const Todo* alerting = alertId ? model.store().find(*alertId) : nullptr;
    const Todo first = model.store().todos().empty() ? Todo{} : model.store().todos().at(0);
    QStringList titles;
    for (const Todo& task : model.store().todos()) {
        titles << QString::fromStdString(task.title);
    }
    const QMap<QString, QString> facts{
        {QString(), QVariant::fromValue(model.mode().kind()).toString()},
        {u"size"_s, u"%1x%2"_s.arg(model.islandSize().width()).arg(model.islandSize().height())},
        {u"page"_s, QVariant::fromValue(model.page()).toString()},
        {u"bucket"_s, QVariant::fromValue(model.bucketTab()).toString()},
        {u"draft"_s, model.draft()},
        {u"editing"_s, yesNo(model.editing().has_value())},
        {u"scheduling"_s, yesNo(model.scheduling().has_value())},
        {u"focus"_s, QString::number(model.focusRequest())},
        {u"calls"_s, rig.platform.calls.join(u", ")},
        // The settings written, and the preferences a new model reads from them.
        {u"saved"_s, QSettings(rig.settingsFile(), QSettings::IniFormat).allKeys().join(u' ')},
        {u"read"_s, name == u"read" ? preferences(*rig.makeModel()) : QString()},
        {u"spring"_s, QVariant::fromValue(model.spring()).toString()},
        {u"haptics"_s, QString::number(rig.platform.calls.count(u"haptic"_s))},
        {u"alert"_s, alerting ? QString::fromStdString(alerting->title) : u"none"_s},
        {u"toast"_s, model.toast()->current() ? model.toast()->current()->text : u"none"_s},
        {u"undoable"_s, yesNo(model.toast()->current() && model.toast()->current()->undoable)},
        {u"tasks"_s, titles.join(u' ')},
        {u"title"_s, QString::fromStdString(first.title)},
        {u"day"_s, QString::fromStdString(first.day.value_or("none"))},
        // The first task's minute, and whether it was done at this moment.
        {u"t1"_s,
         QString::number(first.minute.value_or(-1)) % (first.doneAt == rig.now ? u" done now"_s
                                                       : first.doneAt          ? u" done"_s
                                                                               : QString())},
    };
    return name.isEmpty() ? facts.value(name) : name % u'=' % facts.value(name, u"?"_s);
}

} // namespace

class IslandModelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // `script` is played from the closed island at 09:00 of an empty day, one word a step (see
    // `steps`; a number lets that many milliseconds pass, "12s" as many seconds, "23:55" time
    // pass to that hour, "theme=glass" that setting stored); then each of `facts` (the mode, then
    // named values: "Open; draft=buy") must hold. The pointer and the clock never ask for the
    // keyboard.
    void island_data() {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("facts");
        const auto row = [](const char* name, const char* script, const char* facts) {
            QTest::newRow(name) << QString::fromUtf8(script) << QString::fromUtf8(facts);
        };
        row("closed: resting 0.1 s peeks", "in 100", "Peek; haptics=1");
        row("closed: not yet at 99 ms", "in 99", "Closed; haptics=0");
        row("closed: leaving within 0.1 s", "in 50 out 1000", "Closed");
        row("closed: isolated peeks silently", "isolate in 100", "Peek; haptics=0");
        row("peek: leaving closes at once", "peek out", "Closed");
        row("open idle: closes 0.7 s after leaving", "click out 700", "Closed");
        row("open idle: not at 699 ms", "click out 699", "Open");
        row("open idle: coming back in time", "click out 600 in 5000", "Open");
        row("open: the held mode set cancels the close", "click out hold 5000", "Open");
        row("open with a draft stays", "click type in out 60000", "Open");
        row("open: clearing the draft alone", "click type in out 1000 clear 10000", "Open");
        row("open: the next leave closes", "click type out clear in out 700", "Closed");
        row("alert: closes by itself after 12 s", "due tick 12s", "Closed; haptics=1");
        row("alert: still up at 11.999 s", "due tick 11999", "Alert");
        row("alert: resting keeps it past 12 s", "due tick 1000 in 60s", "Alert");
        row("alert: the held mode set cancels the close", "due tick hold 60s", "Alert");
        row("alert: leaving closes 4 s later", "due tick in 60s out 4000", "Closed");
        row("alert: not at 3.999 s after leaving", "due tick in 60s out 3999", "Alert");

        // Opening shows the tasks page, on Today for an alert and the hot key.
        row("open: from an alert", "due tick upcoming settings click",
            "Open; page=Tasks; bucket=Today");
        row("open: from closed", "upcoming settings click", "Open; page=Tasks; bucket=Upcoming");
        row("open: from a peek", "peek upcoming settings click",
            "Open; page=Tasks; bucket=Upcoming");
        row("open: hot key", "upcoming settings hotkey", "Open; page=Tasks; bucket=Today; focus=1");
        row("hot key again: closes", "hotkey type schedule hotkey",
            "Closed; scheduling=no; draft=buy");

        row("escape: settings", "click type settings escape", "Open; page=Tasks; draft=buy");
        row("escape: editing", "click type edit escape", "Open; editing=no; focus=2; draft=buy");
        row("escape: the draft", "click type escape", "Open; draft=");
        row("escape: the island", "click escape", "Closed");

        // Closing gives the keyboard back to the application that had it.
        row("keyboard: taken back", "other hotkey forget close", "calls=handBack 42");
        row("keyboard: refused", "other refuses hotkey forget close",
            "calls=handBack 42, deactivate");
        row("keyboard: Kelo was in front", "self hotkey forget close", "calls=deactivate");
        row("keyboard: none in front", "hotkey unkey forget close", "calls=deactivate");
        row("keyboard: Kelo inactive", "other hotkey inactive forget close",
            "calls=releaseKeyboard");
        row("keyboard: nothing to give", "other hotkey inactive unkey forget close", "calls=");
        row("keyboard: after a click", "other hotkey close click active close",
            "calls=activate, makePanelKey, handBack 42, makePanelKey, deactivate");
        row("isolated: no settings written", "isolate glass dark", "saved=");
        row("back from isolation: every assignment written",
            "isolate glass dark unisolate glass dark sound",
            "saved=glassLook reminderSound theme; read=Glass Dark sound");
        row("stored: nothing", "", "read=Standard System sound");
        row("stored: glass, dark, silent", "theme=glass glassLook=dark reminderSound=false",
            "read=Glass Dark silent");
        row("stored: light", "glassLook=light", "read=Standard Light sound");
        row("stored: values of another spelling or type",
            "theme=Glass glassLook=sepia reminderSound=0", "read=Standard System sound");
        row("isolated: no desktop", "isolate hotkey hotkey due tick", "Alert; focus=1; calls=");

        // The closed island widens for a task of today, even a done one, not for other days; the
        // open island is at most 480 high, the alert at least 440 wide.
        row("size: another day's task", "notch tomorrow", "size=112x30");
        row("size: today's done task", "notch due toggle", "size=200x30");
        row("size: open", "notch tall click", "size=560x480");
        row("size: alert", "notch due tick", "size=440x84");

        // The core decides how late a task is still due; an open island holds the alert back.
        row("alert: on the minute", "due tick", "calls=haptic, sound; alert=t1");
        row("alert: a minute early", "soon tick", "calls=; alert=none");
        row("alert: after opening", "click due tick 240s close forget tick",
            "calls=haptic, sound; alert=t1");
        row("alert: without sound", "silent due tick", "calls=haptic");
        row("alert: two due, the first 12 s", "due due tick 11s tick", "alert=t1");
        row("alert: two due, then the second", "due due tick 12s tick", "alert=t2");
        row("alert: each task once", "due due tick 12s tick 12s tick", "alert=none");
        row("alert: again at a new time", "due due tick 12s tick 12s tick earlier tick",
            "alert=t1");
        row("snooze", "due tick 3s snooze", "Closed; toast=none; t1=550");
        row("snooze: alerts again", "due tick 3s snooze 600s tick", "alert=t1");
        row("snooze: never past 23:59", "23:55 due tick snooze", "t1=1439");
        row("done", "due tick 3s done", "Closed; toast=none; t1=540 done now");
        row("done: no alert at the old minute", "due tick 3s done 600s tick", "alert=none");

        // The views read which spring a change belongs to after its signals have gone out.
        row("spring: none before any change", "", "spring=None");
        row("spring: the list's for a delete", "delete", "spring=List");
        row("spring: the island's for opening", "delete click", "spring=Island");
        row("spring: none for a draft", "delete click type", "spring=None");

        row("draft: blank adds nothing", "hotkey blank add", "tasks=; draft= \t ");
        row("draft: the day chip keeps the time", "plan today", "draft=groceries today 9am");
        row("draft: no day, no time, Backlog", "plan today noday",
            "draft=groceries; bucket=Backlog");
        row("draft: tomorrow's goes to Upcoming", "plan add", "day=2025-03-07; bucket=Upcoming");
        row("draft: added as planned", "plan noday 5pm add",
            "tasks=groceries; day=2025-03-06; t1=1020; bucket=Today");

        row("move: within the tab", "due retime", "t1=600; toast=none");
        row("move: to the backlog", "due retime backlog",
            "t1=-1; day=none; toast=Moved to Backlog");
        // A phrase with a time alone keeps the day; a task without a day gets today.
        row("move: by a time alone", "tomorrow 3:30pm", "day=2025-03-07; t1=930");
        row("move: a task without a day", "edit 3:30pm", "day=2025-03-06; t1=930");
        row("move: undo restores the schedule only", "due retime backlog rename undo",
            "t1=600; day=2025-03-06; title=daily standup; toast=none");
        row("check: at the clock's time, not the last tick", "due 1800s toggle", "t1=540 done now");
        row("delete: a toast, undo for 4 s", "due remove 3999", "toast=Deleted “t1”; undoable=yes");
        row("delete: none after 4 s", "due remove 4s undo", "toast=none; tasks=");
        row("delete: undo restores all", "due 1800s toggle remove undo",
            "tasks=t1; t1=540 done now");
        row("delete: another replaces the toast", "due soon remove 3s remove 3999",
            "toast=Deleted “t1”");
        row("delete: and its undo", "due soon remove 3s remove undo undo", "tasks=t1");
        row("delete: the task being scheduled", "schedule remove", "scheduling=no");
        row("delete: a task deleted elsewhere", "vanish", "toast=Deleted “ghost”; undoable=no");
    }

    void island() {
        QFETCH(QString, script);
        QFETCH(QString, facts);
        Rig rig;
        for (const QString& step : script.split(u' ', Qt::SkipEmptyParts)) {
            const qint64 focus = rig.model->focusRequest();
            const int seconds = step.endsWith(u's') ? step.chopped(1).toInt() : 0;
            bool isNumber = false;
            const int milliseconds = step.toInt(&isNumber);
            if (steps.contains(step)) {
                steps.at(step)(rig);
            } else if (step.contains(u'=')) {
                QSettings(rig.settingsFile(), QSettings::IniFormat)
                    .setValue(step.section(u'=', 0, 0), step.section(u'=', 1));
            } else if (step.contains(u':')) {
                rig.advanceTo(at(2025, 3, 6, step.section(u':', 0, 0).toInt(),
                                 step.section(u':', 1).toInt()));
            } else {
                QVERIFY2(seconds > 0 || isNumber, qPrintable(step));
                rig.advance(std::chrono::seconds(seconds) +
                            std::chrono::milliseconds(milliseconds));
            }
            const bool passive =
                !steps.contains(step) || QList{u"in"_s, u"out"_s, u"tick"_s}.contains(step);
            QVERIFY2(!passive || rig.model->focusRequest() == focus, qPrintable(step));
        }
        for (const QString& expected : facts.split(u"; "_s)) {
            const QString name = expected.contains(u'=') ? expected.section(u'=', 0, 0) : QString();
            QCOMPARE(fact(rig, name), expected);
        }
    }

    // Each row names a property and a value other than its first.
    void equalAssignmentsNotifyNobody_data() {
        QTest::addColumn<QVariant>("value");
        const QVariant id(u"6F9619FF-8B86-D011-B42D-00C04FC964FF"_s);
        QTest::newRow("bucket") << QVariant::fromValue(island::BucketTab::Backlog);
        QTest::newRow("notch") << QVariant(QSizeF(200, 40));
        QTest::newRow("openHeight") << QVariant(333.0);
        QTest::newRow("draft") << QVariant(u"milk"_s);
        QTest::newRow("editing") << id;
        QTest::newRow("scheduling") << id;
        QTest::newRow("page") << QVariant::fromValue(Page::Settings);
        QTest::newRow("theme") << QVariant::fromValue(IslandTheme::Glass);
        QTest::newRow("glassLook") << QVariant::fromValue(GlassLook::Dark);
        QTest::newRow("reminderSound") << QVariant(false);
        QTest::newRow("isolated") << QVariant(true);
        QTest::newRow("glassMaterial") << QVariant(true);
        QTest::newRow("enabled") << QVariant(true);
    }

    // The preferences' and the login item's properties live on their own objects.
    void equalAssignmentsNotifyNobody() {
        QFETCH(QVariant, value);
        const char* property = QTest::currentDataTag();
        Rig rig;
        QObject* owner = rig.model.get();
        for (QObject* other : QObjectList{rig.model->preferences(), rig.model->launchAtLogin()}) {
            owner = other->metaObject()->indexOfProperty(property) < 0 ? owner : other;
        }
        const QMetaObject& meta = *owner->metaObject();
        QSignalSpy spy(owner, meta.property(meta.indexOfProperty(property)).notifySignal());
        QVERIFY(owner->setProperty(property, value));
        QVERIFY(owner->setProperty(property, owner->property(property)));
        QCOMPARE(spy.count(), 1);
    }

    void derivedValuesNotifyOnlyRealChanges() {
        Rig rig;
        const auto model = rig.model.get();
        QSignalSpy idle(model, &IslandModel::isIdleChanged), plan(model, &IslandModel::planChanged),
            alertTodo(model, &IslandModel::alertTodoChanged),
            progress(model, &IslandModel::progressChanged),
            next(model, &IslandModel::nextTimedChanged), day(model, &IslandModel::dayChanged),
            size(model, &IslandModel::islandSizeChanged);
        const auto counts = [&] {
            return QList{idle.count(), plan.count(), alertTodo.count(), progress.count(),
                         next.count(), day.count(),  size.count()};
        };
        rig.model->setDraft(u"dentist"_s);     // busy, and a plan
        rig.model->setDraft(u"dentist 5pm"_s); // another plan
        rig.model->setOpenHeight(300);         // none
        const Todo standup = rig.addTask("standup", rig.today(), 600);
        rig.addTask("someday"); // none
        rig.advance(30s);
        rig.model->tick(); // the same minute
        QCOMPARE(counts(), (QList<qsizetype>{1, 2, 0, 1, 1, 0, 1}));
        rig.advance(30s);
        rig.model->tick();
        rig.model->toggle(standup);
        const Todo alerted = addDue(rig, 9 * 60 + 1);
        rig.model->tick();
        rig.model->toggle(alerted); // the alerted task, then done
        QCOMPARE(counts(), (QList<qsizetype>{1, 2, 2, 4, 4, 1, 2}));
        QCOMPARE((QStringList{model->todayKey(), model->weekendKey(), model->nextWeekKey(),
                              model->headerDate()}),
                 (QStringList{u"2025-03-06"_s, u"2025-03-08"_s, u"2025-03-10"_s, u"Thu, Mar 6"_s}));
    }

    // What another program writes to the data file while Kelo runs reaches the island.
    void aTaskAddedByAnotherProgramAppears() {
        Rig rig;
        rig.addTask("ours");
        const DataFileWatcher watcher(rig.model->store());
        QSignalSpy redraws(rig.model.get(), &IslandModel::todosChanged);
        TodoStore other(rig.model->store().path(), TodoStore::Options{currentTime, [](auto) {}});
        QVERIFY(other.add("theirs"));
        QTRY_COMPARE_WITH_TIMEOUT(rig.model->store().todos().size(), std::size_t{2}, 1000);
        QCOMPARE(rig.model->store().todos().back().title, std::string("theirs"));
        QVERIFY(!redraws.isEmpty());
    }
};

} // namespace kelo

QTEST_GUILESS_MAIN(kelo::IslandModelTest)
#include "island_model_test.moc"
