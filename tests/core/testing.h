#pragma once

#include "calendar.h"
#include "system_log.h"
#include "timestamp.h"
#include "todo.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

// Helpers of the core tests. A malformed argument is a mistake in the test and throws.
namespace kelo::testing {

// A fresh folder under the temporary folder, removed with everything in it at the end.
struct ScratchFolder {
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    [[nodiscard]] std::filesystem::path operator/(std::string_view name) const {
        return path / name;
    }

    std::filesystem::path path;
};

// Keeps every log line instead of writing it to the system log.
struct CapturedLog {
    std::vector<std::string> lines;
    [[nodiscard]] LogSink sink() {
        return [this](std::string_view line) { lines.emplace_back(line); };
    }
};

[[nodiscard]] std::string readFile(const std::filesystem::path& path);
void writeFile(const std::filesystem::path& path, std::string_view bytes);

[[nodiscard]] Calendar calendar(std::string_view zone, std::string_view locale = "en_US");
// The moment shown on the calendar's wall clock, e.g. wallTime(cal, "2025-03-06 10:00").
[[nodiscard]] Timestamp wallTime(const Calendar& calendar, std::string_view dayAndTime);
// "2025-03-06T09:15:02Z" and the like.
[[nodiscard]] Timestamp utc(std::string_view internetDateTime);

// A task with a random id, created `age` minutes before 2025-03-01 12:00 UTC.
[[nodiscard]] Todo todo(std::string title, std::optional<DayKey> day = {},
                        std::optional<std::int64_t> minute = {},
                        std::optional<Timestamp> doneAt = {}, int age = 0);
[[nodiscard]] std::vector<std::string> titles(const std::vector<Todo>& todos);

} // namespace kelo::testing
