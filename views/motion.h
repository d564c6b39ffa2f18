#pragma once

#include <QObject>
#include <QQmlEngine>
#include <spring.h>

namespace kelo::views {

// A spring as Qt Quick's SpringAnimation runs it. SpringAnimation integrates in fixed 16 ms
// steps (v += spring·(to − x) − damping·v; x += v·0.016), so its `spring` and `damping` are
// per-step numbers. They are chosen so that one step moves exactly as the damped oscillator of
// (response, dampingFraction) moves in 16 ms: the poles of the step match the oscillator's.
// The obvious conversion (spring = ω²h, damping = 2ζωh) loses most of the overshoot.
struct SpringPreset {
    Q_GADGET
    QML_VALUE_TYPE(springPreset)
    Q_PROPERTY(double response MEMBER response CONSTANT FINAL)
    Q_PROPERTY(double dampingFraction MEMBER dampingFraction CONSTANT FINAL)
    Q_PROPERTY(double spring MEMBER spring CONSTANT FINAL)
    Q_PROPERTY(double damping MEMBER damping CONSTANT FINAL)

public:
    double response = 0;
    double dampingFraction = 0;
    double spring = 0;
    double damping = 0;
};

// SpringAnimation's fixed step, in seconds.
inline constexpr double springAnimationStep = 0.016;

[[nodiscard]] SpringPreset springAnimationPreset(motion::SpringParameters parameters);

// The island's springs for QML: `Motion.island` for modes, sizes, the ring and the theme;
// `Motion.list` for lists, pages, the schedule editor and the toast; `Motion.checkCircle`.
class Motion : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(kelo::views::SpringPreset island READ island CONSTANT FINAL)
    Q_PROPERTY(kelo::views::SpringPreset list READ list CONSTANT FINAL)
    Q_PROPERTY(kelo::views::SpringPreset checkCircle READ checkCircle CONSTANT FINAL)

public:
    explicit Motion(QObject* parent = nullptr)
        : QObject(parent) {}

    [[nodiscard]] static SpringPreset island();
    [[nodiscard]] static SpringPreset list();
    [[nodiscard]] static SpringPreset checkCircle();
};

} // namespace kelo::views
