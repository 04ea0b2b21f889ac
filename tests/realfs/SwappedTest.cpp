// SPDX-License-Identifier: MIT

// What a path leads to changes while somebody shreds what it led to.
#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "realfs/Neighbour.h"
#include "realfs/RealFsFixture.h"
#include "realfs/TracedRun.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::Not;

class SwappedTest : public RealFsTest {
  protected:
    SwappedTest() {
        fs::create_directories(people);
        fs::rename(home, people + "/jo");
        home = people + "/jo";
        writeFile(home + "/Documents/letter", letter);
    }

    /// The program with its words on standard error in a file, as a command that can be traced.
    [[nodiscard]] std::vector<std::string> command(const std::vector<std::string>& paths) const {
        std::vector<std::string> words = {
            "/bin/sh", "-c",   "exec \"$@\" 2>'" + said + "'", "sh", DORVANEL_PROGRAM, "--home",
            home,      "shred"};
        words.insert(words.end(), paths.begin(), paths.end());
        return words;
    }

    std::string people = base + "/people";
    std::string work = base + "/work";
    std::string said = base + "/said";
    std::string letter = recognisable(9000);
};

TEST_F(SwappedTest, AParentThatBecomesALinkNeverLeadsToTheHomeFolder) {
    const std::string folder = work + "/folder";
    const std::string link = work + "/link";
    int shredded = 0;
    int refused = 0;
    for (int i = 0; i < attempts(100); ++i) {
        fs::remove_all(work);
        writeFile(folder + "/jo/Documents/decoy");
        fs::create_directory_symlink(people, link);
        Ran ran;
        {
            const Neighbour swapper(0, [&] {
                renameat2(AT_FDCWD, folder.c_str(), AT_FDCWD, link.c_str(), RENAME_EXCHANGE);
            });
            NEEDS(swapper.works());
            ran = shred(folder + "/jo");
        }
        ASSERT_TRUE(readFile(home + "/Documents/letter") == letter)
            << "attempt " << i << ": " << ran;
        shredded += ran.status == 0 ? 1 : 0;
        refused += ran.status == 2 ? 1 : 0;
    }
    std::printf("%d shredded, %d refused\n", shredded, refused);
}

TEST_F(SwappedTest, TheHomeFolderIsKnownByAnotherMount) {
    const MountPointer other = mountBound(people, work + "/other");
    NEEDS(other);
    const Ran ran = shred(work + "/other/jo");
    EXPECT_EQ(ran.status, 2) << ran;
    EXPECT_THAT(ran.err, HasSubstr("is the home folder or a folder above it"));
    EXPECT_TRUE(readFile(home + "/Documents/letter") == letter);
}

TEST_F(SwappedTest, AHomeFolderMountedInsideOfAnItemIsNotTouched) {
    writeFile(work + "/item/file", "file");
    const MountPointer inside = mountBound(home, work + "/item/deep/down/home");
    NEEDS(inside);
    const Ran ran = shred(work + "/item");
    EXPECT_EQ(ran.status, 2) << ran;
    EXPECT_TRUE(readFile(home + "/Documents/letter") == letter);
    EXPECT_EQ(readFile(work + "/item/file"), "file");
}

TEST_F(SwappedTest, WhatVanishesAfterTheCheckIsNamed) {
    writeFile(work + "/first", "first");
    writeFile(work + "/second", "second");
    const TracedRun run = runToFirst(SYS_mkdirat, command({work + "/first", work + "/second"}),
                                     [&] { fs::rename(work + "/second", work + "/elsewhere"); });
    NEEDS(run.status >= 0);
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(readFile(said), HasSubstr(work + "/second"));
    EXPECT_THAT(readFile(said), Not(HasSubstr(work + "/first")));
    EXPECT_FALSE(fs::exists(work + "/first"));
    EXPECT_EQ(readFile(work + "/elsewhere"), "second");
}

TEST_F(SwappedTest, AnotherFileThatTakesAnItemsPlaceIsNotTouched) {
    writeFile(work + "/first", "first");
    writeFile(work + "/second", "second");
    writeFile(work + "/other", "other");
    const TracedRun run = runToFirst(SYS_mkdirat, command({work + "/first", work + "/second"}),
                                     [&] { fs::rename(work + "/other", work + "/second"); });
    NEEDS(run.status >= 0);
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(readFile(said), HasSubstr(work + "/second"));
    EXPECT_EQ(readFile(work + "/second"), "other");
}

TEST_F(SwappedTest, AFileTakenOutOfATreeAfterTheCheckIsNamed) {
    makeTree(work + "/tree");
    const std::string file = work + "/tree/folder 0/file 0";
    const std::string old = readFile(file);
    const TracedRun run = runToFirst(SYS_mkdirat, command({work + "/tree"}),
                                     [&] { fs::rename(file, work + "/taken"); });
    NEEDS(run.status >= 0);
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(readFile(said), HasSubstr(file));
    EXPECT_TRUE(readFile(work + "/taken") == old);
    EXPECT_FALSE(fs::exists(work + "/tree"));
}

/// How many links an item holds besides the one that matters.
class LinkTargetsTest : public SwappedTest, public ::testing::WithParamInterface<int> {};

TEST_P(LinkTargetsTest, AFileThatIsGivenTheInodeOfALinksTargetIsNotOverwritten) {
    const MountPointer disk = mountNewImage("ext4", base + "/image", mounted, 32, "-q -N 8192");
    NEEDS(disk);
    const std::string target = mounted + "/target";
    const std::string secret = mounted + "/private/secret";
    fs::create_directories(mounted + "/private");
    fs::create_directories(mounted + "/item");
    for (int i = 0; i < GetParam(); ++i) {
        const std::string name = std::to_string(i);
        writeFile(mounted + "/others/" + name, "other");
        fs::create_symlink("../others/" + name, mounted + "/item/" + name);
    }
    writeFile(target, "target");
    fs::create_symlink(target, mounted + "/item/link");
    struct stat before {};
    ASSERT_EQ(stat(target.c_str(), &before), 0);
    bool reused = false;
    const TracedRun run = runToFirst(SYS_mkdirat, command({mounted + "/item"}), [&] {
        fs::remove(target);
        writeFile(secret, letter);
        struct stat after {};
        reused = stat(secret.c_str(), &after) == 0 && after.st_ino == before.st_ino;
        fs::create_symlink(secret, target);
    });
    NEEDS(run.status >= 0);
    EXPECT_TRUE(readFile(secret) == letter);
    std::printf("the number was %s\n", reused ? "given again" : "held");
}

INSTANTIATE_TEST_SUITE_P(OthersInTheItem, LinkTargetsTest, ::testing::Values(0, 3000));

TEST_F(SwappedTest, RootStaysRootForItemsOfOthersWithAnothersHome) {
    NEEDS(isRoot());
    for (const auto& entry : fs::recursive_directory_iterator(people)) {
        NEEDS(lchown(entry.path().c_str(), nobody, nobody) == 0);
    }
    writeFile(work + "/file", "of root");
    setMode(work, 0700);
    setMode(work + "/file", 0600);
    const Ran ran = shred(work + "/file");
    EXPECT_EQ(ran.status, 0) << ran;
    EXPECT_FALSE(fs::exists(work + "/file"));
}

}  // namespace
}  // namespace dorvanel::test
