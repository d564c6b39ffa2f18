#include "device_notch.h"
#include "island_frame.h"
#include "island_geometry.h"
#include "island_outline.h"

#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <filesystem>
#include <fstream>

Q_DECLARE_METATYPE(kelo::shell::IslandRegions)
Q_DECLARE_METATYPE(kelo::shell::ScreenFacts)

namespace kelo::shell {
namespace {

ScreenFacts screen(const char* name, QRect geometry, int topPanel = 0, qreal ratio = 1) {
    return {QString::fromLatin1(name), geometry, geometry.adjusted(0, topPanel, 0, 0), ratio};
}

// An island's regions as plain rectangles: the frame's rule does not care about their shape.
IslandRegions regions(QRect bounding, QRect input) {
    return {QRegion(bounding), QRegion(input)};
}

} // namespace

// Where the island hangs, what of its window it occupies, and when that changes.
class IslandGeometryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void deviceNotchHeight_data() {
        QTest::addColumn<QByteArray>("module");    // the driver showing the notch, if any
        QTest::addColumn<QByteArray>("showNotch"); // its show_notch parameter
        QTest::addColumn<QByteArray>("node");      // the device-tree node, if any
        QTest::addColumn<QByteArray>("height");    // its apple,notch-height property
        QTest::addColumn<int>("expected");         // -1: no notch
        const QByteArray drm = "appledrm", yes = "Y\n", dcp = "dcp@38bc00000";
        const QByteArray h74("\0\0\0\x4a", 4);
        QTest::newRow("shown") << drm << yes << dcp << h74 << 74;
        QTest::newRow("big endian") << drm << yes << dcp << QByteArray("\0\0\x01\x02", 4) << 258;
        QTest::newRow("older driver name")
            << QByteArray("apple_dcp") << yes << QByteArray("dcp@231c00000")
            << QByteArray("\0\0\0\x40", 4) << 64;
        QTest::newRow("no driver parameter") << QByteArray() << yes << dcp << h74 << -1;
        QTest::newRow("hidden by the driver") << drm << QByteArray("N\n") << dcp << h74 << -1;
        QTest::newRow("external display port")
            << drm << yes << QByteArray("dcpext0@22c000000") << h74 << -1;
        QTest::newRow("too short") << drm << yes << dcp << QByteArray("\0\x4a", 2) << -1;
        QTest::newRow("zero") << drm << yes << dcp << QByteArray("\0\0\0\0", 4) << -1;
        QTest::newRow("little endian") << drm << yes << dcp << QByteArray("\x4a\0\0\0", 4) << -1;
        QTest::newRow("no device tree") << drm << yes << QByteArray() << h74 << -1;
    }

    void deviceNotchHeight() {
        QFETCH(QByteArray, module);
        QFETCH(QByteArray, showNotch);
        QFETCH(QByteArray, node);
        QFETCH(QByteArray, height);
        QTemporaryDir folder;
        const std::filesystem::path root = folder.path().toStdString();
        const auto write = [&](const std::filesystem::path& relative, const QByteArray& bytes) {
            std::filesystem::create_directories((root / relative).parent_path());
            std::ofstream(root / relative, std::ios::binary).write(bytes.data(), bytes.size());
        };
        if (!module.isEmpty()) {
            write("sys/module/" + module.toStdString() + "/parameters/show_notch", showNotch);
        }
        if (!node.isEmpty()) {
            write("dt/soc/" + node.toStdString() + "/apple,notch-height", height);
        }
        QTEST(shell::deviceNotchHeight({root / "sys", root / "dt"}).value_or(-1), "expected");
    }

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
        const auto placement = shell::placeNotch(
            screens, primary, deviceNotch < 0 ? std::nullopt : std::optional(deviceNotch));
        QTEST(placement ? int(placement->screen) : -1, "chosen");
        QTEST(placement ? placement->notch : QSizeF(), "notch");
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

        // Inside the body; not in the corners that the outline rounds or flares away, nor below.
        // (Where the island hangs is checked on a real X server: desktop_rig's assertIsland.)
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

    void growsAtOnceAndShrinksLater_data() {
        QTest::addColumn<QList<IslandRegions>>("applied");
        QTest::addColumn<bool>("reset"); // the last one, as for a window that was just resized
        QTest::addColumn<IslandRegions>("atOnce");
        QTest::addColumn<IslandRegions>("later");
        const IslandRegions closed = regions({254, 0, 197, 24}, {254, 0, 197, 24});
        const IslandRegions peek = regions({160, 0, 385, 54}, {160, 0, 385, 54});
        const IslandRegions open = regions({0, 0, 705, 160}, {30, 0, 645, 120});
        const IslandRegions tall = regions({200, 0, 305, 100}, {200, 0, 305, 100});
        QTest::newRow("grows") << QList{closed, peek} << false << peek << peek;
        QTest::newRow("shrinks") << QList{open, closed} << false << open << closed;
        QTest::newRow("growing again cancels the shrink")
            << QList{open, closed, open} << false << open << open;
        QTest::newRow("narrower but taller grows first")
            << QList{peek, tall} << false
            << IslandRegions{peek.bounding + tall.bounding, peek.input + tall.input} << tall;
        QTest::newRow("a change within the delay starts over")
            << QList{open, peek, closed} << false << open << closed;
        QTest::newRow("only the bounding region shrinks")
            << QList{open, regions({30, 0, 645, 120}, {30, 0, 645, 120})} << false << open
            << regions({30, 0, 645, 120}, {30, 0, 645, 120});
        QTest::newRow("a reset takes its target at once")
            << QList{open, closed} << true << closed << closed;
    }

    void growsAtOnceAndShrinksLater() {
        QFETCH(QList<IslandRegions>, applied);
        QFETCH(bool, reset);
        QFETCH(IslandRegions, later);
        QList<IslandRegions> written;
        IslandFrame frame([&written](const IslandRegions& shown) { written.append(shown); });
        for (const IslandRegions& target : applied) {
            reset&&& target == &applied.constLast() ? frame.reset(target) : frame.apply(target);
        }
        QTEST(written.constLast(), "atOnce");
        QTRY_COMPARE_WITH_TIMEOUT(written.constLast(), later, 5000);
        QTest::qWait(2 * IslandFrame::shrinkDelay.count());
        QCOMPARE(written.constLast(), later);
        // Only changes reach the window.
        QVERIFY(std::adjacent_find(written.cbegin(), written.cend()) == written.cend());
    }
};

} // namespace kelo::shell

QTEST_GUILESS_MAIN(kelo::shell::IslandGeometryTest)
#include "island_geometry_test.moc"
