#include "island_geometry.h"

#include <QTest>

namespace kelo::shell {
namespace {

ScreenFacts screen(const char* name, QRect geometry, int topPanel = 0, qreal ratio = 1) {
    return {QString::fromLatin1(name), geometry, geometry.adjusted(0, topPanel, 0, 0), ratio};
}

} // namespace

class IslandGeometryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void noScreenNoPlacement() { QCOMPARE(placeNotch({}, -1, 74).has_value(), false); }

    void withoutADeviceNotchThePrimaryScreenGetsTheFallback() {
        const QList<ScreenFacts> screens{screen("HDMI-1", {0, 0, 1920, 1080}, 40),
                                         screen("DP-1", {1920, 0, 1440, 900}, 30)};
        const auto placement = placeNotch(screens, 1, std::nullopt);
        QVERIFY(placement);
        QCOMPARE(placement->screen, 1);
        QCOMPARE(placement->notch, QSizeF(185, 30));
    }

    void theFallbackNotchIsAtLeast24High() {
        const auto placement = placeNotch({screen("DP-1", {0, 0, 1440, 900}, 0)}, 0, std::nullopt);
        QVERIFY(placement);
        QCOMPARE(placement->notch, QSizeF(185, 24));
    }

    void withoutAPrimaryTheFirstScreenIsTaken() {
        const QList<ScreenFacts> screens{screen("DP-1", {0, 0, 1440, 900}, 28),
                                         screen("DP-2", {1440, 0, 1440, 900}, 50)};
        const auto placement = placeNotch(screens, -1, std::nullopt);
        QVERIFY(placement);
        QCOMPARE(placement->screen, 0);
        QCOMPARE(placement->notch.height(), 28.0);
    }

    void theBuiltInPanelWinsEvenWhenAnExternalScreenIsPrimary() {
        const QList<ScreenFacts> screens{screen("HDMI-1", {0, 0, 2560, 1440}, 32),
                                         screen("eDP-1", {2560, 0, 1512, 982}, 0, 2)};
        const auto placement = placeNotch(screens, 0, 74);
        QVERIFY(placement);
        QCOMPARE(placement->screen, 1);
        // Device pixels become points on a screen of ratio 2.
        QCOMPARE(placement->notch, QSizeF(185, 37));
    }

    void aDeviceNotchWithoutANamedPanelGoesToThePrimaryScreen() {
        const QList<ScreenFacts> screens{screen("XWAYLAND0", {0, 0, 1920, 1080}),
                                         screen("XWAYLAND1", {1920, 0, 1512, 982})};
        const auto placement = placeNotch(screens, 1, 64);
        QVERIFY(placement);
        QCOMPARE(placement->screen, 1);
        QCOMPARE(placement->notch, QSizeF(185, 64));
    }

    void frameSizeCoversTheIsland() {
        QCOMPARE(frameSizeFor(QSizeF(197, 24), false), QSize(197, 24));
        QCOMPARE(frameSizeFor(QSizeF(385.5, 54.2), false), QSize(386, 55));
        QCOMPARE(frameSizeFor(QSizeF(0, 0), false), QSize(1, 1));
    }

    void theOpenFrameHasRoomForTheShadow() {
        QCOMPARE(frameSizeFor(QSizeF(645, 120), true), QSize(705, 160));
    }

    void theFrameHangsFromTheTopCentreOfItsScreen() {
        QCOMPARE(frameOnScreen(QRect(0, 0, 1440, 900), QSize(197, 24)), QRect(621, 0, 197, 24));
        QCOMPARE(frameOnScreen(QRect(1440, 200, 1920, 1080), QSize(705, 160)),
                 QRect(1440 + 607, 200, 705, 160));
    }

    void theHostFitsTheLargestOpenIsland() {
        const QSizeF notch(185, 32);
        QCOMPARE(hostSizeFor(notch), QSizeF(705, 520));
        const QSizeF largestOpen(notch.width() + 460, 480);
        QCOMPARE(hostSizeFor(notch), QSizeF(frameSizeFor(largestOpen, true)));
    }
};

} // namespace kelo::shell

QTEST_GUILESS_MAIN(kelo::shell::IslandGeometryTest)
#include "island_geometry_test.moc"
