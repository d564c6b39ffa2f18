#include "island_geometry.h"

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

    void framesCoverTheIslandAndHangFromTheTopCentre() {
        QCOMPARE(frameSizeFor(QSizeF(197, 24), false), QSize(197, 24));
        QCOMPARE(frameSizeFor(QSizeF(385.5, 54.2), false), QSize(386, 55));
        QCOMPARE(frameSizeFor(QSizeF(0, 0), false), QSize(1, 1));
        QCOMPARE(frameSizeFor(QSizeF(645, 120), true), QSize(705, 160)); // room for the shadow
        QCOMPARE(frameOnScreen(QRect(0, 0, 1440, 900), QSize(197, 24)), QRect(621, 0, 197, 24));
        QCOMPARE(frameOnScreen(QRect(1440, 200, 1920, 1080), QSize(705, 160)),
                 QRect(1440 + 607, 200, 705, 160));
    }

    void theHostFitsTheLargestOpenIsland() {
        const QSizeF notch(185, 32);
        QCOMPARE(hostSizeFor(notch), QSizeF(705, 520));
        QCOMPARE(hostSizeFor(notch), QSizeF(frameSizeFor({notch.width() + 460, 480}, true)));
    }
};

} // namespace kelo::shell

QTEST_GUILESS_MAIN(kelo::shell::IslandGeometryTest)
#include "island_geometry_test.moc"
