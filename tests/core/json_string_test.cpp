#include "json_string.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace kelo {
namespace {

// kelo-core reads most lines without its JSON reader: whatever that shortcut takes must be what
// the reader reads, and the shortcut must take the usual line.
TEST(JsonString, PlainStringsReadAsTheJsonReaderReadsThem) {
    // clang-format off
    const std::string lines[] = {
        R"("dentist fri 3pm")", " \t\"caf\xC3\xA9 \xF0\x9F\x93\x85\"\r", R"("a/b")", R"("")",
        R"("a\"b")", R"("a\u0062")", "\"tab\tinside\"", "\"\xFF\xFE\"", "\"\xC3\"", R"("a" "b")",
        R"("open)", R"(")", R"(42)", R"(["x"])", "\"x\"\v", "\"x\xC0\xAF\""};
    // clang-format on
    for (const std::string& line : lines) {
        SCOPED_TRACE(line);
        const auto plain = plainJsonString(line);
        const auto read = nlohmann::json::parse(line, nullptr, false);
        if (plain) {
            ASSERT_TRUE(read.is_string());
            EXPECT_EQ(*plain, read.get<std::string>());
        }
    }
    EXPECT_EQ(plainJsonString(R"( "dentist fri 3pm" )"), "dentist fri 3pm");
    EXPECT_EQ(plainJsonString("\"caf\xC3\xA9\""), "caf\xC3\xA9");
}

// kelo-core's answers are written as its JSON library writes them (the data file's form, with "/"
// escaped and what is not UTF-8 replaced, is in todo_test).
TEST(JsonString, WritesAsTheJsonLibraryDoes) {
    const std::string texts[] = {"buy milk", "a/b \"q\" \\ \t\n\r\b\f\x01\x1F\x7F",
                                 "caf\xC3\xA9 \xF0\x9F\x93\x85", ""};
    for (const std::string& text : texts) {
        std::string written;
        appendJsonString(written, text, Slash::plain);
        EXPECT_EQ(written, nlohmann::json(text).dump());
    }
}

} // namespace
} // namespace kelo
