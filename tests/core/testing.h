#pragma once

#include "day.h"
#include "todo_json.h"
#include "todo_store.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <stdexcept>

// Helpers of the core tests. A malformed argument is a mistake in the test and throws.
namespace kelo::testing {

// A fresh folder under the temporary folder, removed with everything in it at the end.
struct ScratchFolder {
    ScratchFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "kelo-test-XXXXXX").string();
        path = ::mkdtemp(name.data()) ? name : throw std::runtime_error("no scratch folder");
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    std::filesystem::path operator/(std::string_view name) const { return path / name; }
    std::filesystem::path path;
};

inline std::string readFile(const std::filesystem::path& path) {
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
}
inline void writeFile(const std::filesystem::path& path, std::string_view bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

inline Calendar calendar(std::string_view zone, std::string_view locale = "en_US") {
    return Calendar::make(zone, locale).value();
}
// The moment shown on the calendar's wall clock, e.g. wallTime(cal, "2025-03-06 10:00").
inline Timestamp wallTime(const Calendar& calendar, const std::string& dayAndTime) {
    return calendar.at(Day::civil(dayAndTime.substr(0, 10)).value(),
                       std::stoi(dayAndTime.substr(11, 2)), std::stoi(dayAndTime.substr(14, 2)));
}
// "2025-03-06T09:15:02Z" and the like.
inline Timestamp utc(std::string_view text) {
    return parseInternetDateTime(text).value();
}

// A task with a random id, created `age` minutes before 2025-03-01 12:00 UTC.
inline Todo todo(std::string title, std::optional<DayKey> day = {},
                 std::optional<std::int64_t> minute = {}, std::optional<Timestamp> doneAt = {},
                 int age = 0) {
    const Timestamp created = utc("2025-03-01T12:00:00Z") - std::chrono::minutes(age);
    return Todo{{std::move(day), minute}, Uuid::random(), std::move(title), doneAt, created};
}
inline std::vector<std::string> titles(const std::vector<Todo>& todos) {
    std::vector<std::string> result(todos.size());
    std::ranges::transform(todos, result.begin(), &Todo::title);
    return result;
}
// The tasks of a readable data file.
inline std::vector<Todo> onDisk(const std::filesystem::path& path) {
    return std::get<std::vector<Todo>>(readTodosFile(path));
}

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

    std::unique_ptr<TodoStore> open(const std::filesystem::path& path) {
        auto store = std::make_unique<TodoStore>(
            path, TodoStore::Options{[this] { return now; },
                                     [this](std::string_view line) { log.emplace_back(line); }});
        store->onChange([this] { ++notifications; });
        return store;
    }
    std::unique_ptr<TodoStore> open() { return open(file); }
};

} // namespace kelo::testing
