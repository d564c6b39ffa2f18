#include "testing.h"
#include "todo_json.h"

namespace kelo {
namespace {

using testing::utc;

constexpr std::string_view exampleFile = R"([
  {
    "created" : "2025-03-06T09:15:02Z",
    "day" : "2025-03-07",
    "id" : "3F2B8C1E-5A47-4D0B-9E6F-2C8A1B7D4E90",
    "minute" : 900,
    "title" : "dentist"
  },
  {
    "created" : "1969-12-31T23:59:59Z",
    "doneAt" : "2025-03-06T08:02:10Z",
    "id" : "2C5F4A0E-1B7D-4E3A-9C21-7D0B6A5E8F13",
    "title" : "taxes"
  }
])";

std::vector<Todo> exampleTodos() {
    std::vector<Todo> todos{testing::todo("dentist", "2025-03-07", 900),
                            testing::todo("taxes", {}, {}, utc("2025-03-06T08:02:10Z"))};
    todos[0].id = *Uuid::parse("3f2b8c1e-5a47-4d0b-9e6f-2c8a1b7d4e90");
    todos[1].id = *Uuid::parse("2C5F4A0E-1B7D-4E3A-9C21-7D0B6A5E8F13");
    todos[0].created = utc("2025-03-06T09:15:02Z");
    todos[1].created = utc("1969-12-31T23:59:59Z");
    return todos;
}

std::vector<Todo> decoded(const std::string& bytes) {
    auto result = decodeTodos(bytes);
    if (auto* error = std::get_if<std::string>(&result)) {
        ADD_FAILURE() << "unreadable: " << *error << "\n" << bytes;
        return {};
    }
    return std::get<std::vector<Todo>>(result);
}

// Times are written in whole seconds, rounded down (before 1970 too); ids in upper case.
TEST(TodoJson, WritesTheExactBytesOfTheDataFileInWholeSeconds) {
    EXPECT_EQ(encodeTodos({}), "[]");
    EXPECT_EQ(decoded(std::string(exampleFile)), exampleTodos());
    std::vector<Todo> todos = exampleTodos();
    todos[0].created += std::chrono::milliseconds(731);
    todos[1].created += std::chrono::milliseconds(999);
    EXPECT_EQ(encodeTodos(todos), exampleFile);
}

TEST(TodoJson, EscapesSlashesQuotesAndControlsAndKeepsOtherTextAsUtf8) {
    Todo todo = exampleTodos()[1];
    todo.title = "a/b \"q\" \\ \t\n\x01 caf\xC3\xA9 \xF0\x9F\x93\x85";
    const std::string bytes = encodeTodo(todo);
    EXPECT_NE(bytes.find(R"("title" : "a\/b \"q\" \\ \t\n\u0001 caf)"
                         "\xC3\xA9 \xF0\x9F\x93\x85\""),
              std::string::npos)
        << bytes;
    EXPECT_EQ(decoded("[" + bytes + "]").front().title, todo.title);

    // Bytes that are not UTF-8 (a stray byte, a surrogate, a cut sequence) would make the file
    // unreadable: each is written as U+FFFD.
    todo.title = "a\xFF b\xED\xA0\x80 c\xE2\x82";
    EXPECT_EQ(decoded("[" + encodeTodo(todo) + "]").front().title,
              "a\uFFFD b\uFFFD\uFFFD\uFFFD c\uFFFD");
}

// Whatever the reader accepts (members in any order, nulls, unknown members, a byte order mark,
// values at the edges) is written back in a form it reads back to the same value.
TEST(TodoJson, AcceptedFilesReadBackEqual) {
    const auto todos =
        decoded("\xEF\xBB\xBF" + std::string(R"([{"id": "2C5F4A0E-1B7D-4E3A-9C21-7D0B6A5E8F13",
        "title": "nul \u0000 inside", "day": "not a day", "minute": -9223372036854775808,
        "created": "0000-01-01T00:00:00Z", "doneAt": "9999-12-31T23:59:59Z"},
        {"id": "3F2B8C1E-5A47-4D0B-9E6F-2C8A1B7D4E90", "title": "", "minute": 9223372036854775807,
        "created": "0000-01-01T01:00:00+01:00", "doneAt": "9999-12-31T22:59:59-01:00"},
        {"title": "x", "extra": {"nested": [1, 2]}, "day": null, "minute": null, "doneAt": null,
        "created": "2025-03-06T10:15:02+01:00", "id": "2c5f4a0e-1b7d-4e3a-9c21-7d0b6a5e8f13"}])"));
    ASSERT_EQ(todos.size(), 3u);
    EXPECT_EQ(todos[0].title, std::string("nul \0 inside", 12));
    EXPECT_EQ(todos[2], (Todo{{}, todos[0].id, "x", {}, utc("2025-03-06T09:15:02Z")}));
    EXPECT_EQ(decoded(encodeTodos(todos)), todos);
}

TEST(TodoJson, AnyWrongMemberMakesTheWholeFileUnreadable) {
    const std::string task = R"({"id": "2C5F4A0E-1B7D-4E3A-9C21-7D0B6A5E8F13", "title": "x", )"
                             R"("created": "2025-03-06T09:15:02Z")";
    ASSERT_EQ(decoded("[" + task + "}]").size(), 1u);
    std::vector<std::string> cases = {
        "", "{}", "[1]", "[" + task + "}, " + task + "}",
        // The whole text is one value: nothing may follow it, not even after a NUL byte.
        "[" + task + "}] []", "[" + task + "}]" + std::string(1, '\0') + "[" + task + "}]"};
    // The task with one member wrong; of a repeated member the last counts. Times that an offset
    // carries out of the years 0000 to 9999 could not be written back.
    for (const char* member :
         {R"("id": null)", R"("id": "not-an-id")", R"("title": 5)", R"("created": null)",
          R"("created": 1741252502)", R"("created": "0000-01-01T00:30:00+01:00")",
          R"("day": 20250306)", R"("minute": "900")", R"("minute": 9.5)",
          R"("minute": 18446744073709551615)", R"("doneAt": "yesterday")",
          R"("doneAt": "9999-12-31T23:30:00-01:00")"}) {
        cases.push_back("[" + task + ", " + member + "}]");
    }
    for (const std::string& bytes : cases) {
        EXPECT_TRUE(std::holds_alternative<std::string>(decodeTodos(bytes))) << bytes;
    }
}

} // namespace
} // namespace kelo
