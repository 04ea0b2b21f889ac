// SPDX-License-Identifier: MIT
#include "platform/FileManager.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;

class FileManagerTest : public ::testing::Test {
  protected:
    bool copy() { return platform::defaultFileManager().copyPath(folder / "from", folder / "to"); }
    [[nodiscard]] struct stat statusOf(const std::string& name) const {
        struct stat status {};
        EXPECT_EQ(lstat((folder / name).c_str(), &status), 0) << name;
        return status;
    }

    TemporaryFolder folder;
};

TEST_F(FileManagerTest, ACopyHasTheModesAndTheLinksOfTheOriginal) {
    writeFile(folder / "from/closed/file", "kept");
    fs::create_symlink("nowhere", folder / "from/link");
    fs::permissions(folder / "from/closed/file", fs::perms(0440));
    fs::permissions(folder / "from/closed", fs::perms(0500));
    fs::permissions(folder / "from", fs::perms(0555));
    ASSERT_TRUE(copy());
    EXPECT_EQ(readFile(folder / "to/closed/file"), "kept");
    EXPECT_EQ(fs::read_symlink(folder / "to/link"), "nowhere");
    EXPECT_EQ(statusOf("to").st_mode & 07777U, 0555U);
    EXPECT_EQ(statusOf("to/closed").st_mode & 07777U, 0500U);
    EXPECT_EQ(statusOf("to/closed/file").st_mode & 07777U, 0440U);
}

TEST_F(FileManagerTest, ACopyMadeByRootBelongsToTheOwnerOfTheOriginal) {
    if (geteuid() != 0) {
        GTEST_LOG_(INFO) << "not run: only root copies other people's files";
        return;
    }
    writeFile(folder / "from/file");
    fs::create_symlink("nowhere", folder / "from/link");
    for (const char* name : {"from", "from/file", "from/link"}) {
        ASSERT_EQ(lchown((folder / name).c_str(), 65534, 65533), 0);
    }
    ASSERT_TRUE(copy());
    for (const char* name : {"to", "to/file", "to/link"}) {
        EXPECT_EQ(statusOf(name).st_uid, 65534U) << name;
        EXPECT_EQ(statusOf(name).st_gid, 65533U) << name;
    }
}

TEST_F(FileManagerTest, ACopyThatFailsHalfWayLeavesNothing) {
    writeFile(folder / "from/a/file");
    fs::permissions(folder / "from/a", fs::perms(0555));
    ASSERT_EQ(mkfifo((folder / "from/pipe").c_str(), 0600), 0);
    EXPECT_FALSE(copy());
    EXPECT_FALSE(fs::exists(folder / "to"));
}

TEST_F(FileManagerTest, NothingIsCopiedOverWhatIsThere) {
    writeFile(folder / "from/file", "new");
    writeFile(folder / "to", "old");
    EXPECT_FALSE(copy());
    EXPECT_EQ(readFile(folder / "to"), "old");
}

}  // namespace
}  // namespace dorvanel::test
