// SPDX-License-Identifier: MIT

// What is mounted inside of what a run takes: neither it nor what lies around it is touched.
#include "realfs/RealFsFixture.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

class BindMountsTest : public RealFsTest {
  protected:
    BindMountsTest() {
        makeTree(cache);
        writeFile(behind + "/film", "film");
        writeFile(home + "/Library/Caches/MS Internet Cache/page", "page");
    }

    Ran run() { return dorvanel({"run", "--yes"}); }

    /// All that is there, by path and contents.
    static std::string everythingIn(const std::string& folder) {
        std::string text;
        for (const auto& entry : fs::recursive_directory_iterator(folder)) {
            text += entry.path().string() + "\n";
            if (entry.is_regular_file()) text += readFile(entry.path());
        }
        return text;
    }

    void expectLeftWhole(const Ran& ran, const std::string& before) {
        EXPECT_EQ(ran.status, 1) << ran;
        EXPECT_THAT(ran.err, HasSubstr(cache));
        EXPECT_EQ(everythingIn(cache), before);
        EXPECT_EQ(readFile(behind + "/film"), "film");
        EXPECT_FALSE(fs::exists(home + "/Library/Caches/MS Internet Cache")) << "the rest goes on";
    }

    std::string cache = home + "/Library/Caches/Safari";
    std::string behind = base + "/behind";
};

TEST_F(BindMountsTest, AnItemOfARunThatHoldsOneIsLeftWholeAndNamed) {
    const MountPointer inside = mountBound(behind, cache + "/shared");
    NEEDS(inside);
    const std::string before = everythingIn(cache);
    expectLeftWhole(run(), before);
}

TEST_F(BindMountsTest, AnItemOfARunThatHoldsOneFarBelowIsLeftWholeAndNamed) {
    std::string deep = cache;
    for (int i = 0; i < 100; ++i) deep += "/deep";
    const MountPointer inside = mountBound(behind, deep + "/shared");
    NEEDS(inside);
    const std::string before = everythingIn(cache);
    expectLeftWhole(run(), before);
}

TEST_F(BindMountsTest, AnItemOfARunThatHoldsAnotherFileSystemIsLeftWholeAndNamed) {
    const MountPointer inside = mountMemory(cache + "/disk");
    NEEDS(inside);
    writeFile(cache + "/disk/file", "file");
    const std::string before = everythingIn(cache);
    expectLeftWhole(run(), before);
}

TEST_F(BindMountsTest, AnItemOfARunThatHoldsAMountedFileIsLeftWholeAndNamed) {
    const MountPointer inside = mountBound(behind + "/film", cache + "/folder 0/film");
    NEEDS(inside);
    const std::string before = everythingIn(cache);
    expectLeftWhole(run(), before);
}

TEST_F(BindMountsTest, AnItemOfARunThatIsOneIsLeftWholeAndNamed) {
    const MountPointer itself = mountBound(behind, cache);
    NEEDS(itself);
    const std::string before = everythingIn(cache);
    expectLeftWhole(run(), before);
}

TEST_F(BindMountsTest, WhatIsToBeShreddedIsRefusedAndNothingIsTouched) {
    const MountPointer inside = mountBound(behind, cache + "/folder 1/shared");
    NEEDS(inside);
    const std::string before = everythingIn(base);
    const Ran ran = dorvanel({"shred", home + "/Library/Caches/MS Internet Cache", cache});
    EXPECT_EQ(ran.status, 2) << ran;
    EXPECT_THAT(ran.err, HasSubstr("\" holds the mount point \"" + cache + "/folder 1/shared\""));
    EXPECT_TRUE(fs::exists(home + "/Library/Caches/MS Internet Cache/page"));
    EXPECT_EQ(readFile(behind + "/film"), "film");
}

}  // namespace
}  // namespace dorvanel::test
