#pragma once

#include "day.h"

#include <cstdint>
#include <optional>

namespace kelo {

// A day and a time of that day: what a phrase names, what a quick-add line plans and what a task
// carries. Either part may be absent; a stored task never has a time without a day.
struct Schedule {
    std::optional<DayKey> day;
    // Minutes after local midnight, [0, 1439].
    std::optional<std::int64_t> minute;

    bool operator==(const Schedule&) const = default;
};

} // namespace kelo
