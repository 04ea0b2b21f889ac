// SPDX-License-Identifier: MIT
#include "platform/AccountFolders.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "platform/FileManager.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;

class AccountFoldersTest : public ::testing::Test {
  protected:
    AccountFoldersTest() { fs::remove_all(home / "Library"); }

    TemporaryHome home;
};

TEST_F(AccountFoldersTest, AreMadeForTheirOwnerAlone) {
    ASSERT_TRUE(platform::makeAccountFolders());
    for (const char* name : {"Library", "Library/Logs", "Library/Preferences"}) {
        EXPECT_TRUE(fs::is_directory(home / name)) << name;
        EXPECT_EQ(fs::status(home / name).permissions(), fs::perms(0700)) << name;
    }
}

TEST_F(AccountFoldersTest, ThoseThatAreThereStayAsTheyAre) {
    fs::create_directories(home / "Library/Logs");
    fs::permissions(home / "Library/Logs", fs::perms(0755));
    writeFile(home / "Library/Logs/kept", "x");
    ASSERT_TRUE(platform::makeAccountFolders());
    EXPECT_EQ(fs::status(home / "Library/Logs").permissions(), fs::perms(0755));
    EXPECT_EQ(readFile(home / "Library/Logs/kept"), "x");
}

TEST_F(AccountFoldersTest, AMissingHomeIsNotMade) {
    setenv("HOME", (home / "nobody").c_str(), 1);
    const auto made = platform::makeAccountFolders();
    ASSERT_FALSE(made);
    EXPECT_EQ(made.error().path, home / "nobody/Library");
    EXPECT_FALSE(fs::exists(home / "nobody"));
}

TEST_F(AccountFoldersTest, AFileInThePlaceOfOneIsReportedAndLeftAlone) {
    writeFile(home / "Library/Logs", "a file");
    const auto made = platform::makeAccountFolders();
    ASSERT_FALSE(made);
    EXPECT_EQ(made.error().path, home / "Library/Logs");
    EXPECT_EQ(readFile(home / "Library/Logs"), "a file");
}

TEST_F(AccountFoldersTest, MadeByRootTheyBelongToTheOwnerOfTheHome) {
    if (geteuid() != 0) {
        GTEST_LOG_(INFO) << "not run: only root makes folders in other people's homes";
        return;
    }
    ASSERT_EQ(chown(home.path().c_str(), 65534, 65534), 0);
    ASSERT_TRUE(platform::makeAccountFolders());
    struct stat status {};
    ASSERT_EQ(stat((home / "Library/Preferences").c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, 65534U);
    EXPECT_EQ(status.st_gid, 65534U);
}

TEST_F(AccountFoldersTest, AnotherFolderStandsInForTheHome) {
    fs::create_directory(home / "other");
    ASSERT_TRUE(platform::useHomeDirectory(home / "other"));
    EXPECT_EQ(platform::homeDirectory(), home / "other");
    EXPECT_FALSE(platform::useHomeDirectory(home / "missing"));
    EXPECT_FALSE(platform::useHomeDirectory(""));
    writeFile(home / "file");
    EXPECT_FALSE(platform::useHomeDirectory(home / "file"));
    EXPECT_EQ(platform::homeDirectory(), home / "other");
}

TEST_F(AccountFoldersTest, AHomeThatIsEmptyOrRelativeIsRefused) {
    for (const char* path : {"", "relative", "./home", ".", "~"}) {
        setenv("HOME", path, 1);
        EXPECT_FALSE(platform::checkHomeDirectory()) << path;
    }
    setenv("HOME", home.path().c_str(), 1);
    EXPECT_TRUE(platform::checkHomeDirectory());
}

}  // namespace
}  // namespace dorvanel::test
