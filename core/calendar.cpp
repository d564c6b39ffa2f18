#include "calendar.h"

#include <unicode/basictz.h>
#include <unicode/timezone.h>
#include <unicode/ucal.h>

namespace kelo {

namespace {

constexpr std::int64_t millisecondsPerDay = 86'400'000;

} // namespace

Calendar::Calendar(std::unique_ptr<icu::TimeZone> zone, icu::Locale locale)
    : zone_(std::move(zone))
    , locale_(std::move(locale)) {}

Calendar Calendar::current() {
    return Calendar(std::unique_ptr<icu::TimeZone>(icu::TimeZone::createDefault()),
                    icu::Locale::getDefault());
}

std::optional<Calendar> Calendar::make(std::string_view zoneId, std::string_view localeId) {
    const auto id = icu::UnicodeString::fromUTF8(
        icu::StringPiece(zoneId.data(), static_cast<int32_t>(zoneId.size())));
    std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(id));
    icu::UnicodeString resolved;
    if (!zone || zone->getID(resolved) == icu::UnicodeString(UCAL_UNKNOWN_ZONE_ID)) {
        return std::nullopt;
    }
    const std::string localeText(localeId);
    icu::Locale locale(localeText.c_str());
    if (locale.isBogus()) {
        return std::nullopt;
    }
    return Calendar(std::move(zone), std::move(locale));
}

Calendar::Calendar(const Calendar& other)
    : zone_(other.zone_->clone())
    , locale_(other.locale_) {}

Calendar& Calendar::operator=(const Calendar& other) {
    if (this != &other) {
        zone_.reset(other.zone_->clone());
        locale_ = other.locale_;
    }
    return *this;
}

Calendar::Calendar(Calendar&&) noexcept = default;
Calendar& Calendar::operator=(Calendar&&) noexcept = default;
Calendar::~Calendar() = default;

std::string Calendar::zoneId() const {
    icu::UnicodeString id;
    std::string text;
    zone_->getID(id).toUTF8String(text);
    return text;
}

LocalTime Calendar::local(Timestamp time) const {
    const std::int64_t utc = time.time_since_epoch().count();
    int32_t rawOffset = 0;
    int32_t dstOffset = 0;
    UErrorCode status = U_ZERO_ERROR;
    zone_->getOffset(static_cast<UDate>(utc), false, rawOffset, dstOffset, status);
    if (U_FAILURE(status)) {
        rawOffset = dstOffset = 0;
    }
    const std::int64_t wall = utc + rawOffset + dstOffset;
    const std::int64_t days = floorDiv(wall, millisecondsPerDay);
    const std::int64_t secondOfDay = (wall - days * millisecondsPerDay) / 1000; // [0, 86399]
    return LocalTime{CivilDay::fromSerial(days), static_cast<int>(secondOfDay / 3600),
                     static_cast<int>(secondOfDay / 60 % 60), static_cast<int>(secondOfDay % 60)};
}

Timestamp Calendar::at(CivilDay day, int hour, int minute) const {
    const std::int64_t wall = day.serial() * millisecondsPerDay +
                              (static_cast<std::int64_t>(hour) * 60 + minute) * 60'000;
    int32_t rawOffset = 0;
    int32_t dstOffset = 0;
    UErrorCode status = U_ZERO_ERROR;
    if (const auto* zone = dynamic_cast<const icu::BasicTimeZone*>(zone_.get())) {
        zone->getOffsetFromLocal(static_cast<UDate>(wall), UCAL_TZ_LOCAL_FORMER,
                                 UCAL_TZ_LOCAL_FORMER, rawOffset, dstOffset, status);
    } else {
        zone_->getOffset(static_cast<UDate>(wall), true, rawOffset, dstOffset, status);
    }
    if (U_FAILURE(status)) {
        rawOffset = dstOffset = 0;
    }
    return Timestamp(std::chrono::milliseconds(wall - rawOffset - dstOffset));
}

} // namespace kelo
