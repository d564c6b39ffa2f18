#include "scratch.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using kelo::testing::at;
using kelo::testing::Rig;

namespace kelo {

// IslandModel: the road of one task, from the hot key to its alert.
class IslandStoryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void fromKeyToAlert() {
        Rig rig(at(2025, 3, 6, 9, 0));
        rig.platform.front = ApplicationRef{42};
        rig.model->setBucket(Bucket::upcoming);

        // ⌃⌥T in another application.
        rig.model->hotKey();
        QCOMPARE(rig.model->mode(), Mode::open());
        QCOMPARE(rig.model->bucket(), Bucket::today);
        QCOMPARE(rig.model->focusRequest(), 1);
        QCOMPARE(rig.platform.calls, QStringList({u"activate"_s, u"makePanelKey"_s}));

        // Typing shows what Return will add.
        rig.model->setDraft(u"groceries 5pm"_s);
        QCOMPARE(rig.model->plan(), (Parsed{"groceries", rig.today(), 1020}));

        rig.model->addDraft();
        QCOMPARE(rig.model->store().todos().size(), 1u);
        const Todo task = rig.model->store().todos().front();
        QCOMPARE(task.title, "groceries");
        QCOMPARE(task.day, rig.today());
        QCOMPARE(task.minute, 1020);
        QCOMPARE(rig.model->draft(), QString());
        QCOMPARE(rig.model->bucket(), Bucket::today);

        // ⌃⌥T again: the keyboard goes back where it came from.
        rig.model->hotKey();
        QCOMPARE(rig.model->mode(), Mode::closed());
        QCOMPARE(rig.platform.calls.last(), u"handBack 42"_s);
        rig.platform.calls.clear();

        rig.time.advanceTo(at(2025, 3, 6, 16, 59));
        rig.model->tick();
        QCOMPARE(rig.model->mode(), Mode::closed());
        rig.time.advanceTo(at(2025, 3, 6, 17, 0));
        rig.model->tick();
        QCOMPARE(rig.model->mode(), Mode::alert(task.id));
        QCOMPARE(rig.model->alertTodo(), task);
        QCOMPARE(rig.platform.calls, QStringList({u"haptic"_s, u"sound"_s}));

        rig.time.advance(12s);
        QCOMPARE(rig.model->mode(), Mode::closed());
    }
};

} // namespace kelo

QTEST_GUILESS_MAIN(kelo::IslandStoryTest)
#include "island_story_test.moc"
