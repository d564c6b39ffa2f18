#pragma once

#include "civil_day.h"
#include "timestamp.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unicode/locid.h>
#include <unicode/timezone.h>

namespace kelo {

// What a moment looks like on the wall clock of a calendar's zone.
struct LocalTime {
    CivilDay day;
    int hour = 0;   // [0, 23]
    int minute = 0; // [0, 59]
    int second = 0; // [0, 59]
};

// The user's calendar as the task core sees it: a Gregorian calendar in one time zone with one
// locale for display texts. Callers build it once and pass it into every pure function; nothing
// in the task core reads the clock or a process-wide zone.
class Calendar {
public:
    // The zone of TZ or /etc/localtime and the locale of LC_ALL, LC_TIME or LANG.
    [[nodiscard]] static Calendar current();

    // None for a zone that ICU does not know or a malformed locale identifier.
    [[nodiscard]] static std::optional<Calendar> make(std::string_view zoneId,
                                                      std::string_view localeId);

    Calendar(const Calendar& other);
    Calendar& operator=(const Calendar& other);
    Calendar(Calendar&&) noexcept;
    Calendar& operator=(Calendar&&) noexcept;
    ~Calendar();

    [[nodiscard]] const icu::TimeZone& zone() const { return *zone_; }
    [[nodiscard]] const icu::Locale& locale() const { return locale_; }
    [[nodiscard]] std::string zoneId() const;

    [[nodiscard]] LocalTime local(Timestamp time) const;

    // The first moment at which the wall clock shows this day and time. A wall time skipped by a
    // daylight-saving change resolves to the first moment after the gap, and a repeated one to its
    // first occurrence, so the start of every day exists and is unique.
    [[nodiscard]] Timestamp at(CivilDay day, int hour = 0, int minute = 0) const;

private:
    Calendar(std::unique_ptr<icu::TimeZone> zone, icu::Locale locale);

    std::unique_ptr<icu::TimeZone> zone_;
    icu::Locale locale_;
};

} // namespace kelo
