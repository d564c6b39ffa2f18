#pragma once

#include <filesystem>

namespace kelo {

// Keeps a second Kelo process from writing the same data file: both would rewrite the whole file
// after every change and silently drop each other's tasks. The lock is an flock(2) on
// "<data file>.lock" beside the file, so the kernel releases it when the process ends however it
// ends; a crash never leaves a stale lock. A data file that is a symbolic link is locked at its
// target. The lock file itself is left in place: removing it
// would let two processes lock two different files under the same name.
class DataFileLock {
public:
    enum class Status {
        locked,      // this object holds the lock until it is destroyed
        heldByOther, // another open lock (usually another process) holds it
        unavailable, // the lock file could not be created or locked; see error()
    };

    // Tries once, without waiting. A missing folder is created, as the store would on its first
    // save, so that the lock also guards a data file that does not exist yet.
    explicit DataFileLock(const std::filesystem::path& dataFile);
    ~DataFileLock();

    DataFileLock(const DataFileLock&) = delete;
    DataFileLock& operator=(const DataFileLock&) = delete;

    [[nodiscard]] Status status() const { return status_; }
    [[nodiscard]] bool isLocked() const { return status_ == Status::locked; }
    // The errno of the failed step when unavailable, else 0.
    [[nodiscard]] int error() const { return error_; }
    [[nodiscard]] const std::filesystem::path& lockFile() const { return lockFile_; }

    [[nodiscard]] static std::filesystem::path lockFileFor(const std::filesystem::path& dataFile);

private:
    std::filesystem::path lockFile_;
    Status status_ = Status::unavailable;
    int error_ = 0;
    int fd_ = -1;
};

} // namespace kelo
