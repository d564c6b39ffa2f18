#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace kelo {

struct FileError {
    std::string description;
    int code = 0; // the errno behind it, when there is one
};

// Tells one version of a file from another without reading it: a replacement by rename has
// another inode, an edit in place another size or modification time.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t size = 0;
    std::int64_t modifiedNanoseconds = 0;

    bool operator==(const FileIdentity&) const = default;
};

// The identity of the entry itself (a link is not followed); none when nothing is there.
[[nodiscard]] std::optional<FileIdentity> identityOf(const std::filesystem::path& path);

// Spare capacity after the bytes read: the JSON reader loads whole blocks and may look past the
// end of the text.
inline constexpr std::size_t readerPadding = 64;

struct FileContent {
    std::string bytes; // with readerPadding spare, unless the file grew while it was read
    FileIdentity identity;
};

// The whole file, or why it cannot be had. Only a regular file is read: it is opened without
// blocking, so a FIFO or a device in its place is refused rather than waited on. Files past the
// data file's size limit are refused before anything is read.
[[nodiscard]] std::variant<FileContent, FileError> readDataFile(const std::filesystem::path& path);

// Replaces the file with the bytes so that a crash at any moment leaves either the old or the new
// content: a temporary file from mkstemp beside the target (mode 0600), every byte written,
// fsync, rename over the target, fsync of the folder. Missing folders are created with mode 0700.
// On failure the previous file is untouched and the temporary file is gone.
[[nodiscard]] std::variant<FileIdentity, FileError>
writeFileAtomically(const std::filesystem::path& path, std::string_view bytes);

// Creates the folder and every missing parent with mode 0700: only the user reads their tasks.
[[nodiscard]] std::optional<FileError> createPrivateFolders(const std::filesystem::path& folder);

// Removes the temporary files that an interrupted write of `path` left behind.
void removeLeftoverTemporaries(const std::filesystem::path& path);

} // namespace kelo
