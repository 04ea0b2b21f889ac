// SPDX-License-Identifier: MIT

// Files that share blocks with a copy or a snapshot, on file systems that can do that.
#include "platform/SharedExtents.h"

#include <cstdlib>

#include "engine/plan/ItemPlanner.h"
#include "realfs/RealFsFixture.h"

namespace dorvanel::test {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;

class SharedExtentsTest : public RealFsTest {
  protected:
    static bool runs(const std::string& command) {
        return std::system((command + " >/dev/null 2>&1").c_str()) == 0;
    }
    PlanItem plan(const std::string& path) {
        Plan made =
            planOf(holdAll(*system, {path}), {.system = *system, .sharedExtents = shared.get()});
        return made.items.empty() ? PlanItem{} : std::move(made.items.front());
    }
    [[nodiscard]] static auto isShared(const std::string& path) {
        return AllOf(Field(&PlanNote::kind, PlanNote::Kind::shared), Field(&PlanNote::path, path));
    }
    void expectCopyIsNoted() {
        makeTree(mounted + "/item", 1);
        const std::string file = mounted + "/item/folder 0/file 0";
        EXPECT_THAT(plan(mounted + "/item").notes, IsEmpty());
        NEEDS(runs("cp --reflink=always '" + file + "' '" + mounted + "/copy'"));
        EXPECT_THAT(plan(mounted + "/item").notes, ElementsAre(isShared(file)));
        EXPECT_THAT(plan(mounted + "/copy").notes, ElementsAre(isShared(mounted + "/copy")));
    }

    std::string image = base + "/image";
    std::unique_ptr<platform::SystemCalls> system = platform::makeSystemCalls();
    std::unique_ptr<platform::SharedExtents> shared = platform::makeSharedExtents();
};

TEST_F(SharedExtentsTest, ACopyThatSharesBlocksIsNotedOnXfs) {
    const MountPointer disk = mountNewImage("xfs", image, mounted, 320, "-m reflink=1");
    NEEDS(disk);
    expectCopyIsNoted();
}

TEST_F(SharedExtentsTest, ACopyThatSharesBlocksIsNotedOnBtrfs) {
    const MountPointer disk = mountNewImage("btrfs", image, mounted, 320);
    NEEDS(disk);
    expectCopyIsNoted();
}

TEST_F(SharedExtentsTest, ASnapshotIsNotedForTheFilesThatItHolds) {
    const MountPointer disk = mountNewImage("btrfs", image, mounted, 320);
    NEEDS(disk);
    const std::string volume = mounted + "/volume";
    NEEDS(runs("btrfs subvolume create '" + volume + "'"));
    writeFile(volume + "/item/file", recognisable(65536));
    NEEDS(runs("btrfs subvolume snapshot '" + volume + "' '" + mounted + "/snapshot'"));
    writeFile(volume + "/item/later", recognisable(65536));
    EXPECT_THAT(plan(volume + "/item").notes, ElementsAre(isShared(volume + "/item/file")));
}

TEST_F(SharedExtentsTest, WhereNothingCanBeSharedNothingIsOpened) {
    const MountPointer memory = mountMemory(mounted);
    NEEDS(memory);
    writeFile(mounted + "/file", "x");
    platform::FileStatus status;
    const std::string path = mounted + "/file";
    using platform::SystemCalls;
    ASSERT_EQ(system->statusAt(SystemCalls::workingFolder, path.c_str(), SystemCalls::Links::stay,
                               status),
              0);
    EXPECT_EQ(shared->isShared(SystemCalls::workingFolder, path.c_str(), SystemCalls::Links::stay,
                               status.device),
              0);
    // What is known of a device holds for a file that could not be opened at all.
    EXPECT_EQ(shared->isShared(SystemCalls::workingFolder, "/nowhere/at all",
                               SystemCalls::Links::stay, status.device),
              0);
}

}  // namespace
}  // namespace dorvanel::test
