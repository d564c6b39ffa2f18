#include "data_file.h"
#include "todo_json.h"

#include <nlohmann/json.hpp>

namespace kelo {

namespace {

using nlohmann::json;

// Valid data files are two levels deep; this leaves room for unknown members while keeping
// hostile nesting out of the reader.
constexpr std::size_t maximumDepth = 64;

// The last value of one known member: a name may repeat, and the last one counts.
struct Member {
    enum class Kind { absent, null, string, integer, other };
    Kind kind = Kind::absent;
    std::string text;
    std::int64_t integer = 0;

    [[nodiscard]] bool isNull() const { return kind == Kind::absent || kind == Kind::null; }
};

struct Members {
    Member created, day, doneAt, id, minute, title;

    Member* find(std::string_view name) {
        using Entry = std::pair<std::string_view, Member*>;
        for (const auto& [key, member] :
             {Entry{"created", &created}, Entry{"day", &day}, Entry{"doneAt", &doneAt},
              Entry{"id", &id}, Entry{"minute", &minute}, Entry{"title", &title}}) {
            if (name == key) {
                return member;
            }
        }
        return nullptr;
    }
};

std::optional<Timestamp> time(const Member& member) {
    return member.kind == Member::Kind::string ? parseInternetDateTime(member.text) : std::nullopt;
}

// Makes one task of the members read, or says what is wrong with them.
std::variant<Todo, std::string> decodeTodo(Members& members) {
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
    todo.title = std::move(members.title.text);

    const auto created = time(members.created);
    if (!created) {
        return label() + " has no readable \"created\" time";
    }
    todo.created = *created;

    if (!members.day.isNull()) {
        if (members.day.kind != Member::Kind::string) {
            return label() + " has a \"day\" that is not text";
        }
        todo.day = members.day.text;
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

// Fills the tasks straight from nlohmann's parser events: a document of ten thousand tasks costs
// more to build than the parsing itself. Depth 1 is the list, depth 2 a task's members; values
// nested deeper belong to unknown members or are wrong values of known ones.
class TaskListReader {
public:
    explicit TaskListReader(std::size_t size) {
        // No task fits in fewer than 90 bytes, so the list never grows (and moves every task)
        // while it is read.
        todos_.reserve(size / 90);
    }

    bool null() { return scalar(Member::Kind::null); }
    bool boolean(bool) { return scalar(Member::Kind::other); }
    bool number_integer(json::number_integer_t value) {
        return scalar(Member::Kind::integer, value);
    }
    bool number_unsigned(json::number_unsigned_t value) {
        if (value > static_cast<json::number_unsigned_t>(INT64_MAX)) {
            return scalar(Member::Kind::other);
        }
        return scalar(Member::Kind::integer, static_cast<std::int64_t>(value));
    }
    bool number_float(json::number_float_t, const json::string_t&) {
        return scalar(Member::Kind::other);
    }
    bool string(json::string_t& text) {
        if (depth_ == 2 && member_) {
            member_->kind = Member::Kind::string;
            member_->text = std::move(text);
            return true;
        }
        return scalar(Member::Kind::string);
    }
    bool binary(json::binary_t&) { return scalar(Member::Kind::other); }

    bool start_array(std::size_t) {
        if (depth_ == 0) {
            isList_ = true;
        } else {
            scalar(Member::Kind::other);
        }
        return enter();
    }
    bool end_array() { return leave(); }
    bool start_object(std::size_t) {
        if (depth_ == 1 && isList_) {
            members_ = Members{};
        } else {
            scalar(Member::Kind::other);
        }
        return enter();
    }
    bool key(json::string_t& name) {
        if (depth_ == 2) {
            member_ = members_.find(name);
        }
        return true;
    }
    bool end_object() {
        if (depth_ == 2 && !wrong_) {
            auto decoded = decodeTodo(members_);
            if (auto* error = std::get_if<std::string>(&decoded)) {
                wrong_ = std::move(*error);
            } else {
                todos_.push_back(std::move(std::get<Todo>(decoded)));
            }
        }
        return leave();
    }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) {
        broken_ = true;
        return false;
    }

    // The text is read to its end even after a wrong task, so that a broken text is reported as
    // broken rather than by a task before the break.
    DecodeResult result(bool parsed) {
        if (tooDeep_) {
            return "the data nests deeper than " + std::to_string(maximumDepth) + " levels";
        }
        if (broken_ || !parsed) {
            return std::string("the data is not valid JSON");
        }
        if (!isList_) {
            return std::string("the data is not a list of tasks");
        }
        if (wrong_) {
            return std::move(*wrong_);
        }
        return std::move(todos_);
    }

private:
    // A value that is not a task's own string: a member's value, a wrong element, or a value
    // nested inside an unknown member.
    bool scalar(Member::Kind kind, std::int64_t integer = 0) {
        if (depth_ == 1 && !wrong_) {
            wrong_ = "an element is not an object";
        } else if (depth_ == 2 && member_) {
            member_->kind = kind;
            member_->integer = integer;
        }
        return true;
    }
    bool enter() {
        if (++depth_ > maximumDepth) {
            tooDeep_ = true;
            return false;
        }
        // Whatever is inside a nested value belongs to that value, not to a member.
        if (depth_ > 2) {
            member_ = nullptr;
        }
        return true;
    }
    bool leave() {
        --depth_;
        return true;
    }

    std::vector<Todo> todos_;
    Members members_;
    Member* member_ = nullptr;
    std::size_t depth_ = 0;
    bool isList_ = false;
    bool broken_ = false;
    bool tooDeep_ = false;
    std::optional<std::string> wrong_;
};

} // namespace

DecodeResult decodeTodos(std::string_view bytes) {
    TaskListReader reader(bytes.size());
    const bool parsed = json::sax_parse(bytes.data(), bytes.data() + bytes.size(), &reader);
    return reader.result(parsed);
}

DecodeResult readTodosFile(const std::filesystem::path& path) {
    auto bytes = readDataFile(path);
    if (auto* error = std::get_if<FileError>(&bytes)) {
        return std::move(error->description);
    }
    return decodeTodos(std::get<std::string>(bytes));
}

} // namespace kelo
