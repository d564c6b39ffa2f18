#pragma once

#include "calendar.h"

#include <cstdlib>

namespace kelo::bench {

// Every benchmark reads days in one fixed zone, so figures do not depend on the machine's zone.
inline const Calendar& berlin() {
    static const Calendar calendar = [] {
        auto made = Calendar::make("Europe/Berlin", "en_US");
        if (!made) {
            std::abort();
        }
        return *made;
    }();
    return calendar;
}

} // namespace kelo::bench
