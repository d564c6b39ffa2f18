#pragma once

#include "todo.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace kelo {

// The data file is read whole; anything larger is not a to-do list.
inline constexpr std::size_t maximumDataFileSize = 32 * 1024 * 1024;

// The exact bytes of the data file: an array of task objects with members sorted by name,
// two-space indentation, "name" : value, "/" escaped as "\/", absent members left out, times in
// UTC without fractions, upper-case ids and no trailing newline. Text that is not UTF-8 is
// written with U+FFFD in place of each ill-formed sequence, so that the file always reads back.
[[nodiscard]] std::string encodeTodos(const std::vector<Todo>& todos);

// One task object as the data file writes it, at the top level.
[[nodiscard]] std::string encodeTodo(const Todo& todo);

// The list, or a description of the first thing wrong with the text. Any wrong member makes the
// whole text unreadable: there is no partial result. Bytes with readerPadding of spare capacity
// (as readDataFile gives them) are read without a copy.
using DecodeResult = std::variant<std::vector<Todo>, std::string>;
[[nodiscard]] DecodeResult decodeTodos(const std::string& bytes);

// Reads and decodes a data file without touching it (no backup, nothing moved).
[[nodiscard]] DecodeResult readTodosFile(const std::filesystem::path& path);

} // namespace kelo
