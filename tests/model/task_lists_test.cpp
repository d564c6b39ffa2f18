#include "model_rig.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>
#include <task_list_model.h>
#include <task_rows.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using kelo::testing::at;
using kelo::testing::Rig;

namespace kelo {

namespace {

std::vector<TaskRow> rowsOf(const QString& keys) {
    std::vector<TaskRow> rows;
    for (const QString& key : keys.split(u' ', Qt::SkipEmptyParts)) {
        TaskRow row;
        row.kind = RowKind::Section;
        row.key = key.toStdString();
        rows.push_back(std::move(row));
    }
    return rows;
}

QString keysOf(const std::vector<TaskRow>& rows) {
    QStringList keys;
    for (const TaskRow& row : rows) {
        keys << (row.kind == RowKind::Task ? qtText(row.task->title) : qtText(row.key));
    }
    return keys.join(u' ');
}

} // namespace

class TaskListsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Rows that stay are never removed and inserted again, so a view keeps their delegates.
    void rowsThatStayAreKept_data() {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        QTest::newRow("one moves down") << u"a b c d"_s << u"b c d a"_s;
        QTest::newRow("one moves up") << u"a b c d"_s << u"d a b c"_s;
        QTest::newRow("reversed") << u"a b c d e"_s << u"e d c b a"_s;
        QTest::newRow("some leave, some come") << u"a b c d"_s << u"x b d y"_s;
        QTest::newRow("all new") << u"a b"_s << u"c d e"_s;
        QTest::newRow("emptied") << u"a b"_s << QString();
    }

    void rowsThatStayAreKept() {
        QFETCH(QString, before);
        QFETCH(QString, after);
        TaskListModel list;
        QAbstractItemModelTester tester(&list,
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        list.setRows(rowsOf(before));
        QSignalSpy removed(&list, &QAbstractItemModel::rowsRemoved);
        QSignalSpy inserted(&list, &QAbstractItemModel::rowsInserted);
        list.setRows(rowsOf(after));
        QCOMPARE(keysOf(list.rows()), after);
        const QStringList old = before.split(u' ', Qt::SkipEmptyParts);
        const QStringList now = after.split(u' ', Qt::SkipEmptyParts);
        qsizetype leaving = 0;
        for (const QString& key : old) {
            leaving += now.contains(key) ? 0 : 1;
        }
        qsizetype removedRows = 0;
        for (const auto& signal : removed) {
            removedRows += signal.at(2).toInt() - signal.at(1).toInt() + 1;
        }
        QCOMPARE(removedRows, leaving);
        QCOMPARE(inserted.count(), now.size() - (old.size() - leaving));
    }

    // Any list turns into any other, and the model stays consistent on the way.
    void anyChangeLandsExactly() {
        QRandomGenerator random(7);
        TaskListModel list;
        QAbstractItemModelTester tester(&list,
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        for (int round = 0; round < 300; ++round) {
            QStringList keys;
            for (int key = 0; key < 12; ++key) {
                if (random.bounded(3) != 0) {
                    keys << QString::number(key);
                }
            }
            std::shuffle(keys.begin(), keys.end(), random);
            list.setRows(rowsOf(keys.join(u' ')));
            QCOMPARE(keysOf(list.rows()), keys.join(u' '));
        }
    }

    // A task of this very minute is below the now line; the line shows only with timed tasks.
    void todayRowsAroundTheNowLine_data() {
        QTest::addColumn<QStringList>("tasks"); // title:minute, or title alone for anytime
        QTest::addColumn<QString>("rows");
        QTest::newRow("before, at and after now")
            << QStringList{u"at:600"_s, u"after:660"_s, u"before:540"_s}
            << u"before now at after"_s;
        QTest::newRow("all earlier") << QStringList{u"a:500"_s, u"b:510"_s} << u"a b now"_s;
        QTest::newRow("all later") << QStringList{u"a:700"_s} << u"now a"_s;
        QTest::newRow("anytime only") << QStringList{u"a"_s} << u"section:anytime a"_s;
        QTest::newRow("empty") << QStringList{} << QString();
    }

    void todayRowsAroundTheNowLine() {
        QFETCH(QStringList, tasks);
        Rig rig(at(2025, 3, 6, 10, 0));
        for (const QString& task : tasks) {
            const QStringList parts = task.split(u':');
            rig.addTask(parts[0].toStdString(), rig.today(),
                        parts.size() > 1 ? std::optional<std::int64_t>(parts[1].toInt())
                                         : std::nullopt);
        }
        QTEST(keysOf(todayRows(rig.model->store().todos(), rig.time.now(), rig.model->calendar())),
              "rows");
    }

    void overdueAndDoneRowsSayWhatTheyAre() {
        Rig rig(at(2025, 3, 6, 10, 0));
        rig.addTask("late", Day::adding(-2, rig.today()), 600);
        rig.model->toggle(rig.addTask("finished", rig.today(), 540));
        const auto rows =
            todayRows(rig.model->store().todos(), rig.time.now(), rig.model->calendar());
        QCOMPARE(keysOf(rows), u"section:overdue late section:done finished"_s);
        QCOMPARE(rows[0].tint, SectionTint::Overdue);
        QCOMPARE(rows[1].meta, Meta::Day);
        QCOMPARE(rows[1].text, "Tue, Mar 4");
        QCOMPARE(rows[3].text, "9:00\u202fAM");
    }

    void upcomingHasADayHeadingPerDay() {
        Rig rig(at(2025, 3, 6, 10, 0));
        rig.addTask("dentist", Day::adding(1, rig.today()), 900);
        rig.addTask("taxes", "2025-04-30");
        rig.addTask("call", Day::adding(1, rig.today()));
        const auto rows =
            upcomingRows(rig.model->store().todos(), rig.time.now(), rig.model->calendar());
        QCOMPARE(keysOf(rows), u"section:2025-03-07 dentist call section:2025-04-30 taxes"_s);
        QCOMPARE(rows[0].text, "Tomorrow");
        QCOMPARE(rows[3].text, "Wed, Apr 30");
    }

    // Ticking a task off shows it done at once and completes it 0.45 s later, in its row.
    void checkingATaskOff() {
        Rig rig(at(2025, 3, 6, 10, 0));
        const Todo task = rig.addTask("standup", rig.today(), 660);
        TaskListModel& today = *rig.model->todayList();
        const auto checking = [&] {
            return today.data(today.index(1), TaskListModel::CheckingRole).toBool();
        };
        QSignalSpy removed(&today, &QAbstractItemModel::rowsRemoved);
        rig.model->check(task);
        QVERIFY(checking());
        rig.time.advance(300ms);
        rig.model->check(*rig.task(task.id)); // a second click while it waits
        rig.time.advance(149ms);
        QVERIFY(!rig.task(task.id)->isDone());
        rig.time.advance(1ms);
        QVERIFY(rig.task(task.id)->isDone());
        QCOMPARE(keysOf(today.rows()), u"section:done standup"_s);
        QVERIFY(!today.rows()[1].checking);
        QCOMPARE(removed.count(), 1); // the now line; the task's row moved
        // A done task reopens at once.
        rig.model->check(*rig.task(task.id));
        QVERIFY(!rig.task(task.id)->isDone());
    }
};

} // namespace kelo

QTEST_GUILESS_MAIN(kelo::TaskListsTest)
#include "task_lists_test.moc"
