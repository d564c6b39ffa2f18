#include "todo_json.h"

#include <array>
#include <charconv>
#include <iterator>
#include <unicode/utf8.h>

namespace kelo {

namespace {

// Bytes that cannot be written into a string as they are, and bytes beyond ASCII, which are
// written as they are only as part of a well-formed UTF-8 sequence.
constexpr std::array<bool, 256> needsLook = [] {
    std::array<bool, 256> table{};
    for (std::size_t c = 0; c < table.size(); ++c) {
        table[c] = c < 0x20 || c == '"' || c == '\\' || c == '/' || c >= 0x80;
    }
    return table;
}();

constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD";

void appendEscape(std::string& out, char c) {
    static constexpr std::string_view named = "\"\\/\b\f\n\r\t";
    static constexpr std::string_view letters = "\"\\/bfnrt";
    static constexpr char hex[] = "0123456789abcdef";
    if (const std::size_t found = named.find(c); found != named.npos) {
        out += '\\';
        out += letters[found];
        return;
    }
    out += "\\u00";
    out += hex[static_cast<unsigned char>(c) >> 4];
    out += hex[static_cast<unsigned char>(c) & 0x0F];
}

void appendString(std::string& out, std::string_view text) {
    out += '"';
    // Runs of plain characters are copied at once; most text has nothing to escape.
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto length = static_cast<std::int32_t>(text.size());
    std::size_t run = 0;
    for (std::int32_t i = 0; i < length;) {
        if (!needsLook[bytes[i]]) {
            ++i;
            continue;
        }
        if (bytes[i] < 0x80) {
            out.append(text, run, static_cast<std::size_t>(i) - run);
            appendEscape(out, text[static_cast<std::size_t>(i)]);
            run = static_cast<std::size_t>(++i);
            continue;
        }
        const std::int32_t start = i;
        UChar32 c = 0;
        U8_NEXT(bytes, i, length, c);
        if (c < 0) {
            out.append(text, run, static_cast<std::size_t>(start) - run);
            out += replacementCharacter;
            run = static_cast<std::size_t>(i);
        }
    }
    out.append(text, run);
    out += '"';
}

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
        appendString(out, *todo.day);
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
    appendString(out, todo.title);
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
