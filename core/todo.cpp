#include "todo.h"

#include <limits>

namespace kelo {

bool Todo::order(const Todo& a, const Todo& b) {
    if (a.isDone() != b.isDone()) {
        return !a.isDone();
    }
    // An absent day counts as the empty text, before every key.
    const std::string_view dayA = a.day ? std::string_view(*a.day) : std::string_view();
    const std::string_view dayB = b.day ? std::string_view(*b.day) : std::string_view();
    if (dayA != dayB) {
        return dayA < dayB;
    }
    constexpr auto untimed = std::numeric_limits<std::int64_t>::max();
    const std::int64_t minuteA = a.minute.value_or(untimed);
    const std::int64_t minuteB = b.minute.value_or(untimed);
    if (minuteA != minuteB) {
        return minuteA < minuteB;
    }
    return a.created < b.created;
}

std::optional<Bucket> bucketFromRaw(std::int64_t raw) {
    if (raw < 0 || raw > 2) {
        return std::nullopt;
    }
    return static_cast<Bucket>(raw);
}

Bucket bucketOf(const std::optional<DayKey>& day, const DayKey& today) {
    if (!day) {
        return Bucket::backlog;
    }
    return *day > today ? Bucket::upcoming : Bucket::today;
}

} // namespace kelo
