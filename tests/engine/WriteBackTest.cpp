// SPDX-License-Identifier: MIT

// Large files, which the system begins to bring to the medium while they are still overwritten.
#include <gtest/gtest.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "engine/LanedRun.h"
#include "support/Disk.h"

namespace dorvanel::test {
namespace {

constexpr std::size_t mebi = std::size_t{1} << 20;
/// From which on something lies far enough behind.
constexpr std::size_t large = 9 * mebi;

using Call = LanedSystemCalls::Call;

std::uint64_t endOf(const Call& call) {
    return call.offset + call.length;
}

/// The calls for one file of this size.
std::vector<Call> callsFor(LanedRun& run, std::size_t size) {
    writeFile(run.folder / "file", recognisable(size));
    run.access.shredOneFile(run.folder / "file");
    EXPECT_EQ(run.access.outcome().filesOverwritten, 1U);
    return run.system.calls;
}

class WriteBackTest : public ::testing::TestWithParam<int> {};

TEST_P(WriteBackTest, OnlyWhatWasWrittenForTheLastTimeIsBroughtToTheMediumEarly) {
    LanedRun run(false);
    run.preferences.set("NumberOfWrites", GetParam());
    std::uint64_t begun = 0;
    std::uint64_t written = 0;
    for (const Call& call : callsFor(run, 2 * large + 77)) {
        if (call.key.what == "writeAt") {
            EXPECT_GE(call.offset, begun) << "written to again";
            written = std::max(written, endOf(call));
        } else if (call.key.what == "startWriteBack") {
            EXPECT_EQ(call.offset, begun) << "left out or told twice";
            begun = endOf(call);
            EXPECT_LE(begun, written) << "not written yet";
        }
    }
    EXPECT_GE(begun, large);
}

// By index: one pass, and three.
INSTANTIATE_TEST_SUITE_P(Passes, WriteBackTest, ::testing::Values(2, 4));

TEST(WriteBackOfOtherFilesTest, ASmallerFileIsLeftToTheFlush) {
    LanedRun run(false);
    callsFor(run, large - 1);
    EXPECT_TRUE(run.system.callsOf("startWriteBack").empty());
}

TEST(WriteBackOfOtherFilesTest, EachFileBeginsAnew) {
    LanedRun run(false);
    for (const char* name : {"tree/first", "tree/second"}) {
        writeFile(run.folder / name, recognisable(large));
    }
    run.shred("tree");
    const std::vector<Call> begun = run.system.callsOf("startWriteBack");
    ASSERT_EQ(begun.size(), 2U);
    EXPECT_EQ(begun[0].offset, 0U);
    EXPECT_EQ(begun[1].offset, 0U);
    EXPECT_NE(begun[0].key.name, begun[1].key.name);
}

TEST(WriteBackOfOtherFilesTest, ASecondThreadChangesNothingOfIt) {
    if (!hasLane()) GTEST_SKIP() << "no folder in memory, or one processor alone";
    const auto ranges = [](bool hasTwoThreads) {
        LanedRun run(hasTwoThreads);
        callsFor(run, 2 * large + 77);
        std::vector<std::pair<std::uint64_t, std::uint64_t>> found;
        for (const Call& call : run.system.callsOf("startWriteBack")) {
            found.emplace_back(call.offset, call.length);
        }
        return found;
    };
    const auto two = ranges(true);
    EXPECT_FALSE(two.empty());
    EXPECT_EQ(two, ranges(false));
}

}  // namespace
}  // namespace dorvanel::test
