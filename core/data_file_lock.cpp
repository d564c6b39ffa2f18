#include "data_file_lock.h"

#include "data_file.h"
#include "data_file_place.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace kelo {

std::filesystem::path DataFileLock::lockFileFor(const std::filesystem::path& dataFile) {
    // On the file itself, so that a writer through a link and one on its target exclude each other.
    std::filesystem::path lock = resolvedDataFile(dataFile);
    lock += ".lock";
    return lock;
}

DataFileLock::DataFileLock(const std::filesystem::path& dataFile)
    : lockFile_(lockFileFor(dataFile)) {
    if (const auto failure = createPrivateFolders(lockFile_.parent_path())) {
        error_ = failure->code;
        return;
    }
    fd_ = ::open(lockFile_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (fd_ < 0) {
        error_ = errno;
        return;
    }
    // The lock belongs to this open file description: a second DataFileLock in the same process
    // opens its own and is refused like another process would be.
    int result = 0;
    do {
        result = ::flock(fd_, LOCK_EX | LOCK_NB);
    } while (result != 0 && errno == EINTR);
    if (result == 0) {
        status_ = Status::locked;
        return;
    }
    const int failure = errno;
    ::close(fd_);
    fd_ = -1;
    if (failure == EWOULDBLOCK) {
        status_ = Status::heldByOther;
    } else {
        error_ = failure;
    }
}

DataFileLock::~DataFileLock() {
    // Closing the only descriptor drops the flock.
    if (fd_ >= 0) {
        ::close(fd_);
    }
}

} // namespace kelo
