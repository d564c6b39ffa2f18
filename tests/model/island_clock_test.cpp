#include "scratch.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using kelo::testing::at;
using kelo::testing::Rig;

namespace kelo {

namespace {

constexpr std::int64_t fivePm = 17 * 60;

std::optional<Uuid> alerting(const IslandModel& model) {
    return model.mode().alertId();
}

} // namespace

// IslandModel: the clock, reminders and alerts.
class IslandClockTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void fiveMinuteWindow_data() {
        QTest::addColumn<int>("minutesLate");
        QTest::addColumn<bool>("alerts");
        QTest::newRow("on the minute") << 0 << true;
        QTest::newRow("4 minutes late") << 4 << true;
        QTest::newRow("5 minutes late") << 5 << false;
        QTest::newRow("a minute early") << -1 << false;
    }

    void fiveMinuteWindow() {
        QFETCH(int, minutesLate);
        Rig rig(at(2025, 3, 6, 17, 0) + std::chrono::minutes(minutesLate));
        const Todo task = rig.addTask("groceries", rig.today(), fivePm);
        rig.model->tick();
        QTEST(alerting(*rig.model) == task.id, "alerts");
    }

    void alertAsksForHapticAndSound_data() {
        QTest::addColumn<bool>("sound");
        QTest::addColumn<bool>("isolated");
        QTest::addColumn<QStringList>("calls");
        QTest::newRow("sound on") << true << false << QStringList{u"haptic"_s, u"sound"_s};
        QTest::newRow("sound off") << false << false << QStringList{u"haptic"_s};
        QTest::newRow("isolated") << true << true << QStringList();
    }

    void alertAsksForHapticAndSound() {
        QFETCH(bool, sound);
        QFETCH(bool, isolated);
        Rig rig(at(2025, 3, 6, 17, 0));
        rig.model->setReminderSound(sound);
        rig.model->setIsolated(isolated);
        const Todo task = rig.addTask("groceries", rig.today(), fivePm);
        rig.model->tick();
        QCOMPARE(alerting(*rig.model), task.id);
        QTEST(rig.platform.calls, "calls");
    }

    void anAlertComesOncePerTaskAndTime() {
        Rig rig(at(2025, 3, 6, 17, 0));
        const Todo task = rig.addTask("groceries", rig.today(), fivePm);
        rig.model->tick();
        rig.time.advance(12s);
        QCOMPARE(rig.model->mode(), Mode::closed());
        rig.model->tick();
        QCOMPARE(rig.model->mode(), Mode::closed());

        rig.model->move(task, rig.today(), fivePm - 1);
        rig.model->tick();
        QCOMPARE(alerting(*rig.model), task.id);
    }

    void anOpenIslandHoldsAlertsBack_data() {
        QTest::addColumn<int>("closedAfter");
        QTest::addColumn<bool>("alerts");
        QTest::newRow("closed 3 minutes later") << 3 << true;
        QTest::newRow("closed 6 minutes later") << 6 << false;
    }

    void anOpenIslandHoldsAlertsBack() {
        QFETCH(int, closedAfter);
        Rig rig(at(2025, 3, 6, 17, 0));
        const Todo task = rig.addTask("groceries", rig.today(), fivePm);
        rig.model->open(false);
        rig.model->tick();
        QCOMPARE(rig.model->mode(), Mode::open());
        rig.time.advance(std::chrono::minutes(closedAfter));
        rig.model->set(Mode::closed());
        rig.model->tick();
        QTEST(alerting(*rig.model) == task.id, "alerts");
    }

    void tasksDueTogetherAlertOneAfterTheOther() {
        Rig rig(at(2025, 3, 6, 17, 0));
        const Todo first = rig.addTask("groceries", rig.today(), fivePm);
        const Todo second = rig.addTask("call mom", rig.today(), fivePm);
        rig.model->tick();
        QCOMPARE(alerting(*rig.model), first.id);
        rig.time.advance(10s);
        rig.model->tick();
        QCOMPARE(alerting(*rig.model), first.id);
        rig.time.advance(2s);
        rig.model->tick();
        QCOMPARE(alerting(*rig.model), second.id);
    }

    void snooze_data() {
        QTest::addColumn<int>("hour");
        QTest::addColumn<int>("minute");
        QTest::addColumn<std::int64_t>("expected");
        QTest::newRow("ten minutes on") << 17 << 0 << std::int64_t{1030};
        QTest::newRow("never past 23:59") << 23 << 55 << std::int64_t{1439};
    }

    void snooze() {
        QFETCH(int, hour);
        QFETCH(int, minute);
        QFETCH(std::int64_t, expected);
        Rig rig(at(2025, 3, 6, hour, minute));
        const Todo task = rig.addTask("groceries", rig.today(), hour * 60 + minute);
        rig.model->tick();
        QCOMPARE(alerting(*rig.model), task.id);
        rig.model->snooze(*rig.model->alertTodo());
        QCOMPARE(rig.model->mode(), Mode::closed());
        QCOMPARE(rig.task(task.id)->day, rig.today());
        QCOMPARE(rig.task(task.id)->minute, expected);
        QCOMPARE(rig.model->toast(), std::nullopt);
        QVERIFY(!rig.model->alerted().contains(task.id));
    }

    void doneCompletesAndCloses() {
        Rig rig(at(2025, 3, 6, 17, 0));
        const Todo task = rig.addTask("groceries", rig.today(), fivePm);
        rig.model->tick();
        rig.time.advance(3s);
        rig.model->completeAlert();
        QCOMPARE(rig.model->mode(), Mode::closed());
        QCOMPARE(rig.task(task.id)->doneAt, rig.time.now());
        QCOMPARE(rig.model->toast(), std::nullopt);
        QVERIFY(rig.model->alerted().contains(task.id));
    }

    void alertTodoFollowsTheStore() {
        Rig rig(at(2025, 3, 6, 17, 0));
        const Todo task = rig.addTask("groceries", rig.today(), fivePm);
        QSignalSpy alertTodo(rig.model.get(), &IslandModel::alertTodoChanged);
        rig.model->tick();
        QCOMPARE(rig.model->alertTodo(), task);
        static_cast<void>(rig.model->store().remove(task.id));
        QCOMPARE(rig.model->alertTodo(), std::nullopt);
        QCOMPARE(alertTodo.count(), 2);
        rig.time.advance(12s);
        QCOMPARE(rig.model->mode(), Mode::closed());
    }
};

} // namespace kelo

QTEST_GUILESS_MAIN(kelo::IslandClockTest)
#include "island_clock_test.moc"
