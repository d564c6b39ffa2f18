#include "testing.h"

#include <cstring>
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
    std::mt19937 random(20250306);
    const auto at = [&] { return random() % seed.size(); };
    const std::string oddBytes[] = {"\0"s, "\xFF", "\xC0\x80", "\xED\xA0\x80", "\"", "\\", "\n",
                                    "{",   "]",    ",",        "\xEF\xBB\xBF"};
    for (std::size_t length = 0; length < seed.size(); ++length) {
        files.push_back(seed.substr(0, length));
        for (int flips = 0; flips < 4; ++flips) {
            files.push_back(seed);
            files.back()[at()] ^= static_cast<char>(1 << (random() % 8));
        }
        const std::size_t where = at();
        files.push_back(seed.substr(0, where) + oddBytes[length % 11] + seed.substr(where + 1));
    }
    for (const char* name : {"created", "day", "doneAt", "id", "minute", "title"}) {
        for (const char* value : {"null", "1", "-1", "1.5", "true", "\"x\"", "[]", "{}", "1e400",
                                  "99999999999999999999", "\"2025-02-29T00:00:00Z\""}) {
            // The member's first value in the seed, replaced.
            const std::size_t start = seed.find("\""s + name + "\" : ") + std::strlen(name) + 5;
            files.push_back(seed.substr(0, start) + value +
                            seed.substr(seed.find_first_of(",\n", start)));
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
    ASSERT_GT(files.size(), 2000u);
    int readable = 0;
    for (std::size_t i = 0; i < files.size(); ++i) {
        SCOPED_TRACE("file " + std::to_string(i) + ": " + files[i]);
        // Every eighth replaces the file of a running store, as sync tools deliver it (written
        // beside, then renamed over); half of those the watcher reports, half the next change
        // meets.
        const bool replacing = i % 8 == 0;
        const bool watched = i % 16 == 0;
        std::unique_ptr<TodoStore> store;
        if (replacing) {
            testing::writeFile(file, seed);
            store = open();
        }
        std::vector<Todo> kept = replacing ? store->todos() : std::vector<Todo>{};
        testing::writeFile(folder / "incoming", files[i]);
        fs::rename(folder / "incoming", file);
        if (watched) {
            store->reloadIfChanged();
        } else if (!replacing) {
            store = open();
        }
        const DecodeResult read = decodeTodos(files[i]);
        const auto* todos = std::get_if<std::vector<Todo>>(&read);
        readable += todos != nullptr;
        kept = todos != nullptr ? *todos : kept;
        EXPECT_TRUE(!watched || todos || testing::onDisk(file) == kept) << "written back at once";
        store->add("probe");
        kept.push_back(store->todos().back());
        ASSERT_EQ(testing::onDisk(file), kept);
        EXPECT_EQ(store->todos(), kept);
        if (todos == nullptr) {
            ASSERT_EQ(testing::readFile(aside), files[i]) << "set aside as it was";
            fs::remove(aside);
        }
    }
    EXPECT_GT(readable, 100) << "the corpus must also hold readable files";
}

} // namespace
} // namespace kelo
