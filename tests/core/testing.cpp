#include "testing.h"

#include "day.h"
#include "todo_json.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace kelo::testing {

ScratchFolder::ScratchFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "kelo-test-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("cannot create a scratch folder");
    }
    path = pattern;
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::permissions(path, std::filesystem::perms::owner_all,
                                 std::filesystem::perm_options::add, ignored);
    std::filesystem::remove_all(path, ignored);
}

std::string readFile(const std::filesystem::path& path) {
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
}

void writeFile(const std::filesystem::path& path, std::string_view bytes) {
    std::ofstream(path, std::ios::binary).write(bytes.data(), std::ssize(bytes));
}

Calendar calendar(std::string_view zone, std::string_view locale) {
    return Calendar::make(zone, locale).value();
}

Timestamp wallTime(const Calendar& calendar, std::string_view dayAndTime) {
    return calendar.at(Day::civil(dayAndTime.substr(0, 10)).value(),
                       std::stoi(std::string(dayAndTime.substr(11, 2))),
                       std::stoi(std::string(dayAndTime.substr(14, 2))));
}

Timestamp utc(std::string_view internetDateTime) {
    return parseInternetDateTime(internetDateTime).value();
}

Todo todo(std::string title, std::optional<DayKey> day, std::optional<std::int64_t> minute,
          std::optional<Timestamp> doneAt, int age) {
    const Timestamp created = utc("2025-03-01T12:00:00Z") - std::chrono::minutes(age);
    return Todo{{std::move(day), minute}, Uuid::random(), std::move(title), doneAt, created};
}

std::vector<std::string> titles(const std::vector<Todo>& todos) {
    std::vector<std::string> result(todos.size());
    std::ranges::transform(todos, result.begin(), &Todo::title);
    return result;
}

std::vector<Todo> onDisk(const std::filesystem::path& path) {
    return std::get<std::vector<Todo>>(readTodosFile(path));
}

std::unique_ptr<TodoStore> StoreTest::open(const std::filesystem::path& path) {
    auto store = std::make_unique<TodoStore>(
        path, TodoStore::Options{[this] { return now; },
                                 [this](std::string_view line) { log.emplace_back(line); }});
    store->onChange([this] { ++notifications; });
    return store;
}

} // namespace kelo::testing
