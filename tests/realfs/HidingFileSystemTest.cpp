// SPDX-License-Identifier: MIT

// File systems that are not like a disk's own: they hide files that are open and give out inode
// numbers as they please.
#include "realfs/RealFsFixture.h"

namespace dorvanel::test {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
namespace fs = std::filesystem;

class HidingFileSystemTest : public RealFsTest {
  protected:
    std::string backing = base + "/backing";
};

struct System {
    const char* name;
    std::vector<std::string> switches;
};

void PrintTo(const System& system, std::ostream* stream) {
    *stream << system.name;
}

class ThroughFuseTest : public HidingFileSystemTest,
                        public ::testing::WithParamInterface<System> {};

TEST_P(ThroughFuseTest, ATreeIsShreddedAndNothingIsLeftOfIt) {
    const Passthrough system(backing, mounted, GetParam().switches);
    NEEDS(system.works());
    makeTree(system / "tree");
    const Ran ran = shred(system / "tree");
    EXPECT_EQ(ran.status, 0) << ran;
    EXPECT_THAT(namesIn(backing), IsEmpty());
}

TEST_P(ThroughFuseTest, AFileIsShreddedAndItsOldBytesAreReplaced) {
    const Passthrough system(backing, mounted, GetParam().switches);
    NEEDS(system.works());
    const std::string old = recognisable(10000);
    writeFile(system / "file", old);
    hardLink(backing + "/file", base + "/witness");
    const Ran ran = shred(system / "file");
    EXPECT_EQ(ran.status, 0) << ran;
    EXPECT_THAT(namesIn(backing), IsEmpty());
    const std::string now = readFile(base + "/witness");
    ASSERT_GE(now.size(), old.size());
    for (std::size_t at = 0; at < old.size(); at += 500) {
        EXPECT_NE(now.substr(at, 500), old.substr(at, 500)) << at;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Systems, ThroughFuseTest,
    ::testing::Values(System{"HidesOpenFiles", {}}, System{"RemovesOpenFiles", {"unlink-open"}},
                      System{"NumbersFollowThePath", {"unlink-open", "numbers-by-path"}},
                      System{"NumbersAreOfNowOnly", {"numbers-of-now"}}),
    [](const auto& system) { return std::string(system.param.name); });

TEST_F(HidingFileSystemTest, WhereNoNumberIsEverTheSameNothingIsLostInSilence) {
    const Passthrough system(backing, mounted, {"unlink-open", "numbers-at-random"});
    NEEDS(system.works());
    const std::string old = recognisable(10000);
    writeFile(system / "file", old);
    const Ran ran = shred(system / "file");
    if (ran.status == 0) {
        EXPECT_THAT(namesIn(backing), IsEmpty());
    } else {  // nobody can tell whether it is still the file that was looked at
        EXPECT_EQ(ran.status, 1) << ran;
        EXPECT_THAT(ran.err, HasSubstr(system / "file"));
        EXPECT_TRUE(readFile(backing + "/file") == old);
    }
}

TEST_F(HidingFileSystemTest, AFileThatCannotBeWrittenIsTold) {
    const Passthrough system(backing, mounted, {"fail=write:1"});
    NEEDS(system.works());
    writeFile(backing + "/file", recognisable(10000));
    const Ran ran = shred(system / "file");
    EXPECT_EQ(ran.status, 1) << ran;
    EXPECT_THAT(ran.err, HasSubstr("Input/output error"));
}

TEST_F(HidingFileSystemTest, AFileThatCannotBeFlushedKeepsAName) {
    const Passthrough system(backing, mounted, {"fail=fsync:1"});
    NEEDS(system.works());
    writeFile(backing + "/file", recognisable(10000));
    const Ran ran = shred(system / "file");
    EXPECT_EQ(ran.status, 1) << ran;
    EXPECT_THAT(ran.err, HasSubstr("Input/output error"));
}

TEST_F(HidingFileSystemTest, AFolderThatCannotBeListedIsRefusedAndByAPreviewTheSame) {
    const Passthrough system(backing, mounted, {"fail=readdir:1"});
    NEEDS(system.works());
    fs::create_directories(backing + "/tree/inner");
    const Ran ran = shred(system / "tree");
    EXPECT_EQ(ran.status, 2) << ran;
    EXPECT_THAT(ran.err, HasSubstr("which cannot be looked at: Input/output error"));
    const Ran looked = dorvanel({"shred", "--preview", system / "tree"});
    EXPECT_EQ(looked.status, 2) << looked;
    EXPECT_EQ(looked.err, ran.err);
    EXPECT_EQ(looked.out, "") << "no plan of what is not shredded";
    EXPECT_TRUE(fs::exists(backing + "/tree/inner"));
}

TEST_F(HidingFileSystemTest, OnFatATreeIsShreddedAndNothingIsLeftOfIt) {
    const MountPointer fat = mountNewImage("vfat", base + "/image", mounted, 8);
    NEEDS(fat);
    makeTree(mounted + "/tree");
    const Ran ran = shred(mounted + "/tree");
    EXPECT_EQ(ran.status, 0) << ran;
    EXPECT_THAT(namesIn(mounted), IsEmpty());
}

}  // namespace
}  // namespace dorvanel::test
