#include "testing.h"
#include "todo_json.h"
#include "todo_store.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kelo {
namespace {

namespace fs = std::filesystem;
using testing::CapturedLog;
using testing::readFile;
using testing::ScratchFolder;
using testing::utc;
using testing::writeFile;

constexpr auto fixedNow = "2025-03-06T09:15:02Z";

struct StoreFixture : ::testing::Test {
    ScratchFolder folder;
    CapturedLog log;
    fs::path file = folder / "todos.json";

    std::unique_ptr<TodoStore> open(fs::path path = {}) {
        return std::make_unique<TodoStore>(
            path.empty() ? file : path,
            TodoStore::Options{[] { return utc(fixedNow) + std::chrono::milliseconds(731); },
                               log.sink()});
    }
};

mode_t modeOf(const fs::path& path) {
    struct stat info {};
    ::stat(path.c_str(), &info);
    return info.st_mode & 07777;
}

TEST_F(StoreFixture, FirstStartWritesNothingUntilTheFirstChange) {
    const fs::path nested = folder / "a" / "b" / "todos.json";
    auto store = open(nested);
    EXPECT_TRUE(store->todos().empty());
    EXPECT_FALSE(fs::exists(folder / "a"));
    EXPECT_TRUE(log.lines.empty());

    const auto added = store->add("  milk \n", std::nullopt, 540);
    ASSERT_TRUE(added);
    EXPECT_EQ(added->title, "milk");
    EXPECT_FALSE(added->day);
    EXPECT_FALSE(added->minute) << "a time without a day is never stored";
    EXPECT_EQ(added->created, utc(fixedNow) + std::chrono::milliseconds(731));
    EXPECT_EQ(readFile(nested), encodeTodos(store->todos()));
    EXPECT_EQ(modeOf(folder / "a"), 0700u);
    EXPECT_EQ(modeOf(folder / "a" / "b"), 0700u);
    EXPECT_EQ(modeOf(nested), 0600u);
}

TEST_F(StoreFixture, BlankTitlesAddNothing) {
    auto store = open();
    int notifications = 0;
    store->onChange([&] { ++notifications; });
    for (const char* blank : {"", "   ", " \n\t ", "\xC2\xA0\xE3\x80\x80"}) {
        EXPECT_FALSE(store->add(blank, "2025-03-06", 600)) << blank;
    }
    EXPECT_EQ(notifications, 0);
    EXPECT_FALSE(fs::exists(file));
}

TEST_F(StoreFixture, EveryMutationNotifiesOnceAndIsOnDiskWhenItReturns) {
    auto store = open();
    int notifications = 0;
    store->onChange([&] { ++notifications; });
    const auto expectSaved = [&](int count) {
        EXPECT_EQ(notifications, count);
        EXPECT_EQ(readFile(file), encodeTodos(store->todos()));
    };

    const Todo dentist = *store->add("dentist", "2025-03-07", 900);
    const Todo taxes = *store->add("taxes");
    expectSaved(2);
    store->update(dentist.id, [](Todo& todo) { todo.title = "dentist/ortho"; });
    expectSaved(3);
    EXPECT_NE(readFile(file).find("dentist\\/ortho"), std::string::npos);

    store->toggle(taxes.id, utc("2025-03-06T10:00:00Z"));
    expectSaved(4);
    EXPECT_EQ(store->todos()[1].doneAt, utc("2025-03-06T10:00:00Z"));
    store->toggle(taxes.id, utc("2025-03-06T11:00:00Z"));
    expectSaved(5);
    EXPECT_EQ(readFile(file).find("doneAt"), std::string::npos);

    Todo done = store->todos()[0];
    store->toggle(done.id, utc("2025-03-06T12:00:00Z"));
    done = store->todos()[0];
    const auto removed = store->remove(done.id);
    expectSaved(7);
    ASSERT_TRUE(removed);
    EXPECT_EQ(*removed, done);
    store->restore(*removed);
    expectSaved(8);
    ASSERT_EQ(store->todos().size(), 2u);
    EXPECT_EQ(store->todos().back(), done) << "restored at the end with every field";
}

TEST_F(StoreFixture, UnknownIdsChangeNothing) {
    auto store = open();
    store->add("dentist");
    const std::string before = readFile(file);
    fs::remove(file);
    int notifications = 0;
    store->onChange([&] { ++notifications; });
    const Uuid stranger = Uuid::random();
    store->update(stranger, [](Todo& todo) { todo.title = "changed"; });
    store->toggle(stranger, utc(fixedNow));
    EXPECT_FALSE(store->remove(stranger));
    EXPECT_EQ(notifications, 0);
    EXPECT_FALSE(fs::exists(file)) << "nothing was saved";
    EXPECT_EQ(store->todos().front().title, "dentist");
}

TEST_F(StoreFixture, ActsOnTheFirstTaskWithADuplicatedId) {
    auto store = open();
    const Todo first = *store->add("first");
    Todo twin = first;
    twin.title = "twin";
    store->restore(twin);
    store->update(first.id, [](Todo& todo) { todo.title = "renamed"; });
    EXPECT_EQ(store->todos()[0].title, "renamed");
    EXPECT_EQ(store->todos()[1].title, "twin");
}

TEST_F(StoreFixture, LoadKeepsFileOrderAndWritesTheExactBytesAsBackup) {
    const std::string bytes = encodeTodos({});
    writeFile(folder / "list.json", "[]");
    EXPECT_TRUE(open(folder / "list.json")->todos().empty());
    EXPECT_EQ(readFile(folder / "list.backup.json"), "[]");

    auto first = open();
    first->add("b", "2025-03-07");
    first->add("a");
    const std::string saved = readFile(file);
    first.reset();
    auto second = open();
    ASSERT_EQ(second->todos().size(), 2u);
    EXPECT_EQ(second->todos()[0].title, "b");
    EXPECT_EQ(readFile(folder / "todos.backup.json"), saved);
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(StoreFixture, UnreadableFilesAreMovedAsideWithOneLogLine) {
    struct Case {
        const char* name;
        std::string bytes;
        const char* reason;
    };
    const Case cases[] = {
        {"not JSON", "{oops", "not valid JSON"},
        {"missing created", R"([{"id": "2C5F4A0E-1B7D-4E3A-9C21-7D0B6A5E8F13", "title": "x"}])",
         "\"created\""},
        {"fractional seconds",
         R"([{"id": "2C5F4A0E-1B7D-4E3A-9C21-7D0B6A5E8F13", "title": "x", "created": "2025-03-06T09:15:02.5Z"}])",
         "\"created\""},
        {"too large", std::string(maximumDataFileSize + 1, ' '), "larger than 32 MiB"},
        {"too deep", std::string(100'000, '['), "nests deeper"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        log.lines.clear();
        const fs::path list = folder / "list.json";
        writeFile(list, c.bytes);
        auto store = open(list);
        EXPECT_TRUE(store->todos().empty());
        EXPECT_FALSE(fs::exists(list));
        const fs::path aside = folder / "todos.corrupt-1741252502.json";
        EXPECT_EQ(readFile(aside).size(), c.bytes.size());
        EXPECT_FALSE(fs::exists(folder / "list.backup.json"));
        ASSERT_EQ(log.lines.size(), 1u);
        const std::string& line = log.lines[0];
        EXPECT_TRUE(line.starts_with("Kelo: could not read " + list.string() + " (")) << line;
        EXPECT_TRUE(line.ends_with("). Moved it to todos.corrupt-1741252502.json.")) << line;
        EXPECT_NE(line.find(c.reason), std::string::npos) << line;
        fs::remove(aside);

        store->add("fresh start");
        EXPECT_EQ(store->todos().size(), 1u);
        EXPECT_TRUE(fs::exists(list));
    }
}

TEST_F(StoreFixture, LeftoverTemporaryFilesAreRemovedAtLoad) {
    writeFile(folder / ".todos.json.Ab12Cd", "half a save");
    writeFile(folder / ".todos.backup.json.x9Y8z7", "half a backup");
    writeFile(folder / ".todos.json.notours", "someone else's");
    writeFile(folder / "notes.txt", "keep");
    open();
    EXPECT_FALSE(fs::exists(folder / ".todos.json.Ab12Cd"));
    EXPECT_FALSE(fs::exists(folder / ".todos.backup.json.x9Y8z7"));
    EXPECT_TRUE(fs::exists(folder / ".todos.json.notours"));
    EXPECT_TRUE(fs::exists(folder / "notes.txt"));
}

TEST_F(StoreFixture, AFolderThatCannotBeCreatedKeepsTheListInMemory) {
    writeFile(folder / "plain-file", "");
    const fs::path impossible = folder / "plain-file" / "Kelo" / "todos.json";
    auto store = open(impossible);
    ASSERT_TRUE(store->add("milk"));
    EXPECT_EQ(store->todos().size(), 1u);
    ASSERT_EQ(log.lines.size(), 1u);
    EXPECT_TRUE(log.lines[0].starts_with("Kelo: could not save " + impossible.string() + ": "))
        << log.lines[0];
    EXPECT_NE(log.lines[0].find("Not a directory"), std::string::npos) << log.lines[0];
}

// Runs the saves with a file size limit, as a full disk would refuse them.
TEST_F(StoreFixture, AFailedWriteLeavesThePreviousFileAndNoTemporaryFile) {
    auto store = open();
    store->add("first");
    const std::string before = readFile(file);

    rlimit original{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &original), 0);
    const auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit tiny = original;
    tiny.rlim_cur = 64;
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &tiny), 0);
    store->add(std::string(500, 'x'));
    ::setrlimit(RLIMIT_FSIZE, &original);
    std::signal(SIGXFSZ, previousHandler);

    EXPECT_EQ(store->todos().size(), 2u);
    EXPECT_EQ(readFile(file), before);
    ASSERT_EQ(log.lines.size(), 1u);
    EXPECT_NE(log.lines[0].find("File too large"), std::string::npos) << log.lines[0];
    int entries = 0;
    for ([[maybe_unused]] const auto& entry : fs::directory_iterator(folder.path())) {
        ++entries;
    }
    EXPECT_EQ(entries, 1) << "only the data file remains";

    store->add("after the disk was freed");
    EXPECT_EQ(readFile(file), encodeTodos(store->todos()));
}

TEST_F(StoreFixture, ADataFileThatIsAFolderCannotBeReplaced) {
    fs::create_directories(file / "inside");
    auto store = open();
    log.lines.clear();
    fs::create_directories(file / "inside");
    store->add("milk");
    ASSERT_EQ(log.lines.size(), 1u);
    EXPECT_TRUE(log.lines[0].starts_with("Kelo: could not save ")) << log.lines[0];
}

// A process killed at any moment of a save leaves the old or the new list, never a broken file.
TEST_F(StoreFixture, KillingTheProcessDuringSavesNeverBreaksTheFile) {
    {
        auto seed = open();
        for (int i = 0; i < 200; ++i) {
            seed->add("seed task " + std::to_string(i), "2025-03-06", i);
        }
    }
    for (int round = 0; round < 20; ++round) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            TodoStore store(file, TodoStore::Options{currentTime, [](std::string_view) {}});
            for (;;) {
                store.add("more");
            }
        }
        ::usleep(static_cast<useconds_t>(2000 + round * 1500));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        const auto result = readTodosFile(file);
        ASSERT_TRUE(std::holds_alternative<std::vector<Todo>>(result))
            << "round " << round << ": " << std::get<std::string>(result);
        EXPECT_GE(std::get<std::vector<Todo>>(result).size(), 200u);
    }
}

TEST(TodoStoreDefault, FollowsXdgDataHome) {
    const char* saved = std::getenv("XDG_DATA_HOME");
    const std::string previous = saved ? saved : "";
    ::setenv("XDG_DATA_HOME", "/srv/data", 1);
    EXPECT_EQ(TodoStore::defaultURL(), fs::path("/srv/data/Kelo/todos.json"));
    ::setenv("XDG_DATA_HOME", "relative/ignored", 1);
    ::setenv("HOME", "/home/someone", 1);
    EXPECT_EQ(TodoStore::defaultURL(), fs::path("/home/someone/.local/share/Kelo/todos.json"));
    if (saved) {
        ::setenv("XDG_DATA_HOME", previous.c_str(), 1);
    } else {
        ::unsetenv("XDG_DATA_HOME");
    }
}

} // namespace
} // namespace kelo
