// SPDX-License-Identifier: MIT

// Reading back on file systems that keep what they were given, and on one that does not.
#include "realfs/RealFsFixture.h"

namespace dorvanel::test {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
namespace fs = std::filesystem;

class VerifyingTest : public RealFsTest {
  protected:
    Ran verify(const std::string& path) { return dorvanel({"shred", "--verify", path}); }
    std::string backing = base + "/backing";
};

TEST_F(VerifyingTest, AFileSystemThatDropsWritesIsFoundOutByReadingBackAlone) {
    const Passthrough system(backing, mounted, {"unlink-open", "drop-writes=lost"});
    NEEDS(system.works());
    const std::string old = recognisable(10000);
    for (const bool verifies : {false, true}) {
        makeTree(system / "tree");
        writeFile(system / "tree/lost", old);
        const std::string witness = base + (verifies ? "/verified" : "/unverified");
        hardLink(backing + "/tree/lost", witness);
        const Ran ran = verifies ? verify(system / "tree") : shred(system / "tree");
        EXPECT_TRUE(readFile(witness) == old) << "the file system keeps no writes";
        EXPECT_EQ(ran.status, verifies ? 1 : 0) << ran;
        if (!verifies) {
            EXPECT_THAT(namesIn(backing), IsEmpty());
            EXPECT_THAT(ran.out, Not(HasSubstr("verified")));
            continue;
        }
        EXPECT_THAT(ran.err, HasSubstr("could not verify: read back otherwise"));
        EXPECT_THAT(ran.err, HasSubstr("1 file read back otherwise or not at all"));
        EXPECT_THAT(ran.out, HasSubstr("12 files verified"));
        std::vector<std::string> left;
        for (const auto& entry : fs::recursive_directory_iterator(backing)) {
            if (entry.is_regular_file()) left.push_back(entry.path());
        }
        ASSERT_THAT(left, SizeIs(1)) << "the others have gone";
        EXPECT_TRUE(readFile(left[0]) == old);
    }
}

class VerifiedOnTest : public VerifyingTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(VerifiedOnTest, AllFilesOfATreeReadBackAsTheyWereWritten) {
    const std::string kind = GetParam();
    const MountPointer system = kind == "xfs" ? mountNewImage(kind, base + "/image", mounted, 320)
                                              : mountNewImage(kind, base + "/image", mounted, 32);
    NEEDS(system);
    makeTree(mounted + "/tree");
    writeFile(mounted + "/tree/large", recognisable(3'000'000));
    writeFile(mounted + "/tree/empty", "");
    const Ran ran = verify(mounted + "/tree");
    EXPECT_EQ(ran.status, 0) << ran;
    EXPECT_THAT(ran.out, HasSubstr("14 files verified"));
}

INSTANTIATE_TEST_SUITE_P(Systems, VerifiedOnTest, ::testing::Values("ext4", "xfs", "vfat"));

}  // namespace
}  // namespace dorvanel::test
