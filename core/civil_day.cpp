#include "civil_day.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace kelo {

std::int64_t CivilDay::serial() const {
    // Normalise a month outside 1...12 into the year first.
    const std::int64_t monthIndex = static_cast<std::int64_t>(month) - 1;
    std::int64_t y = year + floorDiv(monthIndex, 12);
    const std::int64_t m = monthIndex - floorDiv(monthIndex, 12) * 12 + 1; // [1, 12]

    y -= m <= 2 ? 1 : 0;
    const std::int64_t era = floorDiv(y, 400);
    const std::int64_t yearOfEra = y - era * 400;                           // [0, 399]
    const std::int64_t dayOfYear = (153 * (m > 2 ? m - 3 : m + 9) + 2) / 5; // [0, 365]
    const std::int64_t dayOfEra =
        yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear; // [0, 146096]
    return era * 146097 + dayOfEra - 719468 + (static_cast<std::int64_t>(day) - 1);
}

CivilDay CivilDay::fromSerial(std::int64_t serial) {
    const std::int64_t z = serial + 719468;
    const std::int64_t era = floorDiv(z, 146097);
    const std::int64_t dayOfEra = z - era * 146097; // [0, 146096]
    const std::int64_t yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365; // [0, 399]
    const std::int64_t dayOfYear =
        dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100); // [0, 365]
    const std::int64_t mp = (5 * dayOfYear + 2) / 153;                  // [0, 11]
    const int d = static_cast<int>(dayOfYear - (153 * mp + 2) / 5 + 1); // [1, 31]
    const int m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);          // [1, 12]
    return CivilDay{yearOfEra + era * 400 + (m <= 2 ? 1 : 0), m, d};
}

int CivilDay::weekday() const {
    // 1970-01-01 was a Thursday (5).
    const std::int64_t fromThursday = serial() - floorDiv(serial(), 7) * 7; // [0, 6]
    return static_cast<int>((fromThursday + 4) % 7) + 1;
}

char* CivilDay::write(char* out) const {
    if (year < 0) {
        *out++ = '-';
    }
    char digits[24];
    const std::uint64_t magnitude =
        year < 0 ? 0 - static_cast<std::uint64_t>(year) : static_cast<std::uint64_t>(year);
    const char* digitsEnd = std::to_chars(std::begin(digits), std::end(digits), magnitude).ptr;
    for (auto width = digitsEnd - digits; width < (year < 0 ? 3 : 4); ++width) {
        *out++ = '0';
    }
    out = std::copy(static_cast<const char*>(digits), digitsEnd, out);
    for (const int value : {month, day}) {
        *out++ = '-';
        *out++ = static_cast<char>('0' + value / 10);
        *out++ = static_cast<char>('0' + value % 10);
    }
    return out;
}

} // namespace kelo
