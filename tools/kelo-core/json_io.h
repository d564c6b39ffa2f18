#pragma once

#include "day.h"
#include "schedule.h"
#include "todo.h"

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace kelo::cli {

// Members come out in the order they are set, so every answer reads in the documented order.
using Json = nlohmann::ordered_json;

// Why one input line could not be answered; it is written as {"error": message}.
struct LineError {
    std::string message;
};

// An answer already written as compact JSON, for the commands that answer many lines.
struct JsonText {
    std::string text;
};

using Answer = std::variant<Json, JsonText, LineError>;

// Answers every line of the input with exactly one compact JSON line, flushed whenever no more
// input is waiting, so that a co-process can wait for each answer. Blank lines and lines that are
// not JSON are answered with an error line, and the next line is read as usual. Stops after an
// answer when `goOn` says so.
void answerLines(std::istream& in, std::ostream& out,
                 const std::function<Answer(const Json& input)>& answer,
                 const std::function<bool()>& goOn = {});

// The compact text of a value; text that is not UTF-8 is replaced, never thrown about.
[[nodiscard]] std::string compact(const Json& value);

// Appends the compact text of `text`, or of null when it is absent, as `compact` writes it.
void appendCompact(std::string& out, const std::optional<std::string>& text);
void appendCompact(std::string& out, const std::optional<std::int64_t>& number);

// The day and minute of a {"day": ..., "minute": ...} object. A missing member and null both
// mean absent; a minute must be a whole number of the day, 0 to 1439.
[[nodiscard]] std::variant<Schedule, LineError> readSchedule(const Json& input);

[[nodiscard]] Json orNull(const std::optional<std::string>& text);
[[nodiscard]] Json orNull(const std::optional<std::int64_t>& number);

// A task with the members and values the data file gives it.
[[nodiscard]] Json taskObject(const Todo& todo);

// The ids of the tasks, in list order.
[[nodiscard]] Json ids(const std::vector<Todo>& todos);

} // namespace kelo::cli
