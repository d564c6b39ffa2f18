#include "todo_json.h"

#include "json_string.h"

#include <charconv>
#include <iterator>

namespace kelo {

namespace {

// Times and ids are digits, letters, hyphens and colons: nothing in them needs escaping.
void appendPlain(std::string& out, std::string_view text) {
    out += '"';
    out += text;
    out += '"';
}

// One object; `indent` is the indentation of its braces.
void appendTodo(std::string& out, const Todo& todo, std::string_view indent) {
    static constexpr std::string_view spaces = "    ";
    const std::string_view memberIndent = spaces.substr(0, indent.size() + 2);
    const auto name = [&](std::string_view separator, std::string_view quotedName) {
        out += separator;
        out += memberIndent;
        out += quotedName;
    };
    name("{\n", "\"created\" : ");
    appendPlain(out, internetDateTime(todo.created));
    if (todo.day) {
        name(",\n", "\"day\" : ");
        appendJsonString(out, *todo.day, Slash::escaped);
    }
    if (todo.doneAt) {
        name(",\n", "\"doneAt\" : ");
        appendPlain(out, internetDateTime(*todo.doneAt));
    }
    name(",\n", "\"id\" : ");
    appendPlain(out, todo.id.text());
    if (todo.minute) {
        name(",\n", "\"minute\" : ");
        char digits[24];
        out.append(digits, std::to_chars(std::begin(digits), std::end(digits), *todo.minute).ptr);
    }
    name(",\n", "\"title\" : ");
    appendJsonString(out, todo.title, Slash::escaped);
    out += '\n';
    out += indent;
    out += '}';
}

} // namespace

std::string encodeTodos(const std::vector<Todo>& todos) {
    if (todos.empty()) {
        return "[]";
    }
    std::string out;
    out.reserve(todos.size() * 220);
    out += "[\n  ";
    for (std::size_t i = 0; i < todos.size(); ++i) {
        if (i > 0) {
            out += ",\n  ";
        }
        appendTodo(out, todos[i], "  ");
    }
    out += "\n]";
    return out;
}

std::string encodeTodo(const Todo& todo) {
    std::string out;
    appendTodo(out, todo, "");
    return out;
}

} // namespace kelo
