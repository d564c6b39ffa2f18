#pragma once

#include <cstdint>

namespace kelo {

// Division that rounds towards negative infinity, so that moments and days before 1970 and
// negative years land in the right day, era or week. b > 0.
[[nodiscard]] constexpr std::int64_t floorDiv(std::int64_t a, std::int64_t b) {
    return a / b - (a % b < 0 ? 1 : 0);
}

// A day of the proleptic Gregorian calendar, with the arithmetic of Howard Hinnant's
// "chrono-compatible low-level date algorithms". Kelo never needs the Julian calendar, so days
// before 1582 continue the Gregorian rules backwards, exactly as the zone-aware code does.
struct CivilDay {
    std::int64_t year = 1970;
    int month = 1; // [1, 12]
    int day = 1;   // [1, 31]

    bool operator==(const CivilDay&) const = default;

    // Days since 1970-01-01. Months outside 1...12 and days past the month's end roll over.
    [[nodiscard]] std::int64_t serial() const;
    [[nodiscard]] static CivilDay fromSerial(std::int64_t serial);

    // 1 = Sunday ... 7 = Saturday.
    [[nodiscard]] int weekday() const;
    [[nodiscard]] CivilDay adding(std::int64_t days) const { return fromSerial(serial() + days); }

    // Writes the day as "%04lld-%02d-%02d" would (the year four digits at least, a minus sign
    // counting as one) and returns the end; 28 characters are always enough. Written by hand
    // because printf is slow at it, and the data file and every list row hold dates.
    char* write(char* out) const;
};

} // namespace kelo
