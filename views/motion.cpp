#include "motion.h"

#include <cmath>
#include <numbers>

namespace kelo::views {

SpringPreset springAnimationPreset(motion::SpringParameters parameters) {
    const double h = springAnimationStep;
    const double zeta = parameters.dampingFraction;
    const double omega = 2 * std::numbers::pi / parameters.response;
    // The step's two poles multiply to 1 − damping and add up to 2 − damping − spring·h; the
    // oscillator's are exp((−ζ ± i·√(1 − ζ²))·ω·h), or real ones when it does not oscillate.
    const double damping = 1 - std::exp(-2 * zeta * omega * h);
    const double oscillation = zeta < 1 ? std::cos(omega * std::sqrt(1 - zeta * zeta) * h)
                                        : std::cosh(omega * std::sqrt(zeta * zeta - 1) * h);
    const double spring = (2 - damping - 2 * std::exp(-zeta * omega * h) * oscillation) / h;
    return {parameters.response, parameters.dampingFraction, spring, damping};
}

SpringPreset Motion::island() {
    return springAnimationPreset(motion::islandSpring);
}

SpringPreset Motion::list() {
    return springAnimationPreset(motion::listSpring);
}

SpringPreset Motion::checkCircle() {
    return springAnimationPreset(motion::checkCircleSpring);
}

} // namespace kelo::views
