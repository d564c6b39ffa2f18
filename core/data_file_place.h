#pragma once

#include "data_file.h"

#include <filesystem>
#include <string_view>
#include <variant>

namespace kelo {

// The file a data file path stands for: symbolic links are followed to their final target, so
// that saving replaces the target in its own folder and leaves the link in place. A path that is
// no link, a dangling link and a loop of links come back as far as they resolve.
[[nodiscard]] std::filesystem::path resolvedDataFile(const std::filesystem::path& path);

// Renames `entry` to `stem` + ".json" in `folder`, or to `stem` + "-2.json", "-3.json"... when that
// name is taken: an earlier moved-aside file is never replaced. The new name, or why the entry
// stays where it is.
[[nodiscard]] std::variant<std::string, FileError> moveAside(const std::filesystem::path& entry,
                                                             const std::filesystem::path& folder,
                                                             std::string_view stem);

} // namespace kelo
