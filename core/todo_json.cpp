#include "todo_json.h"

#include "data_file.h"

#include <nlohmann/json.hpp>

namespace kelo {

namespace {

using nlohmann::json;

// Valid data files are two levels deep; this leaves room for unknown members while keeping
// hostile nesting away from the parser.
constexpr int maximumDepth = 64;

void appendString(std::string& out, std::string_view text) {
    static constexpr char hex[] = "0123456789abcdef";
    out.push_back('"');
    for (const char c : text) {
        switch (c) {
        case '"':
            out += "\\\"";
            break;
        case '\\':
            out += "\\\\";
            break;
        case '/':
            out += "\\/";
            break;
        case '\b':
            out += "\\b";
            break;
        case '\f':
            out += "\\f";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        default:
            if (static_cast<unsigned char>(c) < 0x20) {
                out += "\\u00";
                out.push_back(hex[static_cast<unsigned char>(c) >> 4]);
                out.push_back(hex[static_cast<unsigned char>(c) & 0x0F]);
            } else {
                out.push_back(c);
            }
        }
    }
    out.push_back('"');
}

// One object; `indent` is the indentation of its braces.
void appendTodo(std::string& out, const Todo& todo, std::string_view indent) {
    const std::string member = std::string(indent) + "  ";
    bool first = true;
    const auto name = [&](std::string_view key) {
        out += first ? "\n" : ",\n";
        first = false;
        out += member;
        appendString(out, key);
        out += " : ";
    };
    out += "{";
    name("created");
    appendString(out, internetDateTime(todo.created));
    if (todo.day) {
        name("day");
        appendString(out, *todo.day);
    }
    if (todo.doneAt) {
        name("doneAt");
        appendString(out, internetDateTime(*todo.doneAt));
    }
    name("id");
    appendString(out, todo.id.text());
    if (todo.minute) {
        name("minute");
        out += std::to_string(*todo.minute);
    }
    name("title");
    appendString(out, todo.title);
    out += "\n";
    out += indent;
    out += "}";
}

bool nestsTooDeep(std::string_view bytes) {
    int depth = 0;
    bool inString = false;
    bool escaped = false;
    for (const char c : bytes) {
        if (inString) {
            if (escaped) {
                escaped = false;
            } else if (c == '\\') {
                escaped = true;
            } else if (c == '"') {
                inString = false;
            }
        } else if (c == '"') {
            inString = true;
        } else if (c == '[' || c == '{') {
            if (++depth > maximumDepth) {
                return true;
            }
        } else if (c == ']' || c == '}') {
            --depth;
        }
    }
    return false;
}

// The member, or null when it is absent; both mean "no value" for the optional members.
const json& member(const json& object, const char* name) {
    static const json absent;
    const auto found = object.find(name);
    return found == object.end() ? absent : *found;
}

std::optional<std::int64_t> integer(const json& value) {
    if (value.is_number_integer()) {
        if (value.is_number_unsigned() &&
            value.get<std::uint64_t>() > static_cast<std::uint64_t>(INT64_MAX)) {
            return std::nullopt;
        }
        return value.get<std::int64_t>();
    }
    return std::nullopt;
}

// Decodes one task object, or says what is wrong with it.
std::variant<Todo, std::string> decodeTodo(const json& object) {
    if (!object.is_object()) {
        return std::string("an element is not an object");
    }
    Todo todo;
    const json& id = member(object, "id");
    const auto uuid = id.is_string() ? Uuid::parse(id.get_ref<const std::string&>()) : std::nullopt;
    if (!uuid) {
        return std::string(id.is_null() ? "a task has no \"id\""
                                        : "a task has an unreadable \"id\"");
    }
    todo.id = *uuid;
    const std::string label = "task " + uuid->text();

    const json& title = member(object, "title");
    if (!title.is_string()) {
        return label + " has no text \"title\"";
    }
    todo.title = title.get<std::string>();

    const json& created = member(object, "created");
    const auto createdAt = created.is_string()
                               ? parseInternetDateTime(created.get_ref<const std::string&>())
                               : std::nullopt;
    if (!createdAt) {
        return label + " has no readable \"created\" time";
    }
    todo.created = *createdAt;

    if (const json& day = member(object, "day"); !day.is_null()) {
        if (!day.is_string()) {
            return label + " has a \"day\" that is not text";
        }
        todo.day = day.get<std::string>();
    }
    if (const json& minute = member(object, "minute"); !minute.is_null()) {
        todo.minute = integer(minute);
        if (!todo.minute) {
            return label + " has a \"minute\" that is not an integer";
        }
    }
    if (const json& doneAt = member(object, "doneAt"); !doneAt.is_null()) {
        todo.doneAt = doneAt.is_string()
                          ? parseInternetDateTime(doneAt.get_ref<const std::string&>())
                          : std::nullopt;
        if (!todo.doneAt) {
            return label + " has an unreadable \"doneAt\" time";
        }
    }
    return todo;
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

DecodeResult decodeTodos(std::string_view bytes) {
    if (nestsTooDeep(bytes)) {
        return std::string("the data nests deeper than ") + std::to_string(maximumDepth) +
               " levels";
    }
    const json document = json::parse(bytes, nullptr, false);
    if (document.is_discarded()) {
        return std::string("the data is not valid JSON");
    }
    if (!document.is_array()) {
        return std::string("the data is not a list of tasks");
    }
    std::vector<Todo> todos;
    todos.reserve(document.size());
    for (const json& element : document) {
        auto decoded = decodeTodo(element);
        if (auto* error = std::get_if<std::string>(&decoded)) {
            return std::move(*error);
        }
        todos.push_back(std::move(std::get<Todo>(decoded)));
    }
    return todos;
}

DecodeResult readTodosFile(const std::filesystem::path& path) {
    auto bytes = readDataFile(path);
    if (auto* error = std::get_if<FileError>(&bytes)) {
        return std::move(error->description);
    }
    return decodeTodos(std::get<std::string>(bytes));
}

} // namespace kelo
