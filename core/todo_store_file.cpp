#include "data_file_place.h"
#include "todo_json.h"
#include "todo_store.h"

#include <cerrno>
#include <sys/stat.h>

// The store's side of the data file: loading, noticing what other programs did to it, saving.
namespace kelo {

namespace {

namespace fs = std::filesystem;

// What stands at the data file's place, links followed.
enum class Entry { missing, regularFile, folder, device, other };

Entry entryAt(const fs::path& target) {
    struct stat info {};
    if (::lstat(target.c_str(), &info) != 0) {
        return errno == ENOENT || errno == ENOTDIR ? Entry::missing : Entry::other;
    }
    if (S_ISREG(info.st_mode)) {
        return Entry::regularFile;
    }
    if (S_ISDIR(info.st_mode)) {
        return Entry::folder;
    }
    if (S_ISCHR(info.st_mode) || S_ISBLK(info.st_mode)) {
        return Entry::device;
    }
    // A FIFO, a socket, or a link that is still a link after every hop: a loop.
    return Entry::other;
}

fs::path backupFileOf(const fs::path& target) {
    return target.parent_path() / (target.stem().string() + ".backup.json");
}

} // namespace

TodoStore::TodoStore(fs::path path, Options options)
    : path_(std::move(path))
    , options_(std::move(options)) {
    const fs::path target = resolvedDataFile(path_);
    removeLeftoverTemporaries(target);
    removeLeftoverTemporaries(backupFileOf(target));
    // An unreadable file is only moved aside here: the next change writes the new file.
    static_cast<void>(synchronize());
    startedUp_ = true;
}

bool TodoStore::synchronize() {
    const fs::path target = resolvedDataFile(path_);
    const std::optional<FileIdentity> current = identityOf(target);
    if (current == seen_) {
        return false;
    }
    seen_ = current;
    blocked_.reset();
    // A folder or a device is never moved (KELO_DATA naming a folder would move someone's
    // folder) and never written over; a link to one, like a link to a FIFO, is set aside itself.
    const auto neverReplaced = [&](const char* what) {
        if (target != path_) {
            return setAside(path_, std::string("it links to ") + what);
        }
        options_.log("Kelo: could not read " + path_.string() + " (it is " + what +
                     "). Left it in place.");
        blocked_ = std::string("it is ") + what;
        return false;
    };
    switch (entryAt(target)) {
    case Entry::missing:
        // Deleted or not yet made: the list in memory is written by the next change.
        return false;
    case Entry::folder:
        return neverReplaced("a folder");
    case Entry::device:
        return neverReplaced("a device");
    case Entry::regularFile:
        return adopt(target);
    case Entry::other:
        return setAside(path_, "it is not a regular file");
    }
    return false;
}

bool TodoStore::adopt(const fs::path& target) {
    auto read = readDataFile(target);
    if (auto* error = std::get_if<FileError>(&read)) {
        if (error->code == ENOENT) {
            seen_.reset();
            return false;
        }
        return setAside(target, error->description);
    }
    auto& content = std::get<FileContent>(read);
    auto decoded = decodeTodos(content.bytes);
    if (auto* error = std::get_if<std::string>(&decoded)) {
        return setAside(target, *error);
    }
    seen_ = content.identity;
    auto& todos = std::get<std::vector<Todo>>(decoded);
    if (!startedUp_) {
        backupFile_ = backupFileOf(target);
        pendingBackup_ = std::move(content.bytes);
    }
    if (todos != todos_) {
        todos_ = std::move(todos);
        if (observer_) {
            observer_();
        }
    }
    return false;
}

bool TodoStore::setAside(const fs::path& entry, const std::string& reason) {
    const auto seconds =
        std::chrono::duration_cast<std::chrono::seconds>(options_.clock().time_since_epoch());
    const auto moved =
        moveAside(entry, entry.parent_path(), "todos.corrupt-" + std::to_string(seconds.count()));
    const std::string line = "Kelo: could not read " + path_.string() + " (" + reason + ").";
    if (const auto* error = std::get_if<FileError>(&moved)) {
        // Saving would destroy the only copy of whatever it holds.
        options_.log(line + " Could not move it aside (" + error->description +
                     "), so it is left in place.");
        blocked_ = "an unreadable file that could not be moved aside is in its place";
        return false;
    }
    options_.log(line + " Moved it to " + std::get<std::string>(moved) + ".");
    seen_ = identityOf(resolvedDataFile(path_));
    return true;
}

void TodoStore::reloadIfChanged() {
    // Nothing Kelo holds may be lost with the unreadable file: the list goes back to disk.
    if (synchronize()) {
        save();
    }
}

void TodoStore::commit(const std::function<bool(std::vector<Todo>&)>& change) {
    const bool movedAside = synchronize();
    if (!change(todos_)) {
        if (movedAside) {
            save();
        }
        return;
    }
    if (observer_) {
        observer_();
    }
    save();
}

void TodoStore::save() {
    if (blocked_) {
        saveError_ = *blocked_;
        options_.log("Kelo: could not save " + path_.string() + ": " + *blocked_);
        return;
    }
    auto written = writeFileAtomically(resolvedDataFile(path_), encodeTodos(todos_));
    if (auto* error = std::get_if<FileError>(&written)) {
        saveError_ = error->description;
        options_.log("Kelo: could not save " + path_.string() + ": " + error->description);
        return;
    }
    seen_ = std::get<FileIdentity>(written);
    saveError_.reset();
}

void TodoStore::writeBackup() {
    if (!pendingBackup_) {
        return;
    }
    // The backup is a convenience; failing to refresh it must not disturb anything else.
    static_cast<void>(writeFileAtomically(backupFile_, *pendingBackup_));
    pendingBackup_.reset();
}

} // namespace kelo
