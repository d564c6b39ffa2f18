#include "data_file.h"

#include "todo_json.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kelo {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view temporaryMarker = "XXXXXX";

FileError systemError(std::string_view what, const fs::path& path, int error = errno) {
    return FileError{std::string(std::strerror(error)) + " (" + std::string(what) + " " +
                         path.string() + ")",
                     error};
}

// ".todos.json.XXXXXX": hidden, beside the target, and recognisable as ours at the next start.
std::string temporaryPrefix(const fs::path& path) {
    return "." + path.filename().string() + ".";
}

class FileDescriptor {
public:
    explicit FileDescriptor(int fd)
        : fd_(fd) {}
    ~FileDescriptor() {
        if (fd_ >= 0) {
            ::close(fd_);
        }
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    [[nodiscard]] int get() const { return fd_; }
    // Closes now, reporting the error that close can carry for written data.
    bool close() {
        const int fd = fd_;
        fd_ = -1;
        return ::close(fd) == 0;
    }

private:
    int fd_;
};

std::optional<FileError> writeAll(int fd, std::string_view bytes, const fs::path& path) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(fd, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return systemError("writing", path, written == 0 ? EIO : errno);
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return std::nullopt;
}

FileIdentity identity(const struct stat& info) {
    return FileIdentity{
        static_cast<std::uint64_t>(info.st_dev), static_cast<std::uint64_t>(info.st_ino),
        static_cast<std::int64_t>(info.st_size),
        static_cast<std::int64_t>(info.st_mtim.tv_sec) * 1'000'000'000 + info.st_mtim.tv_nsec};
}

} // namespace

std::optional<FileError> createPrivateFolders(const fs::path& folder) {
    if (folder.empty()) {
        return std::nullopt;
    }
    struct stat info {};
    if (::stat(folder.c_str(), &info) == 0) {
        return S_ISDIR(info.st_mode)
                   ? std::nullopt
                   : std::optional(systemError("creating folder", folder, ENOTDIR));
    }
    if (folder.has_parent_path() && folder.parent_path() != folder) {
        if (auto error = createPrivateFolders(folder.parent_path())) {
            return error;
        }
    }
    if (::mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) {
        return systemError("creating folder", folder);
    }
    return std::nullopt;
}

std::optional<FileIdentity> identityOf(const fs::path& path) {
    struct stat info {};
    if (::lstat(path.c_str(), &info) != 0) {
        return std::nullopt;
    }
    return identity(info);
}

std::variant<FileContent, FileError> readDataFile(const fs::path& path) {
    FileDescriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (file.get() < 0) {
        return systemError("opening", path);
    }
    struct stat info {};
    if (::fstat(file.get(), &info) != 0) {
        return systemError("reading", path);
    }
    if (!S_ISREG(info.st_mode)) {
        return FileError{"it is not a regular file", S_ISDIR(info.st_mode) ? EISDIR : EINVAL};
    }
    if (static_cast<std::uintmax_t>(info.st_size) > maximumDataFileSize) {
        return FileError{"the file is larger than 32 MiB", EFBIG};
    }
    std::string bytes;
    // Sized once, so that a large list is not copied again at every step of its growth.
    bytes.reserve(static_cast<std::size_t>(info.st_size) + readerPadding);
    char buffer[64 * 1024];
    for (;;) {
        const ssize_t count = ::read(file.get(), buffer, sizeof buffer);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return systemError("reading", path);
        }
        if (count == 0) {
            return FileContent{std::move(bytes), identity(info)};
        }
        bytes.append(buffer, static_cast<std::size_t>(count));
        if (bytes.size() > maximumDataFileSize) {
            return FileError{"the file is larger than 32 MiB", EFBIG};
        }
    }
}

std::variant<FileIdentity, FileError> writeFileAtomically(const fs::path& path,
                                                          std::string_view bytes) {
    const fs::path folder = path.parent_path();
    if (auto error = createPrivateFolders(folder)) {
        return std::move(*error);
    }
    std::string temporary =
        (folder / (temporaryPrefix(path) + std::string(temporaryMarker))).string();
    FileDescriptor file(::mkstemp(temporary.data()));
    if (file.get() < 0) {
        return systemError("creating a temporary file in", folder.empty() ? fs::path(".") : folder);
    }
    auto failed = [&](FileError error) {
        ::unlink(temporary.c_str());
        return std::variant<FileIdentity, FileError>(std::move(error));
    };
    if (auto error = writeAll(file.get(), bytes, temporary)) {
        return failed(std::move(*error));
    }
    struct stat written {};
    if (::fsync(file.get()) != 0 || ::fstat(file.get(), &written) != 0) {
        return failed(systemError("flushing", temporary));
    }
    if (!file.close()) {
        return failed(systemError("closing", temporary));
    }
    if (::rename(temporary.c_str(), path.c_str()) != 0) {
        return failed(systemError("replacing", path));
    }
    // The new name is only durable once the folder is flushed. The content is already in place,
    // so a folder that cannot be flushed (some file systems refuse) is not a failed save.
    FileDescriptor directory(
        ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory.get() >= 0) {
        ::fsync(directory.get());
    }
    return identity(written);
}

void removeLeftoverTemporaries(const fs::path& path) {
    const std::string prefix = temporaryPrefix(path);
    const fs::path folder = path.parent_path().empty() ? fs::path(".") : path.parent_path();
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        const std::string name = entry.path().filename().string();
        if (name.size() != prefix.size() + temporaryMarker.size() || !name.starts_with(prefix)) {
            continue;
        }
        const bool ours =
            std::all_of(name.begin() + static_cast<std::ptrdiff_t>(prefix.size()), name.end(),
                        [](char c) { return std::isalnum(static_cast<unsigned char>(c)); });
        if (ours && entry.is_regular_file(error)) {
            fs::remove(entry.path(), error);
        }
    }
}

} // namespace kelo
