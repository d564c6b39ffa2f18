#include "testing.h"
#include "todo.h"

#include <gtest/gtest.h>
#include <unordered_set>

namespace kelo {
namespace {

using testing::utc;

TEST(TodoOrder, OpenThenDayThenMinuteThenCreation) {
    using testing::todo;
    const Timestamp done = utc("2025-03-06T08:00:00Z");
    const std::tuple<const char*, Todo, Todo> cases[] = {
        {"open before done whatever the day", todo("t", "2030-01-01"),
         todo("t", "2020-01-01", {}, done, 10)},
        {"undated before dated", todo("t"), todo("t", "2020-01-01", 0, {}, 10)},
        {"earlier day first", todo("t", "2025-03-06", 1000), todo("t", "2025-03-07", 0, {}, 10)},
        {"09:00 before 17:00", todo("t", "2025-03-06", 540), todo("t", "2025-03-06", 1020, {}, 10)},
        {"timed before untimed", todo("t", "2025-03-06", 1439),
         todo("t", "2025-03-06", {}, {}, 10)},
        {"older first on ties", todo("t", "2025-03-06", {}, {}, 1), todo("t", "2025-03-06")},
        {"done tasks follow the same rules", todo("t", "2025-03-06", 540, done),
         todo("t", "2025-03-06", {}, done, 10)},
    };
    for (const auto& [why, first, second] : cases) {
        EXPECT_TRUE(Todo::order(first, second)) << why;
        EXPECT_FALSE(Todo::order(second, first)) << why;
    }
    // Equal but for the id: neither comes first.
    const Todo same = todo("t", "2025-03-06", 540);
    Todo twin = same;
    twin.id = Uuid::random();
    EXPECT_FALSE(Todo::order(same, twin));
    EXPECT_FALSE(Todo::order(twin, same));
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

TEST(Uuid, ReadsEitherCaseWritesUpperCaseAndMakesVersionFour) {
    const auto id = Uuid::parse("3f2b8c1e-5a47-4d0b-9e6f-2c8a1b7d4e90");
    ASSERT_TRUE(id);
    EXPECT_EQ(id->text(), "3F2B8C1E-5A47-4D0B-9E6F-2C8A1B7D4E90");
    EXPECT_EQ(Uuid::parse(id->text()), id);
    for (const char* bad :
         {"", "3F2B8C1E5A474D0B9E6F2C8A1B7D4E90", "3F2B8C1E-5A47-4D0B-9E6F-2C8A1B7D4E9",
          "3F2B8C1E-5A47-4D0B-9E6F-2C8A1B7D4E9G", "3F2B8C1E+5A47-4D0B-9E6F-2C8A1B7D4E90"}) {
        EXPECT_FALSE(Uuid::parse(bad)) << bad;
    }
    // Random ids are of version 4 and distinct.
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
    const char* const readable[][2] = {
        {"2025-03-06T10:15:02+01:00", "2025-03-06T09:15:02Z"},
        {"2025-03-06T04:45:02-04:30", "2025-03-06T09:15:02Z"},
        {"2024-02-29T00:00:00Z", "2024-02-29T00:00:00Z"},
    };
    for (const auto& [text, inUtc] : readable) {
        const auto time = parseInternetDateTime(text);
        ASSERT_TRUE(time) << text;
        EXPECT_EQ(internetDateTime(*time), inUtc);
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
