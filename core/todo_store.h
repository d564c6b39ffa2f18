#pragma once

#include "data_file.h"
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
//
// Other programs may replace or edit the data file while the store holds it (a sync tool, an
// editor, a restore from a backup). Before every mutation the store looks whether the file is
// still the one it last read or wrote; if not, it reads the new one and applies the mutation to
// that, so that neither side's tasks are lost. Only a regular file is ever replaced.
class TodoStore {
public:
    struct Options {
        // Reads the time for new tasks and for naming a moved-aside unreadable file.
        std::function<Timestamp()> clock = currentTime;
        LogSink log = systemLog;
    };

    // Loads the file at once: a missing file gives an empty list, an unreadable one is moved aside.
    explicit TodoStore(std::filesystem::path path);
    TodoStore(std::filesystem::path path, Options options);

    TodoStore(const TodoStore&) = delete;
    TodoStore& operator=(const TodoStore&) = delete;

    // $XDG_DATA_HOME/Kelo/todos.json, or ~/.local/share/Kelo/todos.json.
    [[nodiscard]] static std::filesystem::path defaultPath();

    [[nodiscard]] const std::vector<Todo>& todos() const { return todos_; }
    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    // The first task with that id; valid until the next change of the list.
    [[nodiscard]] const Todo* find(const Uuid& id) const;

    // Called once after every change of the list, a reload included.
    void onChange(std::function<void()> observer) { observer_ = std::move(observer); }

    // None for a blank title. A minute without a day is dropped.
    std::optional<Todo> add(std::string_view title, std::optional<DayKey> day = std::nullopt,
                            std::optional<std::int64_t> minute = std::nullopt);
    // Writes and notifies only when the mutation changed the task.
    void update(const Uuid& id, const std::function<void(Todo&)>& mutation);
    void toggle(const Uuid& id, Timestamp now);
    std::optional<Todo> remove(const Uuid& id);
    // Appends the task at the end, as it was.
    void restore(const Todo& todo);

    // Reads the data file again if another program changed it since the store last read or wrote
    // it. An unreadable replacement is moved aside and the list in memory is written back.
    void reloadIfChanged();

    // Copies the bytes read at start-up to the backup file beside the data file. Kept apart from
    // loading so that its flush does not delay the first drawing; the second call does nothing.
    void writeBackup();

    // Why the last save failed; none once the list in memory is on disk.
    [[nodiscard]] const std::optional<std::string>& saveError() const { return saveError_; }

private:
    // Looks at the data file and takes in what another program left there: a readable file
    // becomes the list; an unreadable one is moved aside (true); a folder or a device is left in
    // place, and saving is refused while it stands there.
    bool synchronize();
    bool adopt(const std::filesystem::path& target);
    bool setAside(const std::filesystem::path& entry, const std::string& reason);
    // Applies the change to the list as it is on disk; notifies and saves if it changed anything.
    void commit(const std::function<bool(std::vector<Todo>&)>& change);
    void save();

    std::vector<Todo> todos_;
    std::filesystem::path path_;
    Options options_;
    std::function<void()> observer_;
    // What the store last read, wrote or refused at the data file's place.
    std::optional<FileIdentity> seen_;
    // Why the data file's place cannot be written, while the same thing stands there.
    std::optional<std::string> blocked_;
    std::optional<std::string> pendingBackup_;
    std::filesystem::path backupFile_;
    std::optional<std::string> saveError_;
    bool startedUp_ = false;
};

} // namespace kelo
