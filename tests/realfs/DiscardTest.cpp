// SPDX-License-Identifier: MIT

// What stays in a raw image of a file system that writes to other blocks, and what discarding its
// free space takes away.
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <thread>

#include "engine/Discarding.h"
#include "engine/FileAccess.h"
#include "realfs/RealFsFixture.h"
#include "support/EngineFixture.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using platform::FreeSpace;

class DiscardTest : public RealFsTest {
  protected:
    static constexpr std::size_t megabytes = 320;  // xfs takes no less than 300

    void makeCanaries() {
        for (unsigned i = 0; i < 100; ++i) {
            writeFile(mounted + "/item/file " + std::to_string(i), recognisable(65536, i));
        }
        flush();
    }
    /// Brings all to the image, so that it can be searched.
    void flush() const {
        ASSERT_EQ(std::system(("sync -f '" + mounted + "' && sync '" + image + "'").c_str()), 0);
    }
    /// How often the canary stands in the image.
    [[nodiscard]] std::size_t canaries() const {
        flush();
        const std::string text = "Secret contents";
        std::ifstream stream(image, std::ios::binary);
        std::string part;
        std::size_t found = 0;
        for (;;) {
            const std::size_t kept = std::min(part.size(), text.size() - 1);
            part.erase(0, part.size() - kept);
            part.resize(kept + (1 << 20));
            stream.read(part.data() + kept, 1 << 20);
            const auto got = static_cast<std::size_t>(stream.gcount());
            part.resize(kept + got);
            if (got == 0) return found;
            for (std::size_t at = 0; (at = part.find(text, at)) != std::string::npos; ++at) ++found;
        }
    }
    /// Shreds the item, then discards as after a request.
    std::vector<DiscardedSpace> shredAndDiscard(std::size_t& between) {
        TestEngine engine;
        engine.faulty.inMemory = 0;
        Discarding discarding(*space);
        discarding.addItem(mounted + "/item");
        const Outcome& outcome = engine.shred({mounted + "/item"});
        EXPECT_EQ(outcome.filesOverwritten, 100U);
        EXPECT_EQ(outcome.notRemoved, 0U);
        between = canaries();
        return discarding.discard();
    }

    std::string image = base + "/image";
    std::unique_ptr<FreeSpace> space = platform::makeFreeSpace();
    TemporaryHome logHome;
    LogCapture log;
};

TEST_F(DiscardTest, OnACopyOnWriteFileSystemItTakesWhatOverwritingLeaves) {
    const MountPointer disk = mountNewImage("btrfs", image, mounted, megabytes);
    NEEDS(disk);
    makeCanaries();
    EXPECT_GT(canaries(), 0U);
    std::size_t between = 0;
    const std::vector<DiscardedSpace> spaces = shredAndDiscard(between);
    EXPECT_GT(between, 0U) << "else there is nothing to be proved";
    ASSERT_EQ(spaces.size(), 1U);
    EXPECT_EQ(spaces[0].mountPoint, mounted);
    EXPECT_EQ(spaces[0].result.answer, FreeSpace::Answer::discarded);
    EXPECT_GT(spaces[0].result.bytes, 0U);
    EXPECT_EQ(canaries(), 0U);
}

/// Files removed a moment ago, whose blocks the file system may not have freed yet.
class DiscardOfTest : public DiscardTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(DiscardOfTest, WhatWasRemovedJustNowIsDiscarded) {
    const MountPointer disk = mountNewImage(GetParam(), image, mounted, megabytes);
    NEEDS(disk);
    for (int attempt = 0; attempt < 3; ++attempt) {
        makeCanaries();
        EXPECT_GT(canaries(), 0U);
        fs::remove_all(mounted + "/item");
        const FreeSpace::Discarded discarded = space->discard(mounted);
        EXPECT_EQ(discarded.answer, FreeSpace::Answer::discarded);
        EXPECT_EQ(canaries(), 0U) << "attempt " << attempt;
    }
}

INSTANTIATE_TEST_SUITE_P(EachFileSystem, DiscardOfTest, ::testing::Values("btrfs", "ext4", "xfs"));

TEST_F(DiscardTest, AFileSystemInMemoryDoesNotSupportIt) {
    const MountPointer memory = mountMemory(mounted);
    NEEDS(memory);
    EXPECT_EQ(space->discard(mounted).answer, FreeSpace::Answer::notSupported);
}

TEST_F(DiscardTest, WhoIsNotRootIsNotPermitted) {
    const MountPointer disk = mountNewImage("ext4", image, mounted, 32);
    NEEDS(disk);
    const std::string said = asOrdinaryUser([&]() -> std::string {
        return space->discard(mounted).answer == FreeSpace::Answer::notPermitted ? "" : "permitted";
    });
    EXPECT_EQ(said, "");
}

TEST_F(DiscardTest, SubvolumesAreOneFileSystem) {
    const MountPointer disk = mountNewImage("btrfs", image, mounted, megabytes);
    NEEDS(disk);
    const std::string volume = mounted + "/volume";
    NEEDS(std::system(("btrfs subvolume create '" + volume + "' >/dev/null").c_str()) == 0);
    Discarding discarding(*space);
    discarding.addItem(mounted + "/item");
    discarding.addItem(volume + "/item");
    EXPECT_EQ(discarding.discard().size(), 1U);
}

}  // namespace
}  // namespace dorvanel::test
