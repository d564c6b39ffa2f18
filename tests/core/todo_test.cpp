#include "testing.h"
#include "todo.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <unordered_set>

namespace kelo {
namespace {

using testing::utc;

Todo task(std::optional<DayKey> day, std::optional<std::int64_t> minute, const char* created,
          bool done = false) {
    Todo todo;
    todo.id = Uuid::random();
    todo.title = "task";
    todo.day = std::move(day);
    todo.minute = minute;
    todo.created = utc(created);
    if (done) {
        todo.doneAt = utc("2025-03-06T08:00:00Z");
    }
    return todo;
}

TEST(TodoOrder, OpenThenDayThenMinuteThenCreation) {
    struct Case {
        const char* why;
        Todo first;
        Todo second;
    };
    const Case cases[] = {
        {"open before done whatever the day", task("2030-01-01", {}, "2025-01-01T00:00:00Z"),
         task("2020-01-01", {}, "2025-01-01T00:00:00Z", true)},
        {"undated before dated", task({}, {}, "2025-02-01T00:00:00Z"),
         task("2020-01-01", 0, "2025-01-01T00:00:00Z")},
        {"earlier day first", task("2025-03-06", 1000, "2025-02-01T00:00:00Z"),
         task("2025-03-07", 0, "2025-01-01T00:00:00Z")},
        {"09:00 before 17:00", task("2025-03-06", 540, "2025-02-01T00:00:00Z"),
         task("2025-03-06", 1020, "2025-01-01T00:00:00Z")},
        {"timed before untimed", task("2025-03-06", 1439, "2025-02-01T00:00:00Z"),
         task("2025-03-06", {}, "2025-01-01T00:00:00Z")},
        {"untimed keep creation order", task("2025-03-06", {}, "2025-01-01T00:00:00Z"),
         task("2025-03-06", {}, "2025-01-01T00:00:01Z")},
        {"done tasks follow the same rules", task("2025-03-06", 540, "2025-02-01T00:00:00Z", true),
         task("2025-03-06", {}, "2025-01-01T00:00:00Z", true)},
    };
    for (const Case& c : cases) {
        EXPECT_TRUE(Todo::order(c.first, c.second)) << c.why;
        EXPECT_FALSE(Todo::order(c.second, c.first)) << c.why;
    }
    const Todo same = task("2025-03-06", 540, "2025-01-01T00:00:00Z");
    Todo twin = same;
    twin.id = Uuid::random();
    EXPECT_FALSE(Todo::order(same, twin));
    EXPECT_FALSE(Todo::order(twin, same));
}

TEST(TodoOrder, IsAStrictWeakOrderForSorting) {
    std::vector<Todo> todos;
    const char* days[] = {nullptr, "2025-03-05", "2025-03-06"};
    for (int i = 0; i < 60; ++i) {
        const char* day = days[i % 3];
        todos.push_back(task(day ? std::optional<DayKey>(day) : std::nullopt,
                             i % 4 == 0 ? std::nullopt : std::optional<std::int64_t>(i % 5 * 60),
                             i % 2 ? "2025-01-01T00:00:00Z" : "2025-01-02T00:00:00Z", i % 7 == 0));
    }
    std::stable_sort(todos.begin(), todos.end(), Todo::order);
    for (std::size_t i = 1; i < todos.size(); ++i) {
        EXPECT_FALSE(Todo::order(todos[i], todos[i - 1])) << "position " << i;
    }
    EXPECT_FALSE(todos.front().isDone());
    EXPECT_TRUE(todos.back().isDone());
}

TEST(Bucket, RawValuesAndTheBucketOfADay) {
    EXPECT_EQ(bucketFromRaw(0), Bucket::today);
    EXPECT_EQ(bucketFromRaw(2), Bucket::backlog);
    EXPECT_FALSE(bucketFromRaw(3));
    EXPECT_FALSE(bucketFromRaw(-1));
    EXPECT_EQ(bucketOf(std::nullopt, "2025-03-06"), Bucket::backlog);
    EXPECT_EQ(bucketOf("2025-03-06", "2025-03-06"), Bucket::today);
    EXPECT_EQ(bucketOf("2024-12-31", "2025-03-06"), Bucket::today);
    EXPECT_EQ(bucketOf("2025-03-07", "2025-03-06"), Bucket::upcoming);
}

TEST(Uuid, TextIsUpperCaseAndParsesInEitherCase) {
    const auto id = Uuid::parse("3f2b8c1e-5a47-4d0b-9e6f-2c8a1b7d4e90");
    ASSERT_TRUE(id);
    EXPECT_EQ(id->text(), "3F2B8C1E-5A47-4D0B-9E6F-2C8A1B7D4E90");
    EXPECT_EQ(Uuid::parse(id->text()), id);
    for (const char* bad :
         {"", "3F2B8C1E5A474D0B9E6F2C8A1B7D4E90", "3F2B8C1E-5A47-4D0B-9E6F-2C8A1B7D4E9",
          "3F2B8C1E-5A47-4D0B-9E6F-2C8A1B7D4E9G", "3F2B8C1E+5A47-4D0B-9E6F-2C8A1B7D4E90"}) {
        EXPECT_FALSE(Uuid::parse(bad)) << bad;
    }
}

TEST(Uuid, RandomIdsAreVersionFourAndDistinct) {
    std::unordered_set<Uuid> seen;
    for (int i = 0; i < 1000; ++i) {
        const Uuid id = Uuid::random();
        EXPECT_EQ(id.text()[14], '4');
        EXPECT_NE(std::string("89AB").find(id.text()[19]), std::string::npos);
        EXPECT_TRUE(seen.insert(id).second);
    }
}

TEST(InternetDateTime, WritesUtcSecondsAndReadsZOrOffsets) {
    EXPECT_EQ(internetDateTime(utc("2025-03-06T09:15:02Z") + std::chrono::milliseconds(731)),
              "2025-03-06T09:15:02Z");
    EXPECT_EQ(internetDateTime(Timestamp(std::chrono::milliseconds(-1))), "1969-12-31T23:59:59Z");
    struct Case {
        const char* text;
        const char* utc;
    };
    const Case readable[] = {
        {"2025-03-06T10:15:02+01:00", "2025-03-06T09:15:02Z"},
        {"2025-03-06T04:45:02-04:30", "2025-03-06T09:15:02Z"},
        {"2024-02-29T00:00:00Z", "2024-02-29T00:00:00Z"},
    };
    for (const Case& c : readable) {
        const auto time = parseInternetDateTime(c.text);
        ASSERT_TRUE(time) << c.text;
        EXPECT_EQ(internetDateTime(*time), c.utc);
    }
    for (const char* bad :
         {"2025-03-06T09:15:02.731Z", "2025-03-06 09:15:02Z", "2025-03-06T09:15:02",
          "2025-02-29T00:00:00Z", "2025-03-06T24:00:00Z", "2025-03-06T09:15:02+0100",
          "2025-03-06T09:15:02z", "", "2025-3-6T09:15:02Z"}) {
        EXPECT_FALSE(parseInternetDateTime(bad)) << bad;
    }
}

} // namespace
} // namespace kelo
