#pragma once

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

// The whole file, or why it cannot be had. Files past the data file's size limit are refused
// before anything is read.
[[nodiscard]] std::variant<std::string, FileError> readDataFile(const std::filesystem::path& path);

// Replaces the file with the bytes so that a crash at any moment leaves either the old or the new
// content: a temporary file from mkstemp beside the target (mode 0600), every byte written,
// fsync, rename over the target, fsync of the folder. Missing folders are created with mode 0700.
// On failure the previous file is untouched and the temporary file is gone.
[[nodiscard]] std::optional<FileError> writeFileAtomically(const std::filesystem::path& path,
                                                           std::string_view bytes);

// Creates the folder and every missing parent with mode 0700: only the user reads their tasks.
[[nodiscard]] std::optional<FileError> createPrivateFolders(const std::filesystem::path& folder);

// Removes the temporary files that an interrupted write of `path` left behind.
void removeLeftoverTemporaries(const std::filesystem::path& path);

} // namespace kelo
