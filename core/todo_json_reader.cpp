#include "data_file.h"
#include "todo_json.h"

#include <simdjson.h>

namespace kelo {

namespace {

static_assert(readerPadding >= simdjson::SIMDJSON_PADDING);

// Valid data files are two levels deep; this leaves room for unknown members while keeping
// hostile nesting out of the reader.
constexpr std::size_t maximumDepth = 64;

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

// The last value of one known member: a name may repeat, and the last one counts.
struct Member {
    enum class Kind { absent, null, string, integer, other };
    Kind kind = Kind::absent;
    std::string_view text;
    std::int64_t integer = 0;

    [[nodiscard]] bool isNull() const { return kind == Kind::absent || kind == Kind::null; }
};

Member member(simdjson::dom::element value) {
    switch (value.type()) {
    case simdjson::dom::element_type::NULL_VALUE:
        return {Member::Kind::null, {}, 0};
    case simdjson::dom::element_type::STRING:
        return {Member::Kind::string, value.get_string().value_unsafe(), 0};
    case simdjson::dom::element_type::INT64:
        return {Member::Kind::integer, {}, value.get_int64().value_unsafe()};
    default:
        // Floats, booleans, containers, and integers past the signed 64-bit range.
        return {Member::Kind::other, {}, 0};
    }
}

struct Members {
    Member created, day, doneAt, id, minute, title;

    Member* find(std::string_view name) {
        using Entry = std::pair<std::string_view, Member*>;
        for (const auto& [key, found] :
             {Entry{"created", &created}, Entry{"day", &day}, Entry{"doneAt", &doneAt},
              Entry{"id", &id}, Entry{"minute", &minute}, Entry{"title", &title}}) {
            if (name == key) {
                return found;
            }
        }
        return nullptr;
    }
};

std::optional<Timestamp> time(const Member& member) {
    return member.kind == Member::Kind::string ? parseInternetDateTime(member.text) : std::nullopt;
}

// Makes one task of the members read, or says what is wrong with them.
std::variant<Todo, std::string> decodeTodo(const Members& members) {
    Todo todo;
    const auto uuid =
        members.id.kind == Member::Kind::string ? Uuid::parse(members.id.text) : std::nullopt;
    if (!uuid) {
        return std::string(members.id.isNull() ? "a task has no \"id\""
                                               : "a task has an unreadable \"id\"");
    }
    todo.id = *uuid;
    // Built only for a wrong task: every task of every load passes through here.
    const auto label = [&] { return "task " + uuid->text(); };

    if (members.title.kind != Member::Kind::string) {
        return label() + " has no text \"title\"";
    }
    todo.title = members.title.text;

    const auto created = time(members.created);
    if (!created) {
        return label() + " has no readable \"created\" time";
    }
    todo.created = *created;

    if (!members.day.isNull()) {
        if (members.day.kind != Member::Kind::string) {
            return label() + " has a \"day\" that is not text";
        }
        todo.day = DayKey(members.day.text);
    }
    if (!members.minute.isNull()) {
        if (members.minute.kind != Member::Kind::integer) {
            return label() + " has a \"minute\" that is not an integer";
        }
        todo.minute = members.minute.integer;
    }
    if (!members.doneAt.isNull()) {
        todo.doneAt = time(members.doneAt);
        if (!todo.doneAt) {
            return label() + " has an unreadable \"doneAt\" time";
        }
    }
    return todo;
}

DecodeResult decodeList(simdjson::dom::element root) {
    simdjson::dom::array list;
    if (root.get_array().get(list) != simdjson::SUCCESS) {
        return std::string("the data is not a list of tasks");
    }
    std::vector<Todo> todos;
    todos.reserve(list.size());
    for (const simdjson::dom::element element : list) {
        simdjson::dom::object object;
        if (element.get_object().get(object) != simdjson::SUCCESS) {
            return std::string("an element is not an object");
        }
        Members members;
        for (const auto field : object) {
            if (Member* known = members.find(field.key)) {
                *known = member(field.value);
            }
        }
        auto decoded = decodeTodo(members);
        if (auto* error = std::get_if<std::string>(&decoded)) {
            return std::move(*error);
        }
        todos.push_back(std::move(std::get<Todo>(decoded)));
    }
    return todos;
}

} // namespace

DecodeResult decodeTodos(const std::string& bytes) {
    // The reader validates the whole text before a task is made: UTF-8, the grammar, a single
    // value and nothing after it, not even a NUL byte. A leading byte order mark, which some
    // editors add, is the one thing skipped.
    std::string_view text = bytes;
    if (text.starts_with(byteOrderMark)) {
        text.remove_prefix(byteOrderMark.size());
    }
    simdjson::dom::parser parser;
    if (parser.allocate(text.size(), maximumDepth) != simdjson::SUCCESS) {
        return std::string("the data is too large to read");
    }
    // Read in place when the buffer has room for the reader's padding, else from a padded copy.
    simdjson::dom::element root;
    simdjson::error_code error = simdjson::SUCCESS;
    if (bytes.capacity() - bytes.size() >= simdjson::SIMDJSON_PADDING) {
        error = parser.parse(text.data(), text.size(), false).get(root);
    } else {
        error = parser.parse(simdjson::padded_string(text)).get(root);
    }
    if (error == simdjson::DEPTH_ERROR) {
        return "the data nests deeper than " + std::to_string(maximumDepth) + " levels";
    }
    if (error != simdjson::SUCCESS) {
        return std::string("the data is not valid JSON (") + simdjson::error_message(error) + ")";
    }
    return decodeList(root);
}

DecodeResult readTodosFile(const std::filesystem::path& path) {
    auto read = readDataFile(path);
    if (auto* error = std::get_if<FileError>(&read)) {
        return std::move(error->description);
    }
    return decodeTodos(std::get<FileContent>(read).bytes);
}

} // namespace kelo
