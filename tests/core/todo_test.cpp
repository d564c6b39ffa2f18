#include "testing.h"

#include <unordered_set>

// The task record and its form in the data file. The order of tasks is in lists_test.
namespace kelo {
namespace {

using testing::utc;

// Members sorted by name, "/" escaped, times in whole seconds, ids in upper case.
constexpr std::string_view exampleFile = R"([
  {
    "created" : "2025-03-06T09:15:02Z",
    "day" : "2025-03-07",
    "id" : "3F2B8C1E-5A47-4D0B-9E6F-2C8A1B7D4E90",
    "minute" : 900,
    "title" : "dentist a\/b \"q\" \\ \t\n\u0001 café 📅"
  },
  {
    "created" : "1969-12-31T23:59:59Z",
    "doneAt" : "2025-03-06T08:02:10Z",
    "id" : "2C5F4A0E-1B7D-4E3A-9C21-7D0B6A5E8F13",
    "title" : "taxes"
  }
])";

std::vector<Todo> exampleTodos() {
    std::vector<Todo> todos{
        testing::todo("dentist a/b \"q\" \\ \t\n\x01 caf\xC3\xA9 \xF0\x9F\x93\x85", "2025-03-07",
                      900),
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

// Times are rounded down to whole seconds, before 1970 too.
TEST(TodoJson, WritesTheExactBytesOfTheDataFile) {
    EXPECT_EQ(encodeTodos({}), "[]");
    EXPECT_EQ(decoded(std::string(exampleFile)), exampleTodos());
    std::vector<Todo> todos = exampleTodos();
    todos[0].created += std::chrono::milliseconds(731);
    todos[1].created += std::chrono::milliseconds(999);
    EXPECT_EQ(encodeTodos(todos), exampleFile);
    // Bytes that are not UTF-8 (a stray byte, a surrogate, a cut sequence) would make the file
    // unreadable: each is written as U+FFFD.
    todos[1].title = "a\xFF b\xED\xA0\x80 c\xE2\x82";
    EXPECT_EQ(decoded(encodeTodos(todos))[1].title, "a\uFFFD b\uFFFD\uFFFD\uFFFD c\uFFFD");
}

// Whatever the reader accepts (members in any order, nulls, unknown members, a byte order mark,
// values at the edges, ids in either case, any offset) is written back in a form it reads back
// to the same value.
TEST(TodoJson, AcceptedFilesReadBackEqual) {
    const auto todos =
        decoded("\xEF\xBB\xBF" + std::string(R"([{"id": "2C5F4A0E-1B7D-4E3A-9C21-7D0B6A5E8F13",
        "title": "nul \u0000 inside", "day": "not a day", "minute": -9223372036854775808,
        "created": "0000-01-01T00:00:00Z", "doneAt": "9999-12-31T23:59:59Z"},
        {"id": "3F2B8C1E-5A47-4D0B-9E6F-2C8A1B7D4E90", "title": "", "minute": 9223372036854775807,
        "created": "0000-01-01T01:00:00+01:00", "doneAt": "9999-12-31T22:59:59-01:00"},
        {"title": "x", "extra": {"nested": [1, 2]}, "day": null, "minute": null, "doneAt": null,
        "created": "2025-03-06T04:45:02-04:30", "id": "2c5f4a0e-1b7d-4e3a-9c21-7d0b6a5e8f13"}])"));
    ASSERT_EQ(todos.size(), 3u);
    EXPECT_EQ(todos[0].title, std::string("nul \0 inside", 12));
    EXPECT_EQ(todos[1].created, todos[0].created);
    EXPECT_EQ(todos[1].doneAt, todos[0].doneAt);
    EXPECT_EQ(todos[2], (Todo{{}, todos[0].id, "x", {}, utc("2025-03-06T09:15:02Z")}));
    EXPECT_EQ(decoded(encodeTodos(todos)), todos);
    EXPECT_TRUE(parseInternetDateTime("2024-02-29T00:00:00Z"));
}

TEST(TodoJson, AnyWrongMemberMakesTheWholeFileUnreadable) {
    const std::string task = R"({"id": "2C5F4A0E-1B7D-4E3A-9C21-7D0B6A5E8F13", "title": "x", )"
                             R"("created": "2025-03-06T09:15:02Z")";
    ASSERT_EQ(decoded("[" + task + "}]").size(), 1u);
    std::vector<std::string> cases = {
        "", "{}", "[1]", "[" + task + "}, " + task + "}",
        // The whole text is one value: nothing may follow it, not even after a NUL byte.
        "[" + task + "}] []", "[" + task + "}]x",
        "[" + task + "}]" + std::string(1, '\0') + "[" + task + "}]"};
    // The task with one member wrong; of a repeated member the last counts. Times that an offset
    // carries out of the years 0000 to 9999 could not be written back.
    const std::pair<const char*, std::vector<const char*>> wrongMembers[] = {
        {"id",
         {"null", R"("")", R"("3F2B8C1E5A474D0B9E6F2C8A1B7D4E90")",
          R"("3F2B8C1E-5A47-4D0B-9E6F-2C8A1B7D4E9")", R"("3F2B8C1E-5A47-4D0B-9E6F-2C8A1B7D4E9G")",
          R"("3F2B8C1E+5A47-4D0B-9E6F-2C8A1B7D4E90")",
          R"("3F2B8C1E-5A47-4D0B-9E6F+2C8A1B7D4E90")"}},
        {"created",
         {"null", "1741252502", R"("0000-01-01T00:30:00+01:00")", R"("2025-03-06T09:15:02.731Z")",
          R"("2025-03-06 09:15:02Z")", R"("2025-03-06T09:15:02")", R"("2025-02-29T00:00:00Z")",
          R"("2025-03-06T24:00:00Z")", R"("2025-03-06T09:15:02+0100")", R"("2025-03-06T09:15:02z")",
          R"("")", R"("2025-3-6T09:15:02Z")"}},
        {"doneAt", {R"("yesterday")", R"("9999-12-31T23:30:00-01:00")"}},
        {"title", {"5"}},
        {"day", {"20250306"}},
        {"minute", {R"("900")", "9.5", "18446744073709551615"}}};
    for (const auto& [name, values] : wrongMembers) {
        for (const char* value : values) {
            cases.push_back("[" + task + R"(, ")" + name + R"(": )" + value + "}]");
        }
    }
    for (const std::string& bytes : cases) {
        EXPECT_TRUE(std::holds_alternative<std::string>(decodeTodos(bytes))) << bytes;
    }
}

TEST(Uuid, RandomIdsAreOfVersionFourAndDistinct) {
    std::unordered_set<Uuid> seen;
    for (int i = 0; i < 1000; ++i) {
        const Uuid id = Uuid::random();
        EXPECT_EQ(id.text()[14], '4');
        EXPECT_NE(std::string("89AB").find(id.text()[19]), std::string::npos);
        EXPECT_TRUE(seen.insert(id).second);
    }
}

TEST(Bucket, OfADay) {
    EXPECT_EQ(bucketOf(std::nullopt, "2025-03-06"), Bucket::backlog);
    EXPECT_EQ(bucketOf("2025-03-06", "2025-03-06"), Bucket::today);
    EXPECT_EQ(bucketOf("2024-12-31", "2025-03-06"), Bucket::today);
    EXPECT_EQ(bucketOf("2025-03-07", "2025-03-06"), Bucket::upcoming);
}

} // namespace
} // namespace kelo
