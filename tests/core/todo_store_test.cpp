#include "data_file_lock.h"
#include "testing.h"

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kelo {
namespace {

namespace fs = std::filesystem;
using testing::onDisk;
using testing::readFile;
using testing::titles;
using testing::utc;
using testing::writeFile;
using StoreTest = testing::StoreTest;
using Titles = std::vector<std::string>;

// Nothing is written until the first task is added; from then on every change notifies once and
// is on disk when it returns.
TEST_F(StoreTest, EveryChangeNotifiesOnceAndIsOnDiskWhenItReturns) {
    const fs::path nested = folder / "a" / "b" / "todos.json";
    auto store = open(nested);
    for (const char* blank : {"", " \n\t ", "\xC2\xA0\xE3\x80\x80"}) {
        EXPECT_FALSE(store->add(blank, "2025-03-06", 600)) << blank;
    }
    EXPECT_FALSE(fs::exists(folder / "a"));
    int changes = 0;
    const auto expectSaved = [&](int count) {
        EXPECT_EQ(notifications, changes += count);
        EXPECT_EQ(readFile(nested), encodeTodos(store->todos()));
    };
    const Todo taxes = *store->add("\xE3\x80\x80 taxes \n", std::nullopt, 540);
    const Todo dentist = *store->add("dentist", "2025-03-07", 900);
    expectSaved(2);
    EXPECT_EQ(taxes, (Todo{{}, taxes.id, "taxes", {}, now})) << "no time without a day";
    EXPECT_EQ(fs::status(folder / "a").permissions(), fs::perms::owner_all);
    EXPECT_EQ(fs::status(folder / "a" / "b").permissions(), fs::perms::owner_all);
    EXPECT_EQ(fs::status(nested).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    store->toggle(taxes.id, utc("2025-03-06T10:00:00Z"));
    expectSaved(1);
    EXPECT_EQ(store->find(taxes.id)->doneAt, utc("2025-03-06T10:00:00Z"));
    store->toggle(taxes.id, utc("2025-03-06T11:00:00Z"));
    expectSaved(1);
    EXPECT_FALSE(store->find(taxes.id)->doneAt);

    store->toggle(dentist.id, now);
    const Todo done = *store->find(dentist.id);
    EXPECT_EQ(store->remove(done.id), done);
    expectSaved(2);
    Todo twin = done;
    twin.title = "twin";
    store->restore(done);
    store->restore(twin);
    expectSaved(2);
    EXPECT_EQ(store->todos(), (std::vector<Todo>{taxes, done, twin})) << "restored at the end";
    const auto retitle = [](Todo& todo) { todo.title = "renamed"; };
    store->update(done.id, retitle);
    expectSaved(1);
    EXPECT_EQ(titles(store->todos()), (Titles{"taxes", "renamed", "twin"})) << "the first of two";

    // Changes that change nothing neither save nor notify.
    fs::remove(nested);
    store->update(done.id, retitle);
    const Uuid stranger = Uuid::random();
    store->update(stranger, retitle);
    store->toggle(stranger, now);
    EXPECT_FALSE(store->remove(stranger));
    EXPECT_EQ(store->find(stranger), nullptr);
    EXPECT_EQ(notifications, changes);
    EXPECT_FALSE(fs::exists(nested));
    EXPECT_TRUE(log.empty());
}

// Leftover temporary files of ours are removed at load; a name of the right length that is not
// ours is kept.
TEST_F(StoreTest, LoadKeepsFileOrderRemovesLeftoversAndBacksUpTheExactBytesOnce) {
    const std::string bytes = encodeTodos({testing::todo("b", "2025-03-07"), testing::todo("a")});
    writeFile(file, bytes + "\n");
    const std::pair<const char*, bool> files[] = {{".todos.json.Ab12Cd", false},
                                                  {".todos.backup.json.x9Y8z7", false},
                                                  {".todos.json.notours", true},
                                                  {".todos.json.not-us", true},
                                                  {"notes.txt", true}};
    for (const auto& [name, kept] : files) {
        writeFile(folder / name, "left over");
    }
    auto store = open();
    for (const auto& [name, kept] : files) {
        EXPECT_EQ(fs::exists(folder / name), kept) << name;
    }
    EXPECT_EQ(titles(store->todos()), (Titles{"b", "a"}));
    const fs::path backup = folder / "todos.backup.json";
    EXPECT_FALSE(fs::exists(backup)) << "written only when asked";
    store->add("c");
    store->writeBackup();
    EXPECT_EQ(readFile(backup), bytes + "\n") << "the bytes read at start";
    fs::remove(backup);
    store->writeBackup();
    EXPECT_FALSE(fs::exists(backup)) << "written once";
    EXPECT_TRUE(log.empty());
}

// A file size limit refuses the save as a full disk would.
TEST_F(StoreTest, AFailedWriteLeavesThePreviousFileAndNoTemporaryFile) {
    auto store = open();
    store->add("first");
    const std::string before = readFile(file);

    rlimit original{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &original), 0);
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit tiny = original;
    tiny.rlim_cur = 64;
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &tiny), 0);
    store->add(std::string(500, 'x'));
    ::setrlimit(RLIMIT_FSIZE, &original);

    EXPECT_EQ(store->todos().size(), 2u);
    EXPECT_EQ(readFile(file), before);
    ASSERT_EQ(log.size(), 1u);
    EXPECT_NE(log[0].find("File too large"), std::string::npos) << log[0];
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path), fs::directory_iterator()), 1)
        << "only the data file remains";

    store->add("after the disk was freed");
    EXPECT_EQ(readFile(file), encodeTodos(store->todos()));
    EXPECT_FALSE(store->saveError());
}

// Whatever stands at the data file's place and is not a readable regular file. What may be moved
// is set aside itself, links included, under a name that no earlier moved-aside file has, with one
// log line, and the next change writes a new file. A folder or a device named as the data file
// (KELO_DATA naming one) is never moved, and what cannot be moved (here its new name is too long
// for the system) is never written over: the list stays in memory and the log says why. Nothing
// is waited on, and nothing a link points to is moved.
TEST_F(StoreTest, WhatIsNotAReadableFileIsSetAsideOrLeftAlone) {
    writeFile(aside, "an earlier unreadable list");
    writeFile(folder / "plain-file", "");
    fs::create_directories(folder / "a folder");
    ASSERT_EQ(::mkfifo((folder / "a fifo").c_str(), 0600), 0);
    fs::path deep = folder.path;
    while (deep.string().size() < 4080) {
        deep /= std::string(std::min<std::size_t>(200, 4080 - deep.string().size()), 'd');
    }
    fs::create_directories(deep);
    writeFile(deep / "x.json", "{unreadable");
    // A null device of the test's own: a fault here must never reach /dev.
    const fs::path device = folder / "a device";
    const bool haveDevice = ::mknod(device.c_str(), S_IFCHR | 0600, ::makedev(1, 3)) == 0;
    const auto linkTo = [&](fs::path to) { return [&, to] { fs::create_symlink(to, file); }; };
    // The data file, how it is made, what the log says on reading it, and why saving is refused
    // when it is left in place.
    std::vector<std::tuple<fs::path, std::function<void()>, std::string, std::string>> cases = {
        {file, [&] { writeFile(file, "{oops"); }, "not valid JSON", ""},
        {file, [&] { writeFile(file, std::string(maximumDataFileSize + 1, ' ')); }, "32 MiB", ""},
        {file, [&] { ::mkfifo(file.c_str(), 0600); }, "not a regular file", ""},
        {file, linkTo(folder / "a fifo"), "not a regular file", ""},
        {file, linkTo(folder / "a folder"), "links to a folder", ""},
        {file, linkTo(file), "not a regular file", ""}, // a loop
        {folder / "a folder", [] {}, "it is a folder). Left it in place.", "it is a folder"},
        {deep / "x.json", [] {}, "). Could not move it aside (File name too long), so it is left",
         "an unreadable file that could not be moved aside is in its place"},
        {folder / "plain-file" / "todos.json", [] {}, "", "Not a directory"}};
    if (haveDevice) {
        cases.emplace_back(file, linkTo(device), "links to a device", "");
        cases.emplace_back(
            device, [] {}, "it is a device). Left it in place.", "it is a device");
    }
    int number = 2;
    for (const auto& [path, make, reason, refused] : cases) {
        make();
        const auto before = identityOf(path);
        log.clear();
        auto store = open(path);
        ASSERT_TRUE(store->add("kept"));
        ASSERT_EQ(log.size(), (reason.empty() ? 0u : 1u) + (refused.empty() ? 0u : 1u)) << path;
        EXPECT_TRUE(reason.empty() ||
                    (log[0].starts_with("Kelo: could not read " + path.string()) &&
                     log[0].find(reason) != std::string::npos))
            << log[0];
        if (!refused.empty()) {
            EXPECT_EQ(identityOf(path), before) << path;
            const std::string error = store->saveError().value_or("");
            EXPECT_TRUE(error.starts_with(refused)) << error;
            EXPECT_EQ(log.back(), "Kelo: could not save " + path.string() + ": " + error);
            EXPECT_EQ(store->todos().size(), 1u);
            continue;
        }
        const auto moved = "todos.corrupt-1741252502-" + std::to_string(number++) + ".json";
        EXPECT_EQ(identityOf(folder / moved), before) << reason << ": set aside itself";
        EXPECT_TRUE(log[0].ends_with("). Moved it to " + moved + ".")) << log[0];
        EXPECT_EQ(titles(onDisk(file)), (Titles{"kept"}));
        fs::remove(file);
    }
    EXPECT_EQ(readFile(aside), "an earlier unreadable list");
    EXPECT_EQ(fs::symlink_status(folder / "a fifo").type(), fs::file_type::fifo);
}

// The backup and the moved-aside files then live beside the target too.
TEST_F(StoreTest, ADataFileThatIsALinkIsWrittenThroughToItsTarget) {
    const fs::path target = folder / "synced" / "list.json";
    fs::create_directories(folder / "synced");
    writeFile(target, encodeTodos({testing::todo("first")}));
    fs::create_symlink("synced/list.json", file);
    auto store = open();
    store->add("second");
    store->writeBackup();
    EXPECT_EQ(titles(onDisk(target)), (Titles{"first", "second"}));
    EXPECT_TRUE(fs::exists(folder / "synced" / "list.backup.json"));

    writeFile(target, "{unreadable");
    open();
    EXPECT_TRUE(fs::is_symlink(file)) << "the target is set aside, the link kept";
    EXPECT_EQ(readFile(folder / "synced" / "todos.corrupt-1741252502.json"), "{unreadable");
}

// Another program (an editor, a sync tool) changes the file while the store holds it: the store
// takes in what it finds, applies its own change to that, and neither side loses a task. Files
// renamed over it are in hostile_files_test.
TEST_F(StoreTest, ChangesByAnotherProgramAreTakenInAndKept) {
    auto store = open();
    const Todo ours = *store->add("ours");
    // Edited in place: same file, other content.
    writeFile(file, encodeTodos({ours, testing::todo("theirs")}));
    notifications = 0;
    store->reloadIfChanged();
    store->reloadIfChanged();
    EXPECT_EQ(titles(store->todos()), (Titles{"ours", "theirs"}));
    EXPECT_EQ(notifications, 1);

    // Edited again, and changed in Kelo before the store looked.
    writeFile(file, encodeTodos({ours, testing::todo("more"), store->todos()[1]}));
    store->toggle(ours.id, now);
    EXPECT_EQ(titles(onDisk(file)), (Titles{"ours", "more", "theirs"}));
    EXPECT_TRUE(onDisk(file)[0].isDone());

    // Deleted: what Kelo holds stays and is written with the next change.
    fs::remove(file);
    store->reloadIfChanged();
    store->add("after the deletion");
    EXPECT_EQ(titles(onDisk(file)), (Titles{"ours", "more", "theirs", "after the deletion"}));
}

// No other test of this program reads these variables.
TEST(TodoStoreDefault, FollowsXdgDataHome) {
    ::setenv("XDG_DATA_HOME", "/srv/data", 1);
    EXPECT_EQ(TodoStore::defaultPath(), fs::path("/srv/data/Kelo/todos.json"));
    ::setenv("XDG_DATA_HOME", "relative/ignored", 1);
    ::setenv("HOME", "/home/someone", 1);
    EXPECT_EQ(TodoStore::defaultPath(), fs::path("/home/someone/.local/share/Kelo/todos.json"));
}

TEST(DataFileLockTest, OneHolderPerDataFileUntilItEndsOrDies) {
    testing::ScratchFolder folder;
    const auto data = folder / "not" / "yet" / "todos.json";
    {
        DataFileLock first(data);
        ASSERT_EQ(first.status(), DataFileLock::Status::locked);
        EXPECT_EQ(first.lockFile(), folder / "not" / "yet" / "todos.json.lock");
        EXPECT_TRUE(fs::exists(first.lockFile()));

        DataFileLock second(data);
        EXPECT_EQ(second.status(), DataFileLock::Status::heldByOther);
        EXPECT_EQ(second.error(), 0);
        EXPECT_TRUE(DataFileLock(folder / "other.json").isLocked()) << "other files lock apart";
    }
    EXPECT_TRUE(DataFileLock(data).isLocked()) << "released with its holder";
    // Only the kernel may release the lock of a process that dies without cleaning up.
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(DataFileLock(data).isLocked() ? 0 : 1);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    ASSERT_EQ(status, 0) << "the child held the lock";
    EXPECT_TRUE(DataFileLock(data).isLocked());

    // A writer through a link and one on its target exclude each other.
    fs::create_symlink(data, folder / "link.json");
    const DataFileLock throughLink(folder / "link.json");
    EXPECT_EQ(throughLink.lockFile(), DataFileLock::lockFileFor(data));
    EXPECT_EQ(DataFileLock(data).status(), DataFileLock::Status::heldByOther);

    testing::writeFile(folder / "plain", "a file, not a folder");
    DataFileLock impossible(folder / "plain" / "todos.json");
    EXPECT_EQ(impossible.status(), DataFileLock::Status::unavailable);
    EXPECT_NE(impossible.error(), 0);
}

} // namespace
} // namespace kelo
