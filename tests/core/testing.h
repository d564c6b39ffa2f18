#pragma once

#include "calendar.h"
#include "timestamp.h"
#include "todo.h"
#include "todo_store.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
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
// The tasks of a readable data file.
[[nodiscard]] std::vector<Todo> onDisk(const std::filesystem::path& path);

// Stores on "todos.json" in a scratch folder, with their clock fixed at `now`, their log lines
// kept instead of written to the system log, and their change notifications counted.
struct StoreTest : ::testing::Test {
    const Timestamp now = utc("2025-03-06T09:15:02Z");
    ScratchFolder folder;
    std::vector<std::string> log;
    std::filesystem::path file = folder / "todos.json";
    // What an unreadable file at `now` is renamed to first.
    std::filesystem::path aside = folder / "todos.corrupt-1741252502.json";
    int notifications = 0;

    std::unique_ptr<TodoStore> open(const std::filesystem::path& path);
    std::unique_ptr<TodoStore> open() { return open(file); }
};

} // namespace kelo::testing
