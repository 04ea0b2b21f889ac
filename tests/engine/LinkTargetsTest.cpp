// SPDX-License-Identifier: MIT
#include "engine/LinkTargets.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

#include <filesystem>

#include "support/Disk.h"
#include "support/EngineFixture.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::IsEmpty;

/// What the links in an item lead to, before and after they are moved.
class LinkTargetsTest : public EngineFixture {
  protected:
    void SetUp() override { fs::create_directories(folder / "parent/tree"); }

    platform::FileStatus statusOf(const std::string& path) {
        platform::FileStatus status;
        EXPECT_GE(real->statusAt(platform::SystemCalls::workingFolder, path.c_str(),
                                 platform::SystemCalls::Links::follow, status),
                  0);
        return status;
    }
};

TEST_F(LinkTargetsTest, AHeldTargetIsKnownByItsNumber) {
    writeFile(folder / "target", "x");
    LinkTargets targets(*real);
    platform::FileStatus target = statusOf(folder / "target");
    targets.add(platform::SystemCalls::workingFolder, (folder / "target").c_str(), target);
    target.born = 0;  // its number is enough as long as it is held
    EXPECT_TRUE(targets.has(target));
    ++target.inode;
    EXPECT_FALSE(targets.has(target));
}

TEST_F(LinkTargetsTest, OneThatIsNotHeldIsKnownByItsBirthOnly) {
    writeFile(folder / "target", "x");
    faulty.failAlways("openReference", EMFILE);
    LinkTargets targets(faulty);
    platform::FileStatus target = statusOf(folder / "target");
    target.born = 5;
    targets.add(platform::SystemCalls::workingFolder, (folder / "target").c_str(), target);
    EXPECT_TRUE(targets.has(target));
    target.born = 6;
    EXPECT_FALSE(targets.has(target)) << "the number was given again";
    target.born = 0;
    EXPECT_FALSE(targets.has(target)) << "nobody knows";
}

TEST_F(LinkTargetsTest, ATargetThatWasReplacedIsNotWrittenToAndThatIsTold) {
    writeFile(folder / "target", "the user's");
    fs::create_symlink(folder / "target", folder / "parent/tree/link");
    faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation != "makeFolder") return;
        fs::remove(folder / "target");  // its number could be given again, were it not held
        writeFile(folder / "target", "another's");
    };
    const Outcome& outcome = shred({folder / "parent/tree"});
    EXPECT_EQ(readFile(folder / "target"), "another's");
    EXPECT_EQ(outcome.notOverwritten, 1U);
    EXPECT_EQ(outcome.troubles.at(0).operation, "follow");
}

TEST_F(LinkTargetsTest, ARelativeLinkThatLeadsElsewhereAfterTheMoveGoesAloneAndInSilence) {
    writeFile(folder / "x", "where it led");
    writeFile(folder / "parent/x", "where it leads");
    fs::create_symlink("../../x", folder / "parent/tree/link");
    const Outcome& outcome = shred({folder / "parent/tree"});
    EXPECT_EQ(readFile(folder / "x"), "where it led");
    EXPECT_EQ(readFile(folder / "parent/x"), "where it leads");
    EXPECT_EQ(outcome.notOverwritten + outcome.notRemoved, 0U);
    EXPECT_EQ(outcome.filesRemoved, 1U);
    EXPECT_THAT(outcome.troubles, IsEmpty());
}

TEST_F(LinkTargetsTest, FoldersPipesAndOtherTargetsKeepTheirBits) {
    fs::create_directory(folder / "inner");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    setMode(folder / "inner", 0700);
    fs::create_symlink(folder / "inner", folder / "parent/tree/a");
    fs::create_symlink(folder / "pipe", folder / "parent/tree/b");
    const Outcome& outcome = shred({folder / "parent/tree"});
    EXPECT_EQ(modeOf(folder / "inner"), 0700U);
    EXPECT_EQ(modeOf(folder / "pipe"), 0600U);
    EXPECT_EQ(outcome.filesRemoved, 2U);
    EXPECT_THAT(outcome.troubles, IsEmpty());
}

}  // namespace
}  // namespace dorvanel::test
