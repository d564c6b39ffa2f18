#include "model_rig.h"

#include <QSignalSpy>
#include <QTest>
#include <data_file_watcher.h>

using kelo::testing::Rig;

namespace kelo {

// The watcher with a real file: what another program writes while Kelo runs reaches the island.
class DataFileWatcherTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aTaskAddedByAnotherProgramAppears() {
        Rig rig;
        rig.addTask("ours");
        const DataFileWatcher watcher(rig.model->store());
        QSignalSpy redraws(rig.model.get(), &IslandModel::todosChanged);

        // Another writer of the same file, as a sync tool or kelo-core would be.
        TodoStore other(rig.model->store().path(), TodoStore::Options{currentTime, [](auto) {}});
        QVERIFY(other.add("theirs"));

        QTRY_COMPARE_WITH_TIMEOUT(rig.model->store().todos().size(), std::size_t{2}, 1000);
        QCOMPARE(rig.model->store().todos().back().title, std::string("theirs"));
        QVERIFY(!redraws.isEmpty());
    }
};

} // namespace kelo

QTEST_GUILESS_MAIN(kelo::DataFileWatcherTest)
#include "data_file_watcher_test.moc"
