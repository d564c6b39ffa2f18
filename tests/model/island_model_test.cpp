#include "model_rig.h"

#include <QFile>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using kelo::testing::at;
using kelo::testing::Rig;

namespace kelo {

namespace {

// "in" and "out" move the pointer, "type" and "clear" edit the draft, "hold" sets the mode held,
// "isolate" isolates the model; a number lets that many milliseconds pass.
void play(Rig& rig, const QString& script) {
    for (const QString& step : script.split(u' ', Qt::SkipEmptyParts)) {
        if (step == "in"_L1 || step == "out"_L1) {
            rig.model->hover(step == "in"_L1);
        } else if (step == "type"_L1 || step == "clear"_L1) {
            rig.model->setDraft(step == "type"_L1 ? u"buy"_s : QString());
        } else if (step == "hold"_L1) {
            rig.model->setMode(rig.model->mode());
        } else if (step == "isolate"_L1) {
            rig.model->setIsolated(true);
        } else {
            rig.time.advance(std::chrono::milliseconds(step.toInt()));
        }
    }
}

// Such as "Glass Dark silent".
QString preferences(const IslandModel& model) {
    const Preferences& chosen = *model.preferences();
    return QVariant::fromValue(chosen.theme()).toString() % u' ' %
           QVariant::fromValue(chosen.glassLook()).toString() %
           (chosen.reminderSound() ? u" sound"_s : u" silent"_s);
}

std::optional<Uuid> alerting(const Rig& rig) {
    return rig.model->mode().alertId();
}

} // namespace

class IslandModelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void modeMachine_data() {
        QTest::addColumn<ModeKind>("start");
        QTest::addColumn<QString>("script");
        QTest::addColumn<ModeKind>("expected");
        QTest::addColumn<int>("haptics");
        const auto closed = ModeKind::Closed, peek = ModeKind::Peek, open = ModeKind::Open,
                   alert = ModeKind::Alert;
        const auto row = [](const char* name, ModeKind start, const char* script, ModeKind expected,
                            int haptics) {
            QTest::newRow(name) << start << QString::fromLatin1(script) << expected << haptics;
        };
        row("closed: resting 0.1 s peeks", closed, "in 100", peek, 1);
        row("closed: not yet at 99 ms", closed, "in 99", closed, 0);
        row("closed: leaving within 0.1 s", closed, "in 50 out 1000", closed, 0);
        row("closed: isolated peeks silently", closed, "isolate in 100", peek, 0);
        row("peek: leaving closes at once", peek, "out", closed, 0);
        row("open idle: closes 0.7 s after leaving", open, "out 700", closed, 0);
        row("open idle: not at 699 ms", open, "out 699", open, 0);
        row("open idle: coming back in time", open, "out 600 in 5000", open, 0);
        row("open: setting the held mode cancels the close", open, "out hold 5000", open, 0);
        row("open with a draft stays", open, "type in out 60000", open, 0);
        row("open: clearing the draft alone", open, "type in out 1000 clear 10000", open, 0);
        row("open: the next leave closes", open, "type out clear in out 700", closed, 0);
        row("alert: closes by itself after 12 s", alert, "12000", closed, 1);
        row("alert: still up at 11.999 s", alert, "11999", alert, 1);
        row("alert: resting keeps it past 12 s", alert, "1000 in 60000", alert, 1);
        row("alert: setting the held mode cancels the close", alert, "hold 60000", alert, 1);
        row("alert: leaving closes 4 s later", alert, "in 60000 out 4000", closed, 1);
        row("alert: not at 3.999 s after leaving", alert, "in 60000 out 3999", alert, 1);
    }

    void modeMachine() {
        QFETCH(ModeKind, start);
        QFETCH(QString, script);
        Rig rig;
        rig.enter(start);
        QCOMPARE(rig.model->mode().kind(), start);
        const qint64 focus = rig.model->focusRequest();
        play(rig, script);
        QTEST(rig.model->mode().kind(), "expected");
        QCOMPARE(rig.model->focusRequest(), focus);
        QTEST(int(rig.platform.calls.count(u"haptic"_s)), "haptics");
    }

    void openingShowsTheTasksPage_data() {
        QTest::addColumn<ModeKind>("start");
        QTest::addColumn<bool>("hotKey");
        QTest::addColumn<Bucket>("bucket");
        QTest::newRow("click on an alert") << ModeKind::Alert << false << Bucket::today;
        QTest::newRow("click on the closed island")
            << ModeKind::Closed << false << Bucket::upcoming;
        QTest::newRow("click on a peek") << ModeKind::Peek << false << Bucket::upcoming;
        QTest::newRow("hot key") << ModeKind::Closed << true << Bucket::today;
    }

    void openingShowsTheTasksPage() {
        QFETCH(ModeKind, start);
        QFETCH(bool, hotKey);
        Rig rig;
        rig.enter(start);
        rig.model->setBucket(Bucket::upcoming);
        rig.model->toggleSettings();
        hotKey ? rig.model->hotKey() : rig.model->open(false);
        QCOMPARE(rig.model->mode(), Mode::open());
        QCOMPARE(rig.model->page(), Page::Tasks);
        QTEST(rig.model->bucket(), "bucket");
    }

    // The desktop as the island closes: "active" Kelo, "key" panel, the application that was in
    // front (42, or 1 for Kelo itself) and whether it "refuses" the keyboard.
    void givingTheKeyboardBack_data() {
        QTest::addColumn<QString>("desktop");
        QTest::addColumn<QString>("calls");
        QTest::newRow("the previous application takes it")
            << u"active key 42"_s << u"handBack 42"_s;
        QTest::newRow("it refuses") << u"active key refuses 42"_s << u"handBack 42, deactivate"_s;
        QTest::newRow("Kelo itself was in front") << u"active key 1"_s << u"deactivate"_s;
        QTest::newRow("no previous application") << u"active"_s << u"deactivate"_s;
        QTest::newRow("key panel of an inactive Kelo") << u"key 42"_s << u"releaseKeyboard"_s;
        QTest::newRow("nothing to give back") << u"42"_s << QString();
    }

    void givingTheKeyboardBack() {
        QFETCH(QString, desktop);
        const QStringList words = desktop.split(u' ');
        Rig rig;
        if (const int front = words.last().toInt()) {
            rig.platform.front = ApplicationRef{std::uint64_t(front)};
        }
        rig.platform.acceptsHandBack = !words.contains(u"refuses"_s);
        rig.model->open(true);
        rig.platform.active = words.contains(u"active"_s);
        rig.platform.panelKey = words.contains(u"key"_s);
        rig.platform.calls.clear();
        rig.model->setMode(Mode::closed());
        QTEST(rig.platform.calls.join(u", "), "calls");
    }

    void escapeTakesOneStepBack() {
        Rig rig;
        rig.model->open(false);
        rig.model->setDraft(u"x"_s);
        rig.model->toggleSettings();
        rig.model->escape();
        QCOMPARE(rig.model->page(), Page::Tasks);
        rig.model->setEditing(rig.addTask("taxes").id);
        const qint64 focus = rig.model->focusRequest();
        rig.model->escape();
        QCOMPARE(rig.model->editing(), std::nullopt);
        QCOMPARE(rig.model->focusRequest(), focus + 1);
        QCOMPARE(rig.model->draft(), u"x"_s);
        rig.model->escape();
        QCOMPARE(rig.model->draft(), QString());
        QCOMPARE(rig.model->mode(), Mode::open());
        rig.model->escape();
        QCOMPARE(rig.model->mode(), Mode::closed());
    }

    // The closed island widens for a task of today, even a done one, not for other days; the
    // open island is at most 480 high, the alert at least 440 wide.
    void islandSizeFollowsTodayAndItsLimits() {
        Rig rig;
        rig.model->setNotch(QSizeF(100, 30));
        rig.addTask("tomorrow's", Day::adding(1, rig.today()));
        QCOMPARE(rig.model->islandSize(), QSizeF(112, 30));
        QSignalSpy changes(rig.model.get(), &IslandModel::islandSizeChanged);
        rig.model->toggle(rig.addTask("done already", rig.today()));
        QCOMPARE(rig.model->islandSize(), QSizeF(200, 30));
        QCOMPARE(changes.count(), 1);
        rig.model->setOpenHeight(700);
        rig.enter(ModeKind::Open);
        QCOMPARE(rig.model->islandSize(), QSizeF(560, 480));
        rig.model->setMode(Mode::closed());
        rig.enter(ModeKind::Alert);
        QCOMPARE(rig.model->islandSize(), QSizeF(440, 84));
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
        QObject* owner = nullptr;
        for (QObject* candidate : std::initializer_list<QObject*>{
                 rig.model.get(), rig.model->preferences(), rig.model->launchAtLogin()}) {
            owner = candidate->metaObject()->indexOfProperty(property) < 0 ? owner : candidate;
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
            next(model, &IslandModel::nextTimedChanged), day(model, &IslandModel::dayChanged);
        const auto counts = [&] {
            return QList{idle.count(),     plan.count(), alertTodo.count(),
                         progress.count(), next.count(), day.count()};
        };
        rig.model->setDraft(u"dentist"_s);     // busy, and a plan
        rig.model->setDraft(u"dentist 5pm"_s); // another plan
        rig.model->setOpenHeight(300);         // none
        const Todo standup = rig.addTask("standup", rig.today(), 600);
        rig.addTask("someday"); // none
        rig.time.advance(30s);
        rig.model->tick(); // the same minute
        QCOMPARE(counts(), (QList<qsizetype>{1, 2, 0, 1, 1, 0}));
        rig.time.advance(30s);
        rig.model->tick();
        rig.model->toggle(standup);
        rig.model->toggle(rig.raiseAlert()); // the alerted task, then done
        QCOMPARE(counts(), (QList<qsizetype>{1, 2, 2, 4, 4, 1}));
        QCOMPARE((QStringList{model->todayKey(), model->weekendKey(), model->nextWeekKey(),
                              model->headerDate()}),
                 (QStringList{u"2025-03-06"_s, u"2025-03-08"_s, u"2025-03-10"_s, u"Thu, Mar 6"_s}));
    }

    void isolationTouchesNoDesktopAndNoSettings() {
        Rig rig;
        rig.model->setIsolated(true);
        rig.model->preferences()->setTheme(IslandTheme::Glass);
        rig.model->preferences()->setGlassLook(GlassLook::Dark);
        rig.model->hotKey();
        QCOMPARE(rig.model->mode(), Mode::open());
        QCOMPARE(rig.model->focusRequest(), 1);
        rig.model->hotKey();
        rig.raiseAlert();
        QCOMPARE(rig.model->mode().kind(), ModeKind::Alert);
        QCOMPARE(rig.platform.calls, QStringList());
        QCOMPARE(QSettings(rig.settingsFile(), QSettings::IniFormat).allKeys(), QStringList());
        // Back from isolation every assignment is written, even of the value held.
        rig.model->setIsolated(false);
        rig.model->preferences()->setTheme(IslandTheme::Glass);
        rig.model->preferences()->setGlassLook(GlassLook::Dark);
        rig.model->preferences()->setReminderSound(true);
        QCOMPARE(preferences(*rig.makeModel()), u"Glass Dark sound"_s);
        QCOMPARE(QSettings(rig.settingsFile(), QSettings::IniFormat).value(u"reminderSound"_s),
                 u"true"_s);
    }

    void preferencesAreRead_data() {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<QString>("expected");
        QTest::newRow("nothing") << QByteArray() << u"Standard System sound"_s;
        QTest::newRow("glass, dark, silent")
            << "theme=glass\nglassLook=dark\nreminderSound=false"_ba << u"Glass Dark silent"_s;
        QTest::newRow("light") << "glassLook=light"_ba << u"Standard Light sound"_s;
        QTest::newRow("values of another spelling or type")
            << "theme=Glass\nglassLook=sepia\nreminderSound=0"_ba << u"Standard System sound"_s;
    }

    void preferencesAreRead() {
        QFETCH(QByteArray, stored);
        Rig rig;
        QFile file(rig.settingsFile());
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("[General]\n" + stored + '\n') > 0);
        file.close();
        QTEST(preferences(*rig.makeModel()), "expected");
    }

    void moveUndoAndReschedule() {
        Rig rig;
        const Todo task = rig.addTask("standup", rig.today(), 540);
        rig.model->move(task, rig.today(), 600);
        QCOMPARE(rig.task(task.id)->minute, 600);
        QCOMPARE(rig.model->toast()->current(), std::nullopt);
        rig.model->move(*rig.task(task.id), std::nullopt, 600);
        QCOMPARE(rig.task(task.id)->minute, std::nullopt);
        QCOMPARE(rig.model->toast()->current()->text, u"Moved to Backlog"_s);
        // Undo restores the schedule only.
        rig.model->rename(*rig.task(task.id), u" daily standup\n"_s);
        rig.model->undoLast();
        QCOMPARE(rig.task(task.id)->title, "daily standup");
        QCOMPARE(rig.task(task.id)->day, rig.today());
        QCOMPARE(rig.task(task.id)->minute, 600);
        QCOMPARE(rig.model->toast()->current(), std::nullopt);
        // A phrase with a time alone keeps the day; a task without a day gets today.
        const Todo later = rig.addTask("dentist", "2025-03-09", 900);
        QVERIFY(rig.model->reschedule(later, u"3:30pm"_s));
        QCOMPARE(rig.task(later.id)->day, "2025-03-09");
        QCOMPARE(rig.task(later.id)->minute, 930);
        const Todo undated = rig.addTask("call mom");
        QVERIFY(rig.model->reschedule(undated, u"9am"_s));
        QCOMPARE(rig.task(undated.id)->day, rig.today());
    }

    void deleteUndoAndTheToast() {
        Rig rig;
        const Todo first = rig.addTask("first");
        const Todo task = rig.addTask("dentist", rig.today(), 900);
        rig.time.advance(30min); // no tick: completion takes the real time, not the last reading
        rig.model->toggle(task);
        const Todo done = *rig.task(task.id);
        QCOMPARE(done.doneAt, rig.time.now());
        rig.model->deleteTodo(first);
        rig.time.advance(3s);
        rig.model->setScheduling(task.id);
        rig.model->deleteTodo(done); // replaces the toast and its undo
        QCOMPARE(rig.model->scheduling(), std::nullopt);
        rig.time.advance(3999ms);
        QCOMPARE(rig.model->toast()->current()->text, u"Deleted “dentist”"_s);
        rig.model->undoLast();
        rig.model->undoLast();
        QCOMPARE(rig.task(task.id), done);
        QCOMPARE(rig.task(first.id), std::nullopt);
        rig.model->deleteTodo(done);
        rig.time.advance(4s);
        QCOMPARE(rig.model->toast()->current(), std::nullopt);
        rig.model->undoLast();
        QCOMPARE(rig.task(task.id), std::nullopt);
        // A task deleted elsewhere still gets its toast, but nothing to bring back.
        rig.model->deleteTodo(done);
        QVERIFY(!rig.model->toast()->current()->undoable);
    }

    // The views read which spring a change belongs to after its signals have gone out.
    void theLastChangeKeepsItsSpring() {
        Rig rig;
        const Todo task = rig.addTask("dentist");
        QCOMPARE(rig.model->spring(), Spring::None);
        rig.model->deleteTodo(task);
        QCOMPARE(rig.model->spring(), Spring::List);
        rig.model->open(false);
        QCOMPARE(rig.model->spring(), Spring::Island);
        rig.model->setDraft(u"x"_s);
        QCOMPARE(rig.model->spring(), Spring::None);
    }

    void alert_data() {
        QTest::addColumn<int>("late");
        QTest::addColumn<QString>("setting");
        QTest::addColumn<QString>("calls");
        QTest::newRow("on the minute") << 0 << QString() << u"haptic, sound"_s;
        QTest::newRow("a minute early") << -1 << QString() << QString();
        QTest::newRow("after the island was open") << 4 << u"open"_s << u"haptic, sound"_s;
        QTest::newRow("without sound") << 0 << u"silent"_s << u"haptic"_s;
    }

    // The tick `late` minutes after a task's time (the core decides how late a task is still
    // due); an open island holds the alert back until it closes.
    void alert() {
        QFETCH(int, late);
        QFETCH(QString, setting);
        QFETCH(QString, calls);
        const bool open = setting == "open"_L1;
        Rig rig(at(2025, 3, 6, 17, 0) + std::chrono::minutes(open ? 0 : late));
        rig.model->preferences()->setReminderSound(setting != "silent"_L1);
        const Todo task = rig.addTask("groceries", rig.today(), 17 * 60);
        if (open) {
            rig.model->open(false);
            rig.model->tick();
            rig.time.advance(std::chrono::minutes(late));
            rig.model->setMode(Mode::closed());
            rig.platform.calls.clear();
        }
        rig.model->tick();
        QCOMPARE(rig.platform.calls.join(u", "), calls);
        QCOMPARE(alerting(rig) == task.id, !calls.isEmpty());
    }

    void eachTaskAlertsOncePerTime() {
        Rig rig(at(2025, 3, 6, 17, 0));
        const Todo first = rig.addTask("groceries", rig.today(), 17 * 60);
        const Todo second = rig.addTask("call mom", rig.today(), 17 * 60);
        rig.model->tick();
        QCOMPARE(alerting(rig), first.id);
        rig.time.advance(11s);
        rig.model->tick();
        QCOMPARE(alerting(rig), first.id);
        rig.time.advance(1s);
        rig.model->tick();
        QCOMPARE(alerting(rig), second.id);
        rig.time.advance(12s);
        rig.model->tick();
        QCOMPARE(alerting(rig), std::nullopt);
        rig.model->move(first, rig.today(), 17 * 60 - 1);
        rig.model->tick();
        QCOMPARE(alerting(rig), first.id);
    }

    void answeringAnAlert_data() {
        QTest::addColumn<bool>("done");
        QTest::newRow("snooze: ten minutes on") << false;
        QTest::newRow("done") << true;
    }

    // Both close the island without a toast; a snoozed task alerts again at its new minute.
    void answeringAnAlert() {
        QFETCH(bool, done);
        Rig rig(at(2025, 3, 6, 17, 0));
        const Todo task = rig.raiseAlert();
        rig.time.advance(3s);
        done ? rig.model->completeAlert() : rig.model->snooze(*rig.model->alertTodo());
        QCOMPARE(rig.model->mode(), Mode::closed());
        QCOMPARE(rig.model->toast()->current(), std::nullopt);
        QCOMPARE(rig.task(task.id)->minute, done ? 1020 : 1030);
        QCOMPARE(rig.task(task.id)->doneAt, done ? std::optional(rig.time.now()) : std::nullopt);
        rig.time.advanceTo(at(2025, 3, 6, 17, 10));
        rig.model->tick();
        QCOMPARE(alerting(rig), done ? std::nullopt : std::optional(task.id));
    }

    // The road of one task, from the hot key in another application back to it.
    void fromHotKeyToTask() {
        Rig rig;
        rig.platform.front = ApplicationRef{42};
        rig.model->hotKey();
        rig.model->setDraft(u" \t "_s);
        rig.model->addDraft();
        QVERIFY(rig.model->store().todos().empty());
        QCOMPARE(rig.model->draft(), u" \t "_s);
        // The day chip keeps the time; no day drops it and shows Backlog; the task added goes
        // where its plan says.
        rig.model->setDraft(u"groceries sat 9am"_s);
        rig.model->pickDay(rig.today());
        QCOMPARE(rig.model->draft(), u"groceries today 9am"_s);
        rig.model->pickDay(std::nullopt);
        QCOMPARE(rig.model->draft(), u"groceries"_s);
        QCOMPARE(rig.model->bucket(), Bucket::backlog);
        rig.model->pickTime(std::optional<std::int64_t>(17 * 60));
        rig.model->addDraft();
        const Todo task = rig.model->store().todos().at(0);
        QCOMPARE(task.day, rig.today());
        QCOMPARE(task.minute, 17 * 60);
        QCOMPARE(rig.model->bucket(), Bucket::today);
        // Closing ends editing but keeps a draft.
        rig.model->setDraft(u"milk"_s);
        rig.model->setScheduling(task.id);
        rig.model->hotKey();
        QCOMPARE(rig.model->scheduling(), std::nullopt);
        QCOMPARE(rig.model->draft(), u"milk"_s);
        // Later a click opens it and the desktop activates Kelo: closing only deactivates.
        rig.model->open(false);
        rig.platform.active = true;
        rig.model->setMode(Mode::closed());
        QCOMPARE(rig.platform.calls,
                 (QStringList{u"activate"_s, u"makePanelKey"_s, u"handBack 42"_s, u"makePanelKey"_s,
                              u"deactivate"_s}));
    }
};

} // namespace kelo

QTEST_GUILESS_MAIN(kelo::IslandModelTest)
#include "island_model_test.moc"
