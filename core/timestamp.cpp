#include "timestamp.h"

#include "civil_day.h"

namespace kelo {

namespace {

// Reads exactly `width` ASCII digits at `at`.
std::optional<int> digits(std::string_view text, std::size_t at, std::size_t width) {
    if (at + width > text.size()) {
        return std::nullopt;
    }
    int value = 0;
    for (std::size_t i = at; i < at + width; ++i) {
        if (text[i] < '0' || text[i] > '9') {
            return std::nullopt;
        }
        value = value * 10 + (text[i] - '0');
    }
    return value;
}

bool isAt(std::string_view text, std::size_t at, char c) {
    return at < text.size() && text[at] == c;
}

// Proleptic Gregorian, as CivilDay counts.
int daysInMonth(int year, int month) {
    static constexpr int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
    return month == 2 && leap ? 29 : days[month - 1];
}

} // namespace

Timestamp currentTime() {
    return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

std::string internetDateTime(Timestamp time) {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(time).time_since_epoch().count();
    const std::int64_t days = floorDiv(seconds, 86400);
    const auto secondOfDay = static_cast<int>(seconds - days * 86400); // [0, 86399]
    const CivilDay day = CivilDay::fromSerial(days);
    char text[40];
    char* next = day.write(text);
    const auto twoDigits = [&](char before, int value) {
        *next++ = before;
        *next++ = static_cast<char>('0' + value / 10);
        *next++ = static_cast<char>('0' + value % 10);
    };
    twoDigits('T', secondOfDay / 3600);
    twoDigits(':', secondOfDay / 60 % 60);
    twoDigits(':', secondOfDay % 60);
    *next++ = 'Z';
    return std::string(text, next);
}

std::optional<Timestamp> parseInternetDateTime(std::string_view text) {
    const auto year = digits(text, 0, 4);
    const auto month = digits(text, 5, 2);
    const auto day = digits(text, 8, 2);
    const auto hour = digits(text, 11, 2);
    const auto minute = digits(text, 14, 2);
    const auto second = digits(text, 17, 2);
    if (!year || !month || !day || !hour || !minute || !second || !isAt(text, 4, '-') ||
        !isAt(text, 7, '-') || !isAt(text, 10, 'T') || !isAt(text, 13, ':') ||
        !isAt(text, 16, ':')) {
        return std::nullopt;
    }
    const CivilDay civil{*year, *month, *day};
    if (*month < 1 || *month > 12 || *day < 1 || *day > daysInMonth(*year, *month) || *hour > 23 ||
        *minute > 59 || *second > 59) {
        return std::nullopt;
    }

    int offsetSeconds = 0;
    const std::string_view zone = text.substr(19);
    if (zone != "Z") {
        const auto offsetHours = digits(zone, 1, 2);
        const auto offsetMinutes = digits(zone, 4, 2);
        const bool signed_ = isAt(zone, 0, '+') || isAt(zone, 0, '-');
        if (zone.size() != 6 || !signed_ || !isAt(zone, 3, ':') || !offsetHours || !offsetMinutes ||
            *offsetHours > 23 || *offsetMinutes > 59) {
            return std::nullopt;
        }
        offsetSeconds = (zone[0] == '-' ? -1 : 1) * (*offsetHours * 3600 + *offsetMinutes * 60);
    }
    const std::int64_t seconds =
        civil.serial() * 86400 + *hour * 3600 + *minute * 60 + *second - offsetSeconds;
    // An offset can carry a time of year 0000 or 9999 past the range that is written back in
    // four digits; such a time would make the saved file unreadable.
    static const std::int64_t first = CivilDay{0, 1, 1}.serial() * 86400;
    static const std::int64_t pastLast = CivilDay{10000, 1, 1}.serial() * 86400;
    if (seconds < first || seconds >= pastLast) {
        return std::nullopt;
    }
    return Timestamp(std::chrono::seconds(seconds));
}

} // namespace kelo
