#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace kelo {

// An absolute point in time, without a zone of its own. Milliseconds are kept in memory; the data
// file stores whole seconds.
using Timestamp = std::chrono::sys_time<std::chrono::milliseconds>;

[[nodiscard]] Timestamp currentTime();

// "2025-03-06T09:15:02Z": UTC, whole seconds (the fraction is truncated).
[[nodiscard]] std::string internetDateTime(Timestamp time);

// Reads an internet date-time with "Z" or a numeric offset ("+01:00") and no fraction.
[[nodiscard]] std::optional<Timestamp> parseInternetDateTime(std::string_view text);

} // namespace kelo
