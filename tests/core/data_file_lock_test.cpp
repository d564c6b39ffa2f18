#include "data_file_lock.h"
#include "testing.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kelo {
namespace {

using Status = DataFileLock::Status;

TEST(DataFileLockTest, OneHolderPerDataFile) {
    testing::ScratchFolder folder;
    const auto data = folder / "todos.json";
    {
        DataFileLock first(data);
        ASSERT_EQ(first.status(), Status::locked);
        EXPECT_EQ(first.lockFile(), folder / "todos.json.lock");
        EXPECT_TRUE(std::filesystem::exists(folder / "todos.json.lock"));

        DataFileLock second(data);
        EXPECT_EQ(second.status(), Status::heldByOther);
        EXPECT_FALSE(second.isLocked());
        EXPECT_EQ(second.error(), 0);
    }
    DataFileLock afterRelease(data);
    EXPECT_TRUE(afterRelease.isLocked());
}

TEST(DataFileLockTest, DifferentDataFilesLockSideBySide) {
    testing::ScratchFolder folder;
    DataFileLock a(folder / "a.json");
    DataFileLock b(folder / "b.json");
    EXPECT_TRUE(a.isLocked());
    EXPECT_TRUE(b.isLocked());
}

TEST(DataFileLockTest, CreatesTheMissingFolder) {
    testing::ScratchFolder folder;
    DataFileLock lock(folder / "not" / "yet" / "todos.json");
    EXPECT_TRUE(lock.isLocked());
    EXPECT_TRUE(std::filesystem::is_directory(folder / "not" / "yet"));
}

TEST(DataFileLockTest, ReportsAFolderThatCannotExist) {
    testing::ScratchFolder folder;
    testing::writeFile(folder / "plain", "a file, not a folder");
    DataFileLock lock(folder / "plain" / "todos.json");
    EXPECT_EQ(lock.status(), Status::unavailable);
    EXPECT_NE(lock.error(), 0);
}

TEST(DataFileLockTest, AProcessThatDiesWithoutCleaningUpLeavesNoStaleLock) {
    testing::ScratchFolder folder;
    const auto data = folder / "todos.json";
    int toParent[2];
    ASSERT_EQ(::pipe(toParent), 0);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        // Leaked on purpose: only the kernel may release it.
        auto* held = new DataFileLock(data);
        const char answer = held->isLocked() ? 'y' : 'n';
        if (::write(toParent[1], &answer, 1) == 1) {
            ::pause();
        }
        ::_exit(0);
    }
    ::close(toParent[1]);
    char answer = 0;
    ASSERT_EQ(::read(toParent[0], &answer, 1), 1);
    ::close(toParent[0]);
    ASSERT_EQ(answer, 'y');

    EXPECT_EQ(DataFileLock(data).status(), Status::heldByOther);

    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(DataFileLock(data).isLocked());
}

} // namespace
} // namespace kelo
