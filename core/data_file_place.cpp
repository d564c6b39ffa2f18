#include "data_file_place.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kelo {

namespace {

namespace fs = std::filesystem;

// As many links as the kernel follows before it calls the chain a loop.
constexpr int maximumLinks = 40;

// Gives the entry its new name only if nothing has that name. Where the file system cannot
// rename without replacing, a hard link does the same, and the old name is removed after it.
int renameWithoutReplacing(const fs::path& from, const fs::path& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return 0;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return errno;
    }
    if (::link(from.c_str(), to.c_str()) != 0) {
        return errno;
    }
    ::unlink(from.c_str());
    return 0;
}

} // namespace

fs::path resolvedDataFile(const fs::path& path) {
    fs::path resolved = path;
    for (int hop = 0; hop < maximumLinks; ++hop) {
        std::error_code error;
        const fs::path target = fs::read_symlink(resolved, error);
        if (error) {
            return resolved;
        }
        resolved = target.is_absolute() ? target : resolved.parent_path() / target;
    }
    return resolved;
}

std::variant<std::string, FileError> moveAside(const fs::path& entry, const fs::path& folder,
                                               std::string_view stem) {
    constexpr int attempts = 100;
    int failure = 0;
    for (int number = 1; number <= attempts; ++number) {
        std::string name(stem);
        if (number > 1) {
            name += "-" + std::to_string(number);
        }
        name += ".json";
        failure = renameWithoutReplacing(entry, folder / name);
        if (failure == 0) {
            return name;
        }
        if (failure != EEXIST) {
            break;
        }
    }
    return FileError{std::strerror(failure), failure};
}

} // namespace kelo
