// SPDX-License-Identifier: MIT

// A file system of layers, as containers have it: what lies in a lower layer cannot be changed, it
// is copied up when it is written and hidden when it is removed.
#include <sys/stat.h>

#include "realfs/RealFsFixture.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;

/// Whether the upper layer says that a name of the lower one is gone.
bool isWhiteout(const std::string& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0 && S_ISCHR(status.st_mode) && status.st_rdev == 0;
}

class OverlayTest : public RealFsTest {
  protected:
    OverlayTest() {
        makeTree(lower + "/tree");
        writeFile(lower + "/kept", "kept");
    }

    std::string lower = base + "/lower";
    std::string upper = mounted + "-changes/upper";
};

TEST_F(OverlayTest, AFolderOfALowerLayerIsGoneAndNothingOfItIsSeen) {
    const MountPointer overlay = mountOverlay(lower, mounted);
    NEEDS(overlay);
    const Ran ran = shred(mounted + "/tree");
    EXPECT_EQ(ran.status, 0) << ran;
    EXPECT_THAT(namesIn(mounted), ElementsAre("kept"));
    EXPECT_TRUE(isWhiteout(upper + "/tree"));
    EXPECT_THAT(namesIn(upper), ElementsAre("tree"));
}

TEST_F(OverlayTest, AFileOfALowerLayerIsGone) {
    const MountPointer overlay = mountOverlay(lower, mounted);
    NEEDS(overlay);
    const Ran ran = shred(mounted + "/tree/folder 0/file 0");
    EXPECT_EQ(ran.status, 0) << ran;
    EXPECT_FALSE(fs::exists(mounted + "/tree/folder 0/file 0"));
    EXPECT_TRUE(isWhiteout(upper + "/tree/folder 0/file 0"));
}

TEST_F(OverlayTest, AFolderOfBothLayersIsGone) {
    const MountPointer overlay = mountOverlay(lower, mounted);
    NEEDS(overlay);
    writeFile(mounted + "/tree/folder 0/new", "new");
    writeFile(mounted + "/tree/own/new", "new");
    const Ran ran = shred(mounted + "/tree");
    EXPECT_EQ(ran.status, 0) << ran;
    EXPECT_THAT(namesIn(mounted), ElementsAre("kept"));
}

}  // namespace
}  // namespace dorvanel::test
