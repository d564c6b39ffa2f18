#include "data_file.h"
#include "testing.h"
#include "todo_json.h"
#include "todo_store.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
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
    fs::remove(file);
    store->update(dentist.id, [](Todo& todo) { todo.title = "dentist/ortho"; });
    EXPECT_EQ(notifications, 3) << "a mutation that changes nothing";
    EXPECT_FALSE(fs::exists(file));
    store->update(dentist.id, [](Todo& todo) { todo.minute = 930; });
    expectSaved(4);
    EXPECT_EQ(store->find(dentist.id)->minute, 930);

    store->toggle(taxes.id, utc("2025-03-06T10:00:00Z"));
    expectSaved(5);
    EXPECT_EQ(store->todos()[1].doneAt, utc("2025-03-06T10:00:00Z"));
    store->toggle(taxes.id, utc("2025-03-06T11:00:00Z"));
    expectSaved(6);
    EXPECT_FALSE(store->todos()[1].doneAt);

    store->toggle(dentist.id, utc("2025-03-06T12:00:00Z"));
    const Todo done = store->todos()[0];
    EXPECT_EQ(store->remove(done.id), done);
    expectSaved(8);
    store->restore(done);
    expectSaved(9);
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
    EXPECT_EQ(store->find(stranger), nullptr);
    EXPECT_EQ(store->find(first.id)->title, "renamed");
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
    auto second = open();
    EXPECT_EQ(testing::titles(second->todos()), (std::vector<std::string>{"b", "a"}));
    EXPECT_FALSE(fs::exists(folder / "todos.backup.json")) << "written only when asked";
    second->add("c");
    second->writeBackup();
    EXPECT_EQ(readFile(folder / "todos.backup.json"), saved) << "the bytes read at start-up";
    fs::remove(folder / "todos.backup.json");
    second->writeBackup();
    EXPECT_FALSE(fs::exists(folder / "todos.backup.json")) << "written once";

    writeFile(folder / "list.json", "[]\n");
    auto empty = open(folder / "list.json");
    EXPECT_TRUE(empty->todos().empty());
    empty->writeBackup();
    EXPECT_EQ(readFile(folder / "list.backup.json"), "[]\n");
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(StoreFixture, UnreadableFilesAreMovedAsideWithOneLogLine) {
    const std::pair<std::string, const char*> cases[] = {
        {"{oops", "not valid JSON"},
        {"[]" + std::string(1, '\0') + "[]", "not valid JSON"},
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
        {file, "it is a folder"},
    };
    for (const auto& [path, reason] : cases) {
        auto store = open(path);
        log.lines.clear();
        if (path == file) {
            fs::create_directories(file / "inside");
        }
        ASSERT_TRUE(store->add("milk"));
        EXPECT_EQ(store->todos().size(), 1u);
        ASSERT_FALSE(log.lines.empty()) << path;
        const std::string& line = log.lines.back();
        EXPECT_TRUE(line.starts_with("Kelo: could not save " + path.string() + ": ")) << line;
        EXPECT_NE(line.find(reason), std::string::npos) << line;
        EXPECT_EQ(store->saveError().value_or(""), line.substr(line.find(": ", 6) + 2));
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

// Only a regular file is read. Nothing else at the data file's place is waited on or replaced,
// nothing a link points to is moved, and an earlier moved-aside file is never overwritten.
// The device is a null device of the test's own: a fault here must never reach /dev.
TEST_F(StoreFixture, SpecialFilesAreNeitherReadNorReplaced) {
    const fs::path earlier = folder / "todos.corrupt-1741252502.json";
    writeFile(earlier, "an earlier unreadable list");
    fs::create_directories(folder / "a folder");
    ASSERT_EQ(::mkfifo((folder / "a fifo").c_str(), 0600), 0);
    const fs::path device = folder / "a device";
    const bool haveDevice = ::mknod(device.c_str(), S_IFCHR | 0600, ::makedev(1, 3)) == 0;
    std::vector<std::pair<const char*, std::function<void()>>> cases = {
        {"FIFO", [&] { ::mkfifo(file.c_str(), 0600); }},
        {"link to a FIFO", [&] { fs::create_symlink(folder / "a fifo", file); }},
        {"link to a folder", [&] { fs::create_symlink(folder / "a folder", file); }},
        {"loop of links", [&] { fs::create_symlink(file, file); }},
    };
    if (haveDevice) {
        cases.emplace_back("link to a device", [&] { fs::create_symlink(device, file); });
    }
    int number = 2;
    for (const auto& [what, make] : cases) {
        make();
        const auto type = fs::symlink_status(file).type();
        log.lines.clear();
        open()->add("kept");
        const auto moved = "todos.corrupt-1741252502-" + std::to_string(number++) + ".json";
        EXPECT_EQ(fs::symlink_status(folder / moved).type(), type) << what << " set aside itself";
        EXPECT_TRUE(log.lines[0].ends_with("Moved it to " + moved + ".")) << log.lines[0];
        EXPECT_EQ(testing::titles(std::get<std::vector<Todo>>(readTodosFile(file))),
                  (std::vector<std::string>{"kept"}));
        fs::remove(file);
    }
    EXPECT_EQ(readFile(earlier), "an earlier unreadable list");
    EXPECT_EQ(fs::symlink_status(folder / "a fifo").type(), fs::file_type::fifo);
    EXPECT_TRUE(fs::is_directory(folder / "a folder"));
    if (!haveDevice) {
        GTEST_SKIP() << "devices need the right to make device nodes";
    }
    // A device named as the data file is neither moved nor written.
    log.lines.clear();
    open(device)->add("nowhere");
    EXPECT_EQ(fs::symlink_status(device).type(), fs::file_type::character);
    ASSERT_EQ(log.lines.size(), 2u);
    EXPECT_EQ(log.lines[0],
              "Kelo: could not read " + device.string() + " (it is a device). Left it in place.");
    EXPECT_EQ(log.lines[1], "Kelo: could not save " + device.string() + ": it is a device");
}

// The move can fail (here the new name is too long for the system); then the file stays, the
// log does not claim a move, and no save writes over the only copy.
TEST_F(StoreFixture, AnUnreadableFileThatCannotBeMovedIsNeverOverwritten) {
    fs::path deep = folder.path;
    while (deep.string().size() < 4080) {
        deep /= std::string(std::min<std::size_t>(200, 4080 - deep.string().size()), 'd');
    }
    fs::create_directories(deep);
    const fs::path list = deep / "x.json";
    writeFile(list, "{unreadable");
    auto store = open(list);
    ASSERT_EQ(log.lines.size(), 1u);
    EXPECT_NE(log.lines[0].find("Could not move it aside (File name too long)"), std::string::npos)
        << log.lines[0];
    EXPECT_EQ(log.lines[0].find("Moved it to"), std::string::npos);
    store->add("milk");
    EXPECT_EQ(readFile(list), "{unreadable");
    EXPECT_TRUE(store->saveError());
    EXPECT_EQ(store->todos().size(), 1u);
}

TEST_F(StoreFixture, ADataFileThatIsALinkIsWrittenThroughToItsTarget) {
    fs::create_directories(folder / "synced");
    const fs::path target = folder / "synced" / "list.json";
    {
        auto seed = open(target);
        seed->add("first");
    }
    fs::create_symlink("synced/list.json", file);
    auto store = open();
    ASSERT_EQ(store->todos().size(), 1u);
    store->add("second");
    store->writeBackup();
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_EQ(testing::titles(std::get<std::vector<Todo>>(readTodosFile(target))),
              (std::vector<std::string>{"first", "second"}));
    EXPECT_TRUE(fs::exists(folder / "synced" / "list.backup.json"));

    writeFile(target, "{unreadable");
    open();
    EXPECT_TRUE(fs::is_symlink(file)) << "the target is set aside, the link kept";
    EXPECT_EQ(readFile(folder / "synced" / "todos.corrupt-1741252502.json"), "{unreadable");
}

// Another program (a sync tool, an editor) changes the file while the store holds it: the store
// takes in what it finds, applies its own change to that, and neither side loses a task.
TEST_F(StoreFixture, ChangesByAnotherProgramAreTakenInAndKept) {
    auto store = open();
    const Todo ours = *store->add("ours");
    const auto replace = [&](std::vector<Todo> todos) {
        ASSERT_TRUE(
            std::holds_alternative<FileIdentity>(writeFileAtomically(file, encodeTodos(todos))));
    };
    const auto onDisk = [&] {
        return testing::titles(std::get<std::vector<Todo>>(readTodosFile(file)));
    };
    using Titles = std::vector<std::string>;

    replace({ours, testing::todo("theirs")});
    notifications = 0;
    store->reloadIfChanged();
    store->reloadIfChanged();
    EXPECT_EQ(testing::titles(store->todos()), (Titles{"ours", "theirs"}));
    EXPECT_EQ(notifications, 1);

    // Replaced again, and changed in Kelo before the store looked.
    replace({ours, store->todos()[1], testing::todo("more")});
    store->toggle(ours.id, fixedNow);
    EXPECT_EQ(onDisk(), (Titles{"ours", "theirs", "more"}));
    EXPECT_TRUE(store->find(ours.id)->isDone());

    // Edited in place: same file, other content.
    writeFile(file, encodeTodos({store->todos()[0]}));
    store->add("added after the edit");
    EXPECT_EQ(onDisk(), (Titles{"ours", "added after the edit"}));

    // Deleted: what Kelo holds stays and is written with the next change.
    fs::remove(file);
    store->reloadIfChanged();
    store->add("after the deletion");
    EXPECT_EQ(onDisk(), (Titles{"ours", "added after the edit", "after the deletion"}));

    // An unreadable replacement is set aside and Kelo's list is written back at once.
    writeFile(file, "{broken");
    store->reloadIfChanged();
    EXPECT_EQ(readFile(folder / "todos.corrupt-1741252502.json"), "{broken");
    EXPECT_EQ(onDisk(), testing::titles(store->todos()));
    EXPECT_EQ(store->todos().size(), 3u);
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
    EXPECT_EQ(TodoStore::defaultPath(), fs::path("/srv/data/Kelo/todos.json"));
    ::setenv("XDG_DATA_HOME", "relative/ignored", 1);
    ::setenv("HOME", "/home/someone", 1);
    EXPECT_EQ(TodoStore::defaultPath(), fs::path("/home/someone/.local/share/Kelo/todos.json"));
}

} // namespace
} // namespace kelo
