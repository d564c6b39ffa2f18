#include "testing.h"
#include "todo.h"

#include <unordered_set>

namespace kelo {
namespace {

using testing::utc;

// The order of tasks is in lists_test.
TEST(Bucket, OfADay) {
    EXPECT_EQ(bucketOf(std::nullopt, "2025-03-06"), Bucket::backlog);
    EXPECT_EQ(bucketOf("2025-03-06", "2025-03-06"), Bucket::today);
    EXPECT_EQ(bucketOf("2024-12-31", "2025-03-06"), Bucket::today);
    EXPECT_EQ(bucketOf("2025-03-07", "2025-03-06"), Bucket::upcoming);
}

// Reading either case and writing upper case are in todo_json_test.
TEST(Uuid, RefusesMalformedIdsAndMakesVersionFour) {
    for (const char* bad :
         {"", "3F2B8C1E5A474D0B9E6F2C8A1B7D4E90", "3F2B8C1E-5A47-4D0B-9E6F-2C8A1B7D4E9",
          "3F2B8C1E-5A47-4D0B-9E6F-2C8A1B7D4E9G", "3F2B8C1E+5A47-4D0B-9E6F-2C8A1B7D4E90",
          "3F2B8C1E-5A47-4D0B-9E6F+2C8A1B7D4E90"}) {
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

// Writing is in todo_json_test.
TEST(InternetDateTime, ReadsZOrOffsetsAndNothingElse) {
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
