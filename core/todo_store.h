#pragma once

#include "system_log.h"
#include "todo.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kelo {

// The single owner of the user's tasks. Every mutation is written to the data file before it
// returns; a failed write is logged and the list in memory is kept, so the next successful save
// writes it all. Operations by id act on the first task with that id.
class TodoStore {
public:
    struct Options {
        // Reads the time for new tasks and for naming a moved-aside unreadable file.
        std::function<Timestamp()> clock = currentTime;
        LogSink log = systemLog;
    };

    // Loads the file at once: a missing file gives an empty list, an unreadable one is moved aside.
    explicit TodoStore(std::filesystem::path url);
    TodoStore(std::filesystem::path url, Options options);

    TodoStore(const TodoStore&) = delete;
    TodoStore& operator=(const TodoStore&) = delete;

    // $XDG_DATA_HOME/Kelo/todos.json, or ~/.local/share/Kelo/todos.json.
    [[nodiscard]] static std::filesystem::path defaultURL();

    [[nodiscard]] const std::vector<Todo>& todos() const { return todos_; }
    [[nodiscard]] const std::filesystem::path& url() const { return url_; }

    // Called once after every change of the list.
    void onChange(std::function<void()> observer) { observer_ = std::move(observer); }

    // None for a blank title. A minute without a day is dropped.
    std::optional<Todo> add(std::string_view title, std::optional<DayKey> day = std::nullopt,
                            std::optional<std::int64_t> minute = std::nullopt);
    void update(const Uuid& id, const std::function<void(Todo&)>& mutation);
    void toggle(const Uuid& id, Timestamp now);
    std::optional<Todo> remove(const Uuid& id);
    // Appends the task at the end, as it was.
    void restore(const Todo& todo);

private:
    void load();
    void save();
    void changed();

    std::vector<Todo> todos_;
    std::filesystem::path url_;
    Options options_;
    std::function<void()> observer_;
};

} // namespace kelo
