#pragma once

#include <QObject>
#include <optional>

namespace kelo::motion {
Q_NAMESPACE

// Which spring animates a change of the model. Enumerators start with a capital letter because
// QML reaches enumeration values only through capitalised names.
enum class Spring {
    None,   // the change is drawn at once
    Island, // mode changes and the island's size
    List,   // task lists, page, the end of schedule editing, the toast
};
Q_ENUM_NS(Spring)

// A damped spring as the views integrate it: ω = 2π / response, stiffness ω², damping
// 2 · dampingFraction · ω, unit mass.
struct SpringParameters {
    Q_GADGET
    Q_PROPERTY(double response MEMBER response FINAL)
    Q_PROPERTY(double dampingFraction MEMBER dampingFraction FINAL)

public:
    double response = 0;        // seconds
    double dampingFraction = 0; // 1 is critically damped

    bool operator==(const SpringParameters&) const = default;
};

// The only place that knows the springs' numbers; views ask for them.
inline constexpr SpringParameters islandSpring{0.42, 0.8};
inline constexpr SpringParameters listSpring{0.5, 0.85};
// The check circle of a task row: quick and a little bouncy.
inline constexpr SpringParameters checkCircleSpring{0.28, 0.55};

[[nodiscard]] constexpr std::optional<SpringParameters> parameters(Spring spring) {
    switch (spring) {
    case Spring::Island:
        return islandSpring;
    case Spring::List:
        return listSpring;
    case Spring::None:
        break;
    }
    return std::nullopt;
}

} // namespace kelo::motion

namespace kelo {
using motion::Spring;
} // namespace kelo
