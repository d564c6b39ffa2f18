#include "todo_store.h"

#include "data_file.h"
#include "todo_json.h"

#include <cerrno>
#include <cstdlib>
#include <pwd.h>
#include <sys/stat.h>
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

fs::path backupPath(const fs::path& url) {
    return url.parent_path() / (url.stem().string() + ".backup.json");
}

} // namespace

TodoStore::TodoStore(fs::path url)
    : TodoStore(std::move(url), Options{}) {}

TodoStore::TodoStore(fs::path url, Options options)
    : url_(std::move(url))
    , options_(std::move(options)) {
    load();
}

fs::path TodoStore::defaultURL() {
    // Relative values are invalid by the XDG rules and are ignored.
    const char* dataHome = std::getenv("XDG_DATA_HOME");
    const fs::path base = dataHome != nullptr && fs::path(dataHome).is_absolute()
                              ? fs::path(dataHome)
                              : homeFolder() / ".local" / "share";
    return base / "Kelo" / "todos.json";
}

void TodoStore::load() {
    removeLeftoverTemporaries(url_);
    removeLeftoverTemporaries(backupPath(url_));
    struct stat info {};
    if (::lstat(url_.c_str(), &info) != 0 && (errno == ENOENT || errno == ENOTDIR)) {
        return;
    }
    // A folder in the data file's place (KELO_DATA naming a folder) is no unreadable file: moving
    // it aside would move someone's folder.
    if (::stat(url_.c_str(), &info) == 0 && S_ISDIR(info.st_mode)) {
        options_.log("Kelo: could not read " + url_.string() +
                     " (it is a folder). Left it in place.");
        return;
    }
    auto bytes = readDataFile(url_);
    std::string error;
    if (auto* read = std::get_if<std::string>(&bytes)) {
        auto decoded = decodeTodos(*read);
        if (auto* todos = std::get_if<std::vector<Todo>>(&decoded)) {
            todos_ = std::move(*todos);
            // The backup is a convenience; failing to refresh it must not stop the start.
            (void)writeFileAtomically(backupPath(url_), *read);
            return;
        }
        error = std::get<std::string>(decoded);
    } else {
        error = std::get<FileError>(bytes).description;
    }

    const auto seconds =
        std::chrono::duration_cast<std::chrono::seconds>(options_.clock().time_since_epoch());
    const std::string name = "todos.corrupt-" + std::to_string(seconds.count()) + ".json";
    std::error_code ignored;
    fs::rename(url_, url_.parent_path() / name, ignored);
    options_.log("Kelo: could not read " + url_.string() + " (" + error + "). Moved it to " + name +
                 ".");
}

void TodoStore::save() {
    if (auto error = writeFileAtomically(url_, encodeTodos(todos_))) {
        options_.log("Kelo: could not save " + url_.string() + ": " + error->description);
    }
}

void TodoStore::changed() {
    if (observer_) {
        observer_();
    }
    save();
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
    todos_.push_back(todo);
    changed();
    return todo;
}

void TodoStore::update(const Uuid& id, const std::function<void(Todo&)>& mutation) {
    const auto found =
        std::find_if(todos_.begin(), todos_.end(), [&](const Todo& todo) { return todo.id == id; });
    if (found == todos_.end()) {
        return;
    }
    mutation(*found);
    changed();
}

void TodoStore::toggle(const Uuid& id, Timestamp now) {
    update(id, [now](Todo& todo) {
        todo.doneAt = todo.isDone() ? std::nullopt : std::optional<Timestamp>(now);
    });
}

std::optional<Todo> TodoStore::remove(const Uuid& id) {
    const auto found =
        std::find_if(todos_.begin(), todos_.end(), [&](const Todo& todo) { return todo.id == id; });
    if (found == todos_.end()) {
        return std::nullopt;
    }
    Todo removed = std::move(*found);
    todos_.erase(found);
    changed();
    return removed;
}

void TodoStore::restore(const Todo& todo) {
    todos_.push_back(todo);
    changed();
}

} // namespace kelo
