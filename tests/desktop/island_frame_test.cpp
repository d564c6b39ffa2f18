#include "island_frame.h"

#include <QTest>

Q_DECLARE_METATYPE(kelo::shell::IslandRegions)

namespace kelo::shell {
namespace {

// An island's regions as plain rectangles: the frame's rule does not care about their shape.
IslandRegions regions(QRect bounding, QRect input) {
    return {QRegion(bounding), QRegion(input)};
}

} // namespace

// The frame's timing rule: grow at once, shrink after the delay.
class IslandFrameTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void growsAtOnceAndShrinksLater_data() {
        QTest::addColumn<QList<IslandRegions>>("applied");
        QTest::addColumn<IslandRegions>("atOnce");
        QTest::addColumn<IslandRegions>("later");
        const IslandRegions closed = regions({254, 0, 197, 24}, {254, 0, 197, 24});
        const IslandRegions peek = regions({160, 0, 385, 54}, {160, 0, 385, 54});
        const IslandRegions open = regions({0, 0, 705, 160}, {30, 0, 645, 120});
        const IslandRegions tall = regions({200, 0, 305, 100}, {200, 0, 305, 100});
        QTest::newRow("grows") << QList{closed, peek} << peek << peek;
        QTest::newRow("shrinks") << QList{open, closed} << open << closed;
        QTest::newRow("growing again cancels the shrink")
            << QList{open, closed, open} << open << open;
        QTest::newRow("narrower but taller grows first")
            << QList{peek, tall}
            << IslandRegions{peek.bounding + tall.bounding, peek.input + tall.input} << tall;
        QTest::newRow("a change within the delay starts over")
            << QList{open, peek, closed} << open << closed;
        QTest::newRow("only the bounding region shrinks")
            << QList{open, regions({30, 0, 645, 120}, {30, 0, 645, 120})} << open
            << regions({30, 0, 645, 120}, {30, 0, 645, 120});
    }

    void growsAtOnceAndShrinksLater() {
        QFETCH(QList<IslandRegions>, applied);
        QFETCH(IslandRegions, atOnce);
        QFETCH(IslandRegions, later);
        QList<IslandRegions> written;
        IslandFrame frame([&written](const IslandRegions& shown) { written.append(shown); });
        for (const IslandRegions& target : applied) {
            frame.apply(target);
        }
        QCOMPARE(written.constLast(), atOnce);
        QTRY_COMPARE_WITH_TIMEOUT(written.constLast(), later, 5000);
        QTest::qWait(2 * IslandFrame::shrinkDelay.count());
        QCOMPARE(written.constLast(), later);
        // Only changes reach the window.
        for (qsizetype i = 1; i < written.size(); ++i) {
            QVERIFY(written[i] != written[i - 1]);
        }
    }

    void aResetTakesTheTargetAtOnce() {
        QList<IslandRegions> written;
        IslandFrame frame([&written](const IslandRegions& shown) { written.append(shown); });
        const IslandRegions open = regions({0, 0, 705, 160}, {30, 0, 645, 120});
        const IslandRegions closed = regions({254, 0, 197, 24}, {254, 0, 197, 24});
        frame.apply(open);
        frame.apply(closed);
        frame.reset(closed);
        QCOMPARE(frame.shown(), closed);
        QTest::qWait(2 * IslandFrame::shrinkDelay.count());
        QCOMPARE(written, (QList{open, closed}));
    }
};

} // namespace kelo::shell

QTEST_GUILESS_MAIN(kelo::shell::IslandFrameTest)
#include "island_frame_test.moc"
