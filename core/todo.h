#pragma once

#include "schedule.h"
#include "timestamp.h"
#include "uuid.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace kelo {

// One task: its schedule (day, and minute only with a day), then the rest. Which list shows it
// follows from its day; nothing else about lists is stored.
struct Todo : Schedule {
    Uuid id;
    std::string title;
    std::optional<Timestamp> doneAt;
    Timestamp created;

    [[nodiscard]] bool isDone() const { return doneAt.has_value(); }

    // The one order of every task list: open before done, then by day (undated first), then by
    // minute (untimed last), then oldest first. A strict weak ordering.
    [[nodiscard]] static bool order(const Todo& a, const Todo& b);

    bool operator==(const Todo&) const = default;
};

// The three lists, in the order of the tabs. Never stored: a task's bucket follows from its day.
enum class Bucket { today = 0, upcoming = 1, backlog = 2 };

inline constexpr std::array<Bucket, 3> allBuckets{Bucket::today, Bucket::upcoming, Bucket::backlog};

[[nodiscard]] std::optional<Bucket> bucketFromRaw(std::int64_t raw);

// Backlog without a day, Upcoming after today, Today for today and every earlier day.
[[nodiscard]] Bucket bucketOf(const std::optional<DayKey>& day, const DayKey& today);

} // namespace kelo
