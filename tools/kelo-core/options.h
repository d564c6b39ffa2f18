#pragma once

#include "calendar.h"
#include "timestamp.h"
#include "todo.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace kelo::cli {

enum class Command { parse, when, phrase, format, add, lists };

// A command ready to run, with the clock reading and the calendar it works with.
struct Invocation {
    Command command = Command::parse;
    std::filesystem::path file; // the data file of add and lists
    Timestamp now;
    Calendar calendar;
    std::optional<Bucket> bucket;
};

struct ShowHelp {};
struct ShowVersion {};
struct UsageError {
    std::string message;
};

using CommandLine = std::variant<Invocation, ShowHelp, ShowVersion, UsageError>;

// The arguments after the program name. Options may stand before or after the command, as
// "--name value" or "--name=value"; a later one wins over an earlier one.
[[nodiscard]] CommandLine readCommandLine(const std::vector<std::string_view>& arguments);

[[nodiscard]] std::string helpText();

} // namespace kelo::cli
