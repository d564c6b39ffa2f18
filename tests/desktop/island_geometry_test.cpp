#include "island_geometry.h"
#include "island_outline.h"

#include <QTest>

Q_DECLARE_METATYPE(kelo::shell::ScreenFacts)

namespace kelo::shell {
namespace {

ScreenFacts screen(const char* name, QRect geometry, int topPanel = 0, qreal ratio = 1) {
    return {QString::fromLatin1(name), geometry, geometry.adjusted(0, topPanel, 0, 0), ratio};
}

} // namespace

class IslandGeometryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void placeNotch_data() {
        QTest::addColumn<QList<ScreenFacts>>("screens");
        QTest::addColumn<int>("primary");
        QTest::addColumn<int>("deviceNotch"); // -1: none
        QTest::addColumn<int>("chosen");      // -1: no placement
        QTest::addColumn<QSizeF>("notch");
        QTest::newRow("no screen") << QList<ScreenFacts>{} << -1 << 74 << -1 << QSizeF();
        QTest::newRow("fallback on the primary, as high as its panel")
            << QList{screen("HDMI-1", {0, 0, 1920, 1080}, 40),
                     screen("DP-1", {1920, 0, 1440, 900}, 30)}
            << 1 << -1 << 1 << QSizeF(185, 30);
        QTest::newRow("fallback at least 24 high")
            << QList{screen("DP-1", {0, 0, 1440, 900})} << 0 << -1 << 0 << QSizeF(185, 24);
        QTest::newRow("without a primary the first screen")
            << QList{screen("DP-1", {0, 0, 1440, 900}, 28),
                     screen("DP-2", {1440, 0, 1440, 900}, 50)}
            << -1 << -1 << 0 << QSizeF(185, 28);
        QTest::newRow("the built-in panel wins, in points")
            << QList{screen("HDMI-1", {0, 0, 2560, 1440}, 32),
                     screen("eDP-1", {2560, 0, 1512, 982}, 0, 2)}
            << 0 << 74 << 1 << QSizeF(185, 37);
        QTest::newRow("device notch without a named panel goes to the primary")
            << QList{screen("XWAYLAND0", {0, 0, 1920, 1080}),
                     screen("XWAYLAND1", {1920, 0, 1512, 982})}
            << 1 << 64 << 1 << QSizeF(185, 64);
    }

    void placeNotch() {
        QFETCH(QList<ScreenFacts>, screens);
        QFETCH(int, primary);
        QFETCH(int, deviceNotch);
        QFETCH(int, chosen);
        const auto placement = shell::placeNotch(
            screens, primary, deviceNotch < 0 ? std::nullopt : std::optional(deviceNotch));
        QCOMPARE(placement ? placement->screen : -1, chosen);
        QTEST(placement ? placement->notch : QSizeF(), "notch");
    }

    void theWindowHangsFromTheTopCentreInWholePixels() {
        const QSizeF notch(185.5, 32);
        const QRect window = windowOnScreen(QRect(1440, 200, 1920, 1080), notch);
        QCOMPARE(window.top(), 200);
        const QSizeF largest = metrics::largestIsland(notch);
        QVERIFY(window.width() >= largest.width() && window.width() < largest.width() + 1);
        QCOMPARE(window.height(), qCeil(largest.height()));
        const int leftGap = window.left() - 1440, rightGap = 1440 + 1920 - window.right() - 1;
        QVERIFY(qAbs(leftGap - rightGap) <= 1);
    }

    // The island in a still window: where the pointer reaches it and what is shown of it.
    void theShapeFollowsTheOutline_data() {
        QTest::addColumn<int>("mode");
        QTest::addColumn<bool>("composited");
        QTest::addColumn<qreal>("ratio");
        QTest::newRow("closed") << int(ModeKind::Closed) << false << 1.0;
        QTest::newRow("open") << int(ModeKind::Open) << false << 1.0;
        QTest::newRow("open, composited") << int(ModeKind::Open) << true << 1.0;
        QTest::newRow("peek, composited") << int(ModeKind::Peek) << true << 1.0;
        QTest::newRow("alert at twice the pixels") << int(ModeKind::Alert) << false << 2.0;
    }

    void theShapeFollowsTheOutline() {
        QFETCH(int, mode);
        QFETCH(bool, composited);
        QFETCH(qreal, ratio);
        const auto kind = static_cast<ModeKind>(mode);
        const QSizeF island(445, 78);
        const IslandRegions shape = islandRegions({.windowWidth = 705,
                                                   .island = island,
                                                   .mode = kind,
                                                   .composited = composited,
                                                   .devicePixelRatio = ratio});
        const auto at = [ratio](qreal x, qreal y) { return (QPointF(x, y) * ratio).toPoint(); };
        const qreal left = (705 - island.width()) / 2, right = left + island.width();
        const metrics::Radii radii = metrics::radii(kind);

        // Centred, from the screen's edge down to the island's height.
        const QRect input = shape.input.boundingRect();
        QCOMPARE(input.top(), 0);
        QVERIFY(qAbs(input.bottom() + 1 - island.height() * ratio) <= 1);
        QVERIFY(qAbs((input.left() - left * ratio) - (right * ratio - input.right() - 1)) <= 1);
        // Inside the body; not in the corners that the outline rounds or flares away.
        QVERIFY(shape.input.contains(at(352, island.height() - 2)));
        QVERIFY(shape.input.contains(at(left + radii.top + 1, island.height() / 2)));
        QVERIFY(!shape.input.contains(at(left + radii.top + 1, island.height() - 1)));
        QVERIFY(!shape.input.contains(at(right - 1, island.height() / 2)));
        QVERIFY(!shape.input.contains(at(352, island.height() + 1)));

        QVERIFY(shape.input.subtracted(shape.bounding).isEmpty());
        if (!composited) {
            QCOMPARE(shape.bounding, shape.input);
            return;
        }
        // The antialiased edge is shown, and the open island's shadow below and beside it.
        QVERIFY(shape.bounding.contains(at(left + radii.top - 1, island.height() / 2)));
        const bool shadowRoom = shape.bounding.contains(at(left - 20, island.height() + 30));
        QCOMPARE(shadowRoom, kind == ModeKind::Open);
    }
};

} // namespace kelo::shell

QTEST_GUILESS_MAIN(kelo::shell::IslandGeometryTest)
#include "island_geometry_test.moc"
