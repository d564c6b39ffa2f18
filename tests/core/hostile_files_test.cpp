#include "data_file.h"
#include "testing.h"
#include "todo_json.h"
#include "todo_store.h"

#include <gtest/gtest.h>
#include <random>

// A few thousand data files that Kelo did not write: cut short, with flipped bits, wrong types,
// odd bytes and trailing data (special files are in todo_store_test). The store must neither hang
// nor crash on any of them, and lose no task: an unreadable file is set aside byte for byte, a
// readable one is taken in and written back so that it reads back equal, both at start-up and when
// it replaces the file behind Kelo's back.
namespace kelo {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

const std::string seed =
    encodeTodos({testing::todo("dentist", "2025-03-07", 900),
                 testing::todo("caf\xC3\xA9 \xF0\x9F\x93\x85 \"quoted\" a/b"),
                 testing::todo("done", "2025-03-05", {}, testing::utc("2025-03-06T08:00:00Z"))});

std::vector<std::string> hostileFiles() {
    std::vector<std::string> files;
    for (std::size_t length = 0; length < seed.size(); ++length) {
        files.push_back(seed.substr(0, length));
    }
    std::mt19937 random(20250306);
    const auto position = [&] { return random() % seed.size(); };
    for (int i = 0; i < 1500; ++i) {
        std::string flipped = seed;
        flipped[position()] ^= static_cast<char>(1 << (random() % 8));
        files.push_back(flipped);
    }
    const std::string oddBytes[] = {
        std::string(1, '\0'), "\xFF", "\xC0\x80", "\xED\xA0\x80", "\"", "\\", "\n", "{", "]", ",",
        "\xEF\xBB\xBF"};
    for (int i = 0; i < 60; ++i) {
        const std::size_t at = position();
        for (const std::string& odd : oddBytes) {
            files.push_back(seed.substr(0, at) + odd + seed.substr(at + 1));
        }
    }
    for (const char* name : {"created", "day", "doneAt", "id", "minute", "title"}) {
        for (const char* value : {"null", "1", "-1", "1.5", "true", "\"x\"", "[]", "{}", "1e400",
                                  "99999999999999999999", "\"2025-02-29T00:00:00Z\""}) {
            // The member's first value in the seed, replaced.
            const std::string key = std::string("\"") + name + "\" : ";
            const std::size_t at = seed.find(key) + key.size();
            files.push_back(seed.substr(0, at) + value +
                            seed.substr(seed.find_first_of(",\n", at)));
        }
    }
    for (const std::string& tail : {" []"s, "x"s, "\n\n"s, " {}"s, "]"s, "\0"s}) {
        files.push_back(seed + tail);
    }
    return files;
}

using HostileFiles = testing::StoreTest;

TEST_F(HostileFiles, NoneLosesATaskAtStartUpOrWhenItReplacesTheFile) {
    const std::vector<std::string> files = hostileFiles();
    ASSERT_GT(files.size(), 2500u);
    int readable = 0;
    for (std::size_t i = 0; i < files.size(); ++i) {
        const std::string& bytes = files[i];
        SCOPED_TRACE("file " + std::to_string(i));
        const DecodeResult expected = decodeTodos(bytes);
        const auto* todos = std::get_if<std::vector<Todo>>(&expected);
        const bool replacing = i % 8 == 0;
        std::unique_ptr<TodoStore> store;
        std::vector<Todo> kept;
        if (replacing) {
            testing::writeFile(file, seed);
            store = open();
            kept = store->todos();
        }
        // A replacement arrives as sync tools deliver it: written beside, then renamed over.
        testing::writeFile(folder / "incoming", bytes);
        fs::rename(folder / "incoming", file);
        if (replacing) {
            store->reloadIfChanged();
        } else {
            store = open();
        }
        if (todos != nullptr) {
            ++readable;
            EXPECT_EQ(store->todos(), *todos);
            store->add("probe");
            std::vector<Todo> written = *todos;
            written.push_back(store->todos().back());
            ASSERT_EQ(testing::onDisk(file), written) << bytes;
        } else {
            ASSERT_EQ(testing::readFile(aside), bytes) << "set aside as it was";
            EXPECT_EQ(store->todos(), kept);
            if (replacing) {
                EXPECT_EQ(testing::onDisk(file), kept) << "Kelo's list written back";
            }
            fs::remove(aside);
        }
    }
    EXPECT_GT(readable, 100) << "the corpus must also hold readable files";
}

} // namespace
} // namespace kelo
