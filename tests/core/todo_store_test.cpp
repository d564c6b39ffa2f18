#include "testing.h"
#include "todo_json.h"
#include "todo_store.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kelo {
namespace {

namespace fs = std::filesystem;
using testing::readFile;
using testing::utc;
using testing::writeFile;

const Timestamp fixedNow = utc("2025-03-06T09:15:02Z") + std::chrono::milliseconds(731);

struct StoreFixture : ::testing::Test {
    testing::ScratchFolder folder;
    testing::CapturedLog log;
    fs::path file = folder / "todos.json";
    int notifications = 0;

    std::unique_ptr<TodoStore> open(const fs::path& path) {
        auto store = std::make_unique<TodoStore>(
            path, TodoStore::Options{[] { return fixedNow; }, log.sink()});
        store->onChange([this] { ++notifications; });
        return store;
    }
    std::unique_ptr<TodoStore> open() { return open(file); }
};

TEST_F(StoreFixture, WritesNothingUntilTheFirstTaskIsAdded) {
    const fs::path nested = folder / "a" / "b" / "todos.json";
    auto store = open(nested);
    EXPECT_TRUE(store->todos().empty());
    for (const char* blank : {"", "   ", " \n\t ", "\xC2\xA0\xE3\x80\x80"}) {
        EXPECT_FALSE(store->add(blank, "2025-03-06", 600)) << blank;
    }
    EXPECT_EQ(notifications, 0);
    EXPECT_FALSE(fs::exists(folder / "a"));

    const auto added = store->add("  milk \n", std::nullopt, 540);
    ASSERT_TRUE(added);
    EXPECT_EQ(added->title, "milk");
    EXPECT_FALSE(added->day);
    EXPECT_FALSE(added->minute) << "a time without a day is never stored";
    EXPECT_EQ(added->created, fixedNow);
    EXPECT_EQ(readFile(nested), encodeTodos(store->todos()));
    EXPECT_EQ(fs::status(folder / "a").permissions(), fs::perms::owner_all);
    EXPECT_EQ(fs::status(folder / "a" / "b").permissions(), fs::perms::owner_all);
    EXPECT_EQ(fs::status(nested).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(StoreFixture, EveryMutationNotifiesOnceAndIsOnDiskWhenItReturns) {
    auto store = open();
    const auto expectSaved = [&](int count) {
        EXPECT_EQ(notifications, count);
        EXPECT_EQ(readFile(file), encodeTodos(store->todos()));
    };
    const Todo dentist = *store->add("dentist", "2025-03-07", 900);
    const Todo taxes = *store->add("taxes");
    expectSaved(2);
    store->update(dentist.id, [](Todo& todo) { todo.title = "dentist/ortho"; });
    expectSaved(3);

    store->toggle(taxes.id, utc("2025-03-06T10:00:00Z"));
    expectSaved(4);
    EXPECT_EQ(store->todos()[1].doneAt, utc("2025-03-06T10:00:00Z"));
    store->toggle(taxes.id, utc("2025-03-06T11:00:00Z"));
    expectSaved(5);
    EXPECT_FALSE(store->todos()[1].doneAt);

    store->toggle(dentist.id, utc("2025-03-06T12:00:00Z"));
    const Todo done = store->todos()[0];
    EXPECT_EQ(store->remove(done.id), done);
    expectSaved(7);
    store->restore(done);
    expectSaved(8);
    ASSERT_EQ(store->todos().size(), 2u);
    EXPECT_EQ(store->todos().back(), done) << "restored at the end with every field";
}

TEST_F(StoreFixture, UnknownIdsChangeNothingAndDuplicatedIdsActOnTheFirst) {
    auto store = open();
    const Todo first = *store->add("first");
    Todo twin = first;
    twin.title = "twin";
    store->restore(twin);
    store->update(first.id, [](Todo& todo) { todo.title = "renamed"; });
    EXPECT_EQ(testing::titles(store->todos()), (std::vector<std::string>{"renamed", "twin"}));

    fs::remove(file);
    notifications = 0;
    const Uuid stranger = Uuid::random();
    store->update(stranger, [](Todo& todo) { todo.title = "changed"; });
    store->toggle(stranger, fixedNow);
    EXPECT_FALSE(store->remove(stranger));
    EXPECT_EQ(notifications, 0);
    EXPECT_FALSE(fs::exists(file)) << "nothing was saved";
    EXPECT_EQ(testing::titles(store->todos()), (std::vector<std::string>{"renamed", "twin"}));
}

TEST_F(StoreFixture, LoadKeepsFileOrderAndWritesTheExactBytesAsBackup) {
    auto first = open();
    first->add("b", "2025-03-07");
    first->add("a");
    const std::string saved = readFile(file);
    first.reset();
    EXPECT_EQ(testing::titles(open()->todos()), (std::vector<std::string>{"b", "a"}));
    EXPECT_EQ(readFile(folder / "todos.backup.json"), saved);

    writeFile(folder / "list.json", "[]\n");
    EXPECT_TRUE(open(folder / "list.json")->todos().empty());
    EXPECT_EQ(readFile(folder / "list.backup.json"), "[]\n");
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(StoreFixture, UnreadableFilesAreMovedAsideWithOneLogLine) {
    const std::pair<std::string, const char*> cases[] = {
        {"{oops", "not valid JSON"},
        {R"([{"id": "2C5F4A0E-1B7D-4E3A-9C21-7D0B6A5E8F13", "title": "x"}])", "\"created\""},
        {std::string(maximumDataFileSize + 1, ' '), "larger than 32 MiB"},
    };
    const fs::path list = folder / "list.json";
    const fs::path aside = folder / "todos.corrupt-1741252502.json";
    for (const auto& [bytes, reason] : cases) {
        SCOPED_TRACE(reason);
        log.lines.clear();
        writeFile(list, bytes);
        auto store = open(list);
        EXPECT_TRUE(store->todos().empty());
        EXPECT_FALSE(fs::exists(list));
        EXPECT_EQ(readFile(aside).size(), bytes.size());
        EXPECT_FALSE(fs::exists(folder / "list.backup.json"));
        ASSERT_EQ(log.lines.size(), 1u);
        const std::string& line = log.lines[0];
        EXPECT_TRUE(line.starts_with("Kelo: could not read " + list.string() + " (")) << line;
        EXPECT_TRUE(line.ends_with("). Moved it to todos.corrupt-1741252502.json.")) << line;
        EXPECT_NE(line.find(reason), std::string::npos) << line;
        fs::remove(aside);

        store->add("fresh start");
        EXPECT_EQ(readFile(list), encodeTodos(store->todos()));
    }
}

TEST_F(StoreFixture, LeftoverTemporaryFilesAreRemovedAtLoad) {
    const std::pair<const char*, bool> files[] = {{".todos.json.Ab12Cd", false},
                                                  {".todos.backup.json.x9Y8z7", false},
                                                  {".todos.json.notours", true},
                                                  {"notes.txt", true}};
    for (const auto& [name, kept] : files) {
        writeFile(folder / name, "left over");
    }
    open();
    for (const auto& [name, kept] : files) {
        EXPECT_EQ(fs::exists(folder / name), kept) << name;
    }
}

// A folder that cannot be created, or a data file that became a folder: the list stays in memory.
TEST_F(StoreFixture, ImpossibleSavesKeepTheListAndLogOneLine) {
    writeFile(folder / "plain-file", "");
    const std::pair<fs::path, const char*> cases[] = {
        {folder / "plain-file" / "Kelo" / "todos.json", "Not a directory"},
        {file, "Is a directory"},
    };
    for (const auto& [path, reason] : cases) {
        auto store = open(path);
        log.lines.clear();
        if (path == file) {
            fs::create_directories(file / "inside");
        }
        ASSERT_TRUE(store->add("milk"));
        EXPECT_EQ(store->todos().size(), 1u);
        ASSERT_EQ(log.lines.size(), 1u) << path;
        EXPECT_TRUE(log.lines[0].starts_with("Kelo: could not save " + path.string() + ": "))
            << log.lines[0];
        EXPECT_NE(log.lines[0].find(reason), std::string::npos) << log.lines[0];
    }
}

// KELO_DATA naming a folder must never move that folder aside.
TEST_F(StoreFixture, AFolderInTheDataFilesPlaceIsLeftAlone) {
    fs::create_directories(file / "inside");
    auto store = open();
    EXPECT_TRUE(fs::exists(file / "inside"));
    EXPECT_TRUE(store->todos().empty());
    ASSERT_EQ(log.lines.size(), 1u);
    EXPECT_EQ(log.lines[0],
              "Kelo: could not read " + file.string() + " (it is a folder). Left it in place.");
}

// A file size limit refuses the save as a full disk would.
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
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path), fs::directory_iterator()), 1)
        << "only the data file remains";

    store->add("after the disk was freed");
    EXPECT_EQ(readFile(file), encodeTodos(store->todos()));
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

// No other test of this program reads these variables.
TEST(TodoStoreDefault, FollowsXdgDataHome) {
    ::setenv("XDG_DATA_HOME", "/srv/data", 1);
    EXPECT_EQ(TodoStore::defaultURL(), fs::path("/srv/data/Kelo/todos.json"));
    ::setenv("XDG_DATA_HOME", "relative/ignored", 1);
    ::setenv("HOME", "/home/someone", 1);
    EXPECT_EQ(TodoStore::defaultURL(), fs::path("/home/someone/.local/share/Kelo/todos.json"));
}

} // namespace
} // namespace kelo
