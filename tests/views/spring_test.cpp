#include <QAnimationDriver>
#include <QCoreApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>
#include <cmath>
#include <memory>
#include <numbers>

Q_IMPORT_QML_PLUGIN(KeloPlugin)

namespace {

// Time that moves only when the test steps it, so an animation is sampled frame by frame.
struct SteppedDriver : QAnimationDriver {
    qint64 elapsed() const override { return now; }
    qint64 now = 0;
};

// The damped oscillator the island's springs stand for, released from 0 towards 1 at rest.
double oscillator(double response, double fraction, double seconds) {
    const double omega = 2 * std::numbers::pi / response;
    const double damped = omega * std::sqrt(1 - fraction * fraction);
    return 1 - std::exp(-fraction * omega * seconds) *
                   (std::cos(damped * seconds) +
                    fraction * omega / damped * std::sin(damped * seconds));
}

} // namespace

// Each of the island's springs, as QML runs it, moves as the damped oscillator of its response
// and damping fraction: within about 1 % of the move, overshoot included.
class SpringTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void followsTheOscillator_data() {
        QTest::addColumn<double>("response");
        QTest::addColumn<double>("fraction");
        QTest::newRow("island") << 0.42 << 0.8;
        QTest::newRow("list") << 0.5 << 0.85;
        QTest::newRow("checkCircle") << 0.28 << 0.55;
    }

    void followsTheOscillator() {
        QFETCH(double, response);
        QFETCH(double, fraction);
        SteppedDriver driver;
        driver.install();
        QQmlEngine engine;
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        QQmlComponent component(&engine);
        component.setData(QByteArray("import QtQuick\nimport Kelo\nItem { property real value: 0\n"
                                     "Behavior on value { Spring { preset: Motion.") +
                              QTest::currentDataTag() + "; epsilon: 0.0001 } } }",
                          QUrl());
        std::unique_ptr<QObject> item(component.create());
        QVERIFY2(item, qPrintable(component.errorString()));
        item->setProperty("value", 1.0);

        // Sampled every 16 ms, the integrator's own step, for 1.5 s. A discrete spring runs a
        // little ahead of the exact curve (it moves in its first step already), so the
        // comparison allows a shift of up to two steps. Qt starts an animation on the frame
        // after it was asked for and then catches up, so the first frame is left out.
        std::vector<double> drawn;
        for (int frame = 0; frame < 94; ++frame) {
            QCoreApplication::processEvents(); // started animations register from the loop
            driver.now += 16;
            driver.advance();
            drawn.push_back(item->property("value").toDouble());
        }
        driver.uninstall();
        double best = 1;
        for (int shift = -34; shift <= 34; ++shift) {
            double worst = 0;
            for (std::size_t frame = 1; frame < drawn.size(); ++frame) {
                const double at = std::max<double>(0, double(frame + 1) * 16 + shift) / 1000;
                worst =
                    std::max(worst, std::abs(drawn[frame] - oscillator(response, fraction, at)));
            }
            best = std::min(best, worst);
        }
        QVERIFY2(best < 0.012, qPrintable(QStringLiteral("off by %1").arg(best)));
    }
};

QTEST_MAIN(SpringTest)
#include "spring_test.moc"
