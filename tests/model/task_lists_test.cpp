#include "model_rig.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>
#include <task_list_model.h>
#include <task_rows.h>

using namespace Qt::StringLiterals;
using kelo::testing::at;
using kelo::testing::Rig;

namespace kelo {

class TaskListsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Any list turns into any other consistently, and rows that stay are never removed and
    // inserted again, so a view keeps their delegates.
    void anyChangeLandsKeepingTheRowsThatStay() {
        QRandomGenerator random(7);
        TaskListModel list;
        QAbstractItemModelTester tester(&list,
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        QStringList old;
        for (int round = 0; round < 300; ++round) {
            QStringList keys;
            for (int key = 0; key < 12; ++key) {
                if (round % 100 != 99 && random.bounded(3) != 0) { // now and then none
                    keys << QString::number(key);
                }
            }
            std::shuffle(keys.begin(), keys.end(), random);
            QSignalSpy removed(&list, &QAbstractItemModel::rowsRemoved);
            QSignalSpy inserted(&list, &QAbstractItemModel::rowsInserted);
            std::vector<TaskRow> rows;
            for (const QString& key : keys) {
                rows.emplace_back().key = key.toStdString();
            }
            list.setRows(rows);
            QVERIFY(list.rows() == rows);
            qsizetype removedRows = 0;
            for (const auto& signal : removed) {
                removedRows += signal.at(2).toInt() - signal.at(1).toInt() + 1;
            }
            const auto staying =
                std::ranges::count_if(old, [&](auto& key) { return keys.contains(key); });
            QCOMPARE(removedRows, old.size() - staying);
            QCOMPARE(inserted.count(), keys.size() - staying);
            old = keys;
        }
    }

    // `tasks` are title:day:minute, the day counted from today and the minute left out for
    // anytime; "+" completes the task. Rows show as headings ("!" for the overdue tint), the now
    // line and tasks with their meta text. A task of this very minute is below the now line,
    // which shows only with timed tasks.
    void rows_data() {
        QTest::addColumn<QString>("tasks");
        QTest::addColumn<QString>("rows");
        QTest::newRow("before, at and after now")
            << u"at:0:600 after:0:660 before:0:540"_s
            << u"before 9:00 AM/now/at 10:00 AM/after 11:00 AM"_s;
        QTest::newRow("all earlier") << u"a:0:540"_s << u"a 9:00 AM/now"_s;
        QTest::newRow("anytime only") << u"a:0"_s << u"Anytime/a"_s;
        QTest::newRow("overdue and done") << u"late:-2:600 finished:0:540+"_s
                                          << u"!Overdue/late Tue, Mar 4/Done/finished 9:00 AM"_s;
        QTest::newRow("upcoming") << u"dentist:1:900 taxes:55 call:1"_s
                                  << u"Tomorrow/dentist 3:00 PM/call/Wed, Apr 30/taxes"_s;
    }

    void rows() {
        QFETCH(QString, tasks);
        Rig rig(at(2025, 3, 6, 10, 0));
        for (const QString& task : tasks.split(u' ', Qt::SkipEmptyParts)) {
            const QStringList parts = task.chopped(task.endsWith(u'+') ? 1 : 0).split(u':');
            const Todo added = rig.addTask(
                parts[0].toStdString(), Day::adding(parts[1].toInt(), rig.today()),
                parts.size() > 2 ? std::optional<std::int64_t>(parts[2].toInt()) : std::nullopt);
            if (task.endsWith(u'+')) {
                rig.model->toggle(added);
            }
        }
        const auto make = QTest::currentDataTag() == "upcoming"_ba ? upcomingRows : todayRows;
        QStringList shown;
        for (const TaskRow& row :
             make(rig.model->store().todos(), rig.now, rig.model->calendar())) {
            const QString tint = row.tint == SectionTint::Overdue ? u"!"_s : QString();
            const QString title = row.task ? qtText(row.task->title) % u' ' : QString();
            const QString text = qtText(row.text).replace(QChar(0x202f), u' ');
            shown << (row.kind == RowKind::NowLine ? u"now"_s
                                                   : QString(tint % title % text).trimmed());
        }
        QTEST(shown.join(u'/'), "rows");
    }
};

} // namespace kelo

QTEST_GUILESS_MAIN(kelo::TaskListsTest)
#include "task_lists_test.moc"
