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
class SteppedDriver : public QAnimationDriver {
public:
    [[nodiscard]] qint64 elapsed() const override { return now; }
    void step(qint64 milliseconds) {
        // Started animations register with the driver from the event loop.
        QCoreApplication::processEvents();
        now += milliseconds;
        advance();
    }

    qint64 now = 0;
};

// The damped oscillator the island's springs stand for, released from 0 towards 1 at rest.
double oscillator(double response, double fraction, double seconds) {
    const double omega = 2 * std::numbers::pi / response;
    const double decay = std::exp(-fraction * omega * seconds);
    if (fraction >= 1) {
        return 1 - decay * (1 + omega * seconds);
    }
    const double damped = omega * std::sqrt(1 - fraction * fraction);
    return 1 - decay * (std::cos(damped * seconds) +
                        fraction * omega / damped * std::sin(damped * seconds));
}

} // namespace

// The island's one spring, as QML runs it, moves as the damped oscillator of its response and
// damping fraction: within about 1 % of the move, overshoot included.
class SpringTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void followsTheOscillator_data() {
        QTest::addColumn<QString>("preset");
        QTest::addColumn<double>("response");
        QTest::addColumn<double>("fraction");
        QTest::newRow("island") << QStringLiteral("island") << 0.42 << 0.8;
        QTest::newRow("list") << QStringLiteral("list") << 0.5 << 0.85;
        QTest::newRow("check circle") << QStringLiteral("checkCircle") << 0.28 << 0.55;
    }

    void followsTheOscillator() {
        QFETCH(QString, preset);
        QFETCH(double, response);
        QFETCH(double, fraction);
        SteppedDriver driver;
        driver.install();
        QQmlEngine engine;
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        QQmlComponent component(&engine);
        component.setData("import QtQuick\nimport Kelo\nItem {\n"
                          "    property real value: 0\n"
                          "    Behavior on value { Spring { preset: Motion." +
                              preset.toUtf8() + "; epsilon: 0.0001 } }\n}\n",
                          QUrl());
        std::unique_ptr<QObject> item(component.create());
        QVERIFY2(item, qPrintable(component.errorString()));
        item->setProperty("value", 1.0);

        // Sampled every 16 ms, the integrator's own step, for 1.5 s. A discrete spring runs a
        // little ahead of the exact curve (it moves in its first step already), so the
        // comparison allows a shift of up to two steps. Qt starts an animation on the frame
        // after it was asked for and then catches up, so the first frame is left out.
        constexpr int step = 16;
        constexpr int frames = 94;
        std::vector<double> drawn;
        for (int frame = 0; frame < frames; ++frame) {
            driver.step(step);
            drawn.push_back(item->property("value").toDouble());
        }
        driver.uninstall();
        double best = 1;
        int bestShift = 0;
        for (int shift = -34; shift <= 34; ++shift) {
            double worst = 0;
            for (int frame = 1; frame < frames; ++frame) {
                const qint64 at = (frame + 1) * step;
                const double exact =
                    oscillator(response, fraction, std::max<qint64>(0, at + shift) / 1000.0);
                worst = std::max(worst, std::abs(drawn[std::size_t(frame)] - exact));
            }
            if (worst < best) {
                best = worst;
                bestShift = shift;
            }
        }
        QVERIFY2(best < 0.012,
                 qPrintable(QStringLiteral("off by %1 at %2 ms").arg(best).arg(bestShift)));

        double overshoot = 0;
        double exactOvershoot = 0;
        for (int ms = 0; ms < 1500; ++ms) {
            exactOvershoot =
                std::max(exactOvershoot, oscillator(response, fraction, ms / 1000.0) - 1);
        }
        for (const double value : drawn) {
            overshoot = std::max(overshoot, value - 1);
        }
        QVERIFY2(std::abs(overshoot - exactOvershoot) < 0.004,
                 qPrintable(
                     QStringLiteral("overshoot %1, exact %2").arg(overshoot).arg(exactOvershoot)));
    }
};

QTEST_MAIN(SpringTest)
#include "spring_test.moc"
