#include "todo_store.h"

#include <algorithm>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace kelo {

namespace {

namespace fs = std::filesystem;

// Blanks and line breaks, as typed into a title field.
bool isTrimmed(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
}

std::string_view trimmedTitle(std::string_view title) {
    // Unicode white space beyond ASCII (no-break and ideographic spaces) is trimmed too.
    static constexpr std::string_view wideSpaces[] = {
        "\xC2\xA0",     "\xC2\x85",     "\xE1\x9A\x80", "\xE2\x80\x80", "\xE2\x80\x81",
        "\xE2\x80\x82", "\xE2\x80\x83", "\xE2\x80\x84", "\xE2\x80\x85", "\xE2\x80\x86",
        "\xE2\x80\x87", "\xE2\x80\x88", "\xE2\x80\x89", "\xE2\x80\x8A", "\xE2\x80\xA8",
        "\xE2\x80\xA9", "\xE2\x80\xAF", "\xE2\x81\x9F", "\xE3\x80\x80"};
    const auto trimFront = [&] {
        if (!title.empty() && isTrimmed(title.front())) {
            title.remove_prefix(1);
            return true;
        }
        for (const auto space : wideSpaces) {
            if (title.starts_with(space)) {
                title.remove_prefix(space.size());
                return true;
            }
        }
        return false;
    };
    const auto trimBack = [&] {
        if (!title.empty() && isTrimmed(title.back())) {
            title.remove_suffix(1);
            return true;
        }
        for (const auto space : wideSpaces) {
            if (title.ends_with(space)) {
                title.remove_suffix(space.size());
                return true;
            }
        }
        return false;
    };
    while (trimFront()) {
    }
    while (trimBack()) {
    }
    return title;
}

fs::path homeFolder() {
    if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0') {
        return home;
    }
    if (const passwd* user = ::getpwuid(::getuid()); user != nullptr && user->pw_dir != nullptr) {
        return user->pw_dir;
    }
    return fs::current_path();
}

// The one way a task is found by its id: the first with that id, in stored order.
template <typename List> auto firstWithId(List& todos, const Uuid& id) {
    return std::find_if(todos.begin(), todos.end(),
                        [&](const Todo& todo) { return todo.id == id; });
}

} // namespace

TodoStore::TodoStore(fs::path path)
    : TodoStore(std::move(path), Options{}) {}

fs::path TodoStore::defaultPath() {
    // Relative values are invalid by the XDG rules and are ignored.
    const char* dataHome = std::getenv("XDG_DATA_HOME");
    const fs::path base = dataHome != nullptr && fs::path(dataHome).is_absolute()
                              ? fs::path(dataHome)
                              : homeFolder() / ".local" / "share";
    return base / "Kelo" / "todos.json";
}

const Todo* TodoStore::find(const Uuid& id) const {
    const auto found = firstWithId(todos_, id);
    return found == todos_.end() ? nullptr : &*found;
}

std::optional<Todo> TodoStore::add(std::string_view title, std::optional<DayKey> day,
                                   std::optional<std::int64_t> minute) {
    const std::string_view trimmed = trimmedTitle(title);
    if (trimmed.empty()) {
        return std::nullopt;
    }
    Todo todo;
    todo.id = Uuid::random();
    todo.title = std::string(trimmed);
    todo.minute = day ? minute : std::nullopt;
    todo.day = std::move(day);
    todo.created = options_.clock();
    commit([&](std::vector<Todo>& todos) {
        todos.push_back(todo);
        return true;
    });
    return todo;
}

void TodoStore::update(const Uuid& id, const std::function<void(Todo&)>& mutation) {
    commit([&](std::vector<Todo>& todos) {
        const auto found = firstWithId(todos, id);
        if (found == todos.end()) {
            return false;
        }
        Todo changed = *found;
        mutation(changed);
        if (changed == *found) {
            return false;
        }
        *found = std::move(changed);
        return true;
    });
}

void TodoStore::toggle(const Uuid& id, Timestamp now) {
    update(id, [now](Todo& todo) {
        todo.doneAt = todo.isDone() ? std::nullopt : std::optional<Timestamp>(now);
    });
}

std::optional<Todo> TodoStore::remove(const Uuid& id) {
    std::optional<Todo> removed;
    commit([&](std::vector<Todo>& todos) {
        const auto found = firstWithId(todos, id);
        if (found == todos.end()) {
            return false;
        }
        removed = std::move(*found);
        todos.erase(found);
        return true;
    });
    return removed;
}

void TodoStore::restore(const Todo& todo) {
    commit([&](std::vector<Todo>& todos) {
        todos.push_back(todo);
        return true;
    });
}

} // namespace kelo
