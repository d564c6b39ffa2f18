#include "json_io.h"

#include "json_string.h"
#include "todo_json.h"

#include <charconv>
#include <istream>
#include <iterator>
#include <ostream>

namespace kelo::cli {

namespace {

bool isBlank(const std::string& line) {
    return line.find_first_not_of(" \t\r\f\v") == std::string::npos;
}

Answer answerLine(const std::string& line, const std::function<Answer(const Json&)>& answer) {
    if (isBlank(line)) {
        return LineError{"empty line"};
    }
    // Most lines are a plain string; reading them without the full reader halves the time of a
    // long list of lines.
    if (const auto text = plainJsonString(line)) {
        return answer(Json(*text));
    }
    const Json input = Json::parse(line, nullptr, false);
    if (input.is_discarded()) {
        return LineError{"not JSON"};
    }
    return answer(input);
}

} // namespace

void answerLines(std::istream& in, std::ostream& out,
                 const std::function<Answer(const Json& input)>& answer,
                 const std::function<bool()>& goOn) {
    std::string line;
    while (std::getline(in, line)) {
        const Answer result = answerLine(line, answer);
        if (const auto* error = std::get_if<LineError>(&result)) {
            out << compact(Json{{"error", error->message}});
        } else if (const auto* text = std::get_if<JsonText>(&result)) {
            out << text->text;
        } else {
            out << compact(std::get<Json>(result));
        }
        out << '\n';
        const bool more = !goOn || goOn();
        // A client that waits for this answer sends nothing more until it has it; a pipe full of
        // lines is answered in large writes.
        if (!more || in.rdbuf()->in_avail() <= 0) {
            out << std::flush;
        }
        if (!more) {
            return;
        }
    }
}

std::string compact(const Json& value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

void appendCompact(std::string& out, const std::optional<std::string>& text) {
    if (text) {
        appendJsonString(out, *text, Slash::plain);
    } else {
        out += "null";
    }
}

void appendCompact(std::string& out, const std::optional<std::int64_t>& number) {
    if (number) {
        char digits[24];
        out.append(digits, std::to_chars(std::begin(digits), std::end(digits), *number).ptr);
    } else {
        out += "null";
    }
}

std::variant<Schedule, LineError> readSchedule(const Json& input) {
    if (!input.is_object()) {
        return LineError{R"(expected an object {"day": ..., "minute": ...})"};
    }
    Schedule schedule;
    if (const auto day = input.find("day"); day != input.end() && !day->is_null()) {
        if (!day->is_string()) {
            return LineError{"day must be a text or null"};
        }
        schedule.day = day->get<std::string>();
    }
    if (const auto minute = input.find("minute"); minute != input.end() && !minute->is_null()) {
        const bool inDay = minute->is_number_integer() && minute->get<std::int64_t>() >= 0 &&
                           minute->get<std::int64_t>() <= 1439;
        if (!inDay) {
            return LineError{"minute must be a whole number from 0 to 1439, or null"};
        }
        schedule.minute = minute->get<std::int64_t>();
    }
    return schedule;
}

Json orNull(const std::optional<std::string>& text) {
    return text ? Json(*text) : Json(nullptr);
}

Json orNull(const std::optional<std::int64_t>& number) {
    return number ? Json(*number) : Json(nullptr);
}

Json taskObject(const Todo& todo) {
    // The file's own encoder decides the members, so this stays what the file holds.
    return Json::parse(encodeTodo(todo), nullptr, false);
}

Json ids(const std::vector<Todo>& todos) {
    Json list = Json::array();
    for (const Todo& todo : todos) {
        list.push_back(todo.id.text());
    }
    return list;
}

} // namespace kelo::cli
