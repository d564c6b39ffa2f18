#include "data_file_lock.h"
#include "testing.h"

#include <sys/wait.h>
#include <unistd.h>

namespace kelo {
namespace {

using Status = DataFileLock::Status;

TEST(DataFileLockTest, OneHolderPerDataFileUntilItEndsOrDies) {
    testing::ScratchFolder folder;
    const auto data = folder / "not" / "yet" / "todos.json";
    {
        DataFileLock first(data);
        ASSERT_EQ(first.status(), Status::locked);
        EXPECT_EQ(first.lockFile(), folder / "not" / "yet" / "todos.json.lock");
        EXPECT_TRUE(std::filesystem::exists(first.lockFile()));

        DataFileLock second(data);
        EXPECT_EQ(second.status(), Status::heldByOther);
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
    std::filesystem::create_symlink(data, folder / "link.json");
    const DataFileLock throughLink(folder / "link.json");
    EXPECT_EQ(throughLink.lockFile(), DataFileLock::lockFileFor(data));
    EXPECT_EQ(DataFileLock(data).status(), Status::heldByOther);

    testing::writeFile(folder / "plain", "a file, not a folder");
    DataFileLock impossible(folder / "plain" / "todos.json");
    EXPECT_EQ(impossible.status(), Status::unavailable);
    EXPECT_NE(impossible.error(), 0);
}

} // namespace
} // namespace kelo
