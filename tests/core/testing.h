#pragma once

#include "calendar.h"
#include "system_log.h"
#include "timestamp.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace kelo::testing {

// A fresh folder under the system's temporary folder, removed with everything in it at the end.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    [[nodiscard]] std::filesystem::path operator/(std::string_view name) const {
        return path_ / name;
    }

private:
    std::filesystem::path path_;
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

// A calendar for the zone and locale, failing the test when ICU does not know them.
[[nodiscard]] Calendar calendar(std::string_view zone, std::string_view locale = "en_US");

// The moment shown on the calendar's wall clock, e.g. at(cal, "2025-03-06 10:00").
[[nodiscard]] Timestamp wallTime(const Calendar& calendar, std::string_view dayAndTime);

// "2025-03-06T09:15:02Z" and the like.
[[nodiscard]] Timestamp utc(std::string_view internetDateTime);

} // namespace kelo::testing
