#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kelo {

// How "/" is written: the data file escapes it as "\/", as the apps that share the file do;
// kelo-core's answers write it as most JSON writers do.
enum class Slash { escaped, plain };

// Appends `text` as a quoted JSON string: quotes, backslashes and control characters escaped
// (control characters without a short form as \u00xx), everything else as it is. Text that is
// not UTF-8 gets U+FFFD in place of each ill-formed sequence, so that what is written reads back.
void appendJsonString(std::string& out, std::string_view text, Slash slash);

// The text of a line that holds one JSON string with nothing escaped in it (as nearly every
// quick-add line does), read without building a document; nothing for any other line, which
// needs a full JSON reader.
[[nodiscard]] std::optional<std::string_view> plainJsonString(std::string_view line);

} // namespace kelo
