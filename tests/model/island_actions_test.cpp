#include "scratch.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using kelo::testing::Rig;

namespace kelo {

namespace {

QString toastText(const IslandModel& model) {
    return model.toast() ? model.toast()->text : QString();
}

QString phrase(const Rig& rig, const std::optional<DayKey>& day,
               std::optional<std::int64_t> minute) {
    return QString::fromStdString(
        QuickParse::phrase(day, minute, rig.time.now(), testing::testCalendar()));
}

} // namespace

// IslandModel: task actions, the toast and undo.
class IslandActionsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void addDraft_data() {
        QTest::addColumn<QString>("draft");
        QTest::addColumn<int>("added");
        QTest::addColumn<QString>("title");
        QTest::addColumn<std::optional<std::int64_t>>("minute");
        QTest::addColumn<Bucket>("bucket");
        QTest::addColumn<QString>("draftAfter");
        QTest::newRow("timed today") << u"groceries 5pm"_s << 1 << u"groceries"_s
                                     << std::optional<std::int64_t>(1020) << Bucket::today << u""_s;
        QTest::newRow("a later day switches tabs")
            << u"taxes apr 30"_s << 1 << u"taxes"_s << std::optional<std::int64_t>()
            << Bucket::upcoming << u""_s;
        QTest::newRow("blanks only") << u" \t "_s << 0 << u""_s << std::optional<std::int64_t>()
                                     << Bucket::today << u" \t "_s;
    }

    void addDraft() {
        QFETCH(QString, draft);
        QFETCH(int, added);
        Rig rig;
        rig.model->setDraft(draft);
        QList<Spring> springs;
        connect(rig.model.get(), &IslandModel::todosChanged, this,
                [&] { springs << rig.model->spring(); });
        rig.model->addDraft();
        const auto& todos = rig.model->store().todos();
        QCOMPARE(int(todos.size()), added);
        QCOMPARE(springs, QList<Spring>(added, Spring::List));
        if (added > 0) {
            QTEST(QString::fromStdString(todos[0].title), "title");
            QTEST(todos[0].minute, "minute");
            QTEST(bucketOf(todos[0].day, rig.today()), "bucket");
        }
        QTEST(rig.model->bucket(), "bucket");
        QTEST(rig.model->draft(), "draftAfter");
    }

    void chipsRewriteTheDraft() {
        Rig rig;
        const DayKey tomorrow = Day::adding(1, rig.today());
        rig.model->setDraft(u"call mom fri 3pm"_s);
        rig.model->pickDay(tomorrow);
        QCOMPARE(rig.model->draft(), u"call mom "_s % phrase(rig, tomorrow, 900));
        QCOMPARE(rig.model->bucket(), Bucket::today);

        rig.model->setDraft(u"call mom fri 3pm"_s);
        const qint64 focus = rig.model->focusRequest();
        rig.model->pickDay(std::nullopt);
        QCOMPARE(rig.model->draft(), u"call mom"_s);
        QCOMPARE(rig.model->bucket(), Bucket::backlog);
        QCOMPARE(rig.model->focusRequest(), focus + 1);

        rig.model->pickTime(900);
        QCOMPARE(rig.model->draft(), u"call mom "_s % phrase(rig, std::nullopt, 900));
        QCOMPARE(rig.model->bucket(), Bucket::backlog);
    }

    void rename() {
        Rig rig;
        const Todo task = rig.addTask("taxes");
        QSignalSpy changes(rig.model.get(), &IslandModel::todosChanged);
        rig.model->rename(task, u" \n "_s);
        rig.model->rename(task, u"taxes\n"_s);
        QCOMPARE(changes.count(), 0);
        rig.model->rename(task, u"  file taxes \n"_s);
        QCOMPARE(rig.task(task.id)->title, "file taxes");
    }

    void moveWithinTheShownBucketShowsNoToast() {
        Rig rig;
        const Todo earlier = rig.addTask("milk");
        rig.model->deleteTodo(earlier);
        const Todo task = rig.addTask("standup", rig.today(), 9 * 60);
        rig.model->move(task, rig.today(), 10 * 60);
        QCOMPARE(rig.task(task.id)->minute, 600);
        QCOMPARE(toastText(*rig.model), u"Deleted “milk”"_s);
    }

    void moveOutOfViewAndUndo() {
        Rig rig;
        const Todo task = rig.addTask("standup", rig.today(), 9 * 60);
        rig.model->move(task, std::nullopt, 9 * 60);
        QCOMPARE(rig.task(task.id)->day, std::nullopt);
        QCOMPARE(rig.task(task.id)->minute, std::nullopt);
        QCOMPARE(toastText(*rig.model), u"Moved to Backlog"_s);

        rig.model->rename(*rig.task(task.id), u"daily standup"_s);
        rig.model->undoLast();
        const Todo undone = *rig.task(task.id);
        QCOMPARE(undone.title, "daily standup");
        QCOMPARE(undone.day, rig.today());
        QCOMPARE(undone.minute, 540);
        QCOMPARE(rig.model->toast(), std::nullopt);
    }

    void movingAnUndatedTaskToTheBacklogDoesNothing() {
        Rig rig;
        const Todo task = rig.addTask("someday");
        QSignalSpy changes(rig.model.get(), &IslandModel::todosChanged);
        rig.model->move(task, std::nullopt, 600);
        QCOMPARE(changes.count(), 0);
        QCOMPARE(rig.model->toast(), std::nullopt);
    }

    void reschedule_data() {
        QTest::addColumn<bool>("dated");
        QTest::addColumn<QString>("phrase");
        QTest::addColumn<bool>("understood");
        QTest::addColumn<int>("daysAhead");
        QTest::addColumn<std::optional<std::int64_t>>("expectedMinute");
        using Minute = std::optional<std::int64_t>;
        QTest::newRow("tomorrow keeps the time")
            << true << u"tomorrow"_s << true << 1 << Minute(900);
        QTest::newRow("a time keeps the day") << true << u"3:30pm"_s << true << 0 << Minute(930);
        QTest::newRow("a time on a backlog task means today")
            << false << u"9am"_s << true << 0 << Minute(540);
        QTest::newRow("not a phrase") << true << u"whenever"_s << false << 0 << Minute(900);
    }

    void reschedule() {
        QFETCH(bool, dated);
        QFETCH(QString, phrase);
        QFETCH(int, daysAhead);
        Rig rig;
        const Todo task = dated ? rig.addTask("dentist", rig.today(), 900) : rig.addTask("dentist");
        QTEST(rig.model->reschedule(task, phrase), "understood");
        QCOMPARE(rig.task(task.id)->day, Day::adding(daysAhead, rig.today()));
        QTEST(rig.task(task.id)->minute, "expectedMinute");
    }

    void toggleStampsTheRealTime() {
        Rig rig;
        const Todo task = rig.addTask("milk");
        rig.time.advance(30min); // no tick: the model's now stays behind
        rig.model->toggle(task);
        QCOMPARE(rig.task(task.id)->doneAt, rig.time.now());
        QVERIFY(rig.model->now() != rig.time.now());
    }

    void deleteAndUndoRestoresTheWholeTask() {
        Rig rig;
        const Todo task = rig.addTask("dentist", rig.today(), 900);
        rig.model->toggle(task);
        const Todo done = *rig.task(task.id);
        rig.addTask("milk");
        rig.model->setScheduling(task.id);
        rig.model->deleteTodo(done);
        QCOMPARE(rig.task(task.id), std::nullopt);
        QCOMPARE(rig.model->scheduling(), std::nullopt);
        QCOMPARE(toastText(*rig.model), u"Deleted “dentist”"_s);
        rig.model->undoLast();
        QCOMPARE(rig.model->store().todos().back(), done);
    }

    void secondDeleteReplacesTheFirst() {
        Rig rig;
        const Todo first = rig.addTask("first");
        const Todo second = rig.addTask("second");
        rig.model->deleteTodo(first);
        const Uuid firstToast = rig.model->toast()->id;
        rig.model->deleteTodo(second);
        QVERIFY(rig.model->toast()->id != firstToast);
        rig.model->undoLast();
        rig.model->undoLast();
        QCOMPARE(rig.task(first.id), std::nullopt);
        QVERIFY(rig.task(second.id).has_value());
    }

    void toastLivesFourSecondsFromTheLastReplacement() {
        Rig rig;
        const Todo first = rig.addTask("first");
        const Todo second = rig.addTask("second");
        rig.model->deleteTodo(first);
        rig.time.advance(3s);
        rig.model->deleteTodo(second);
        rig.time.advance(3999ms);
        QCOMPARE(toastText(*rig.model), u"Deleted “second”"_s);
        rig.time.advance(1ms);
        QCOMPARE(rig.model->toast(), std::nullopt);
        rig.model->undoLast();
        QCOMPARE(rig.task(second.id), std::nullopt);
    }
};

} // namespace kelo

QTEST_GUILESS_MAIN(kelo::IslandActionsTest)
#include "island_actions_test.moc"
