// SPDX-License-Identifier: MIT

// A stop in a large tree in memory, of which a second thread removes the names.
#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <map>
#include <thread>

#include "engine/LanedRun.h"
#include "support/Disk.h"
#include "support/Seeds.h"

namespace dorvanel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Call = LanedSystemCalls::Call;

constexpr int filesEach = 18;

class LanedStopTest : public ::testing::Test {
  protected:
    void SetUp() override {
        if (!hasLane()) GTEST_SKIP() << "no folder in memory, or one processor alone";
        LanedRun run(true);
        makeTree(run.folder, filesEach);
        run.shred("tree");
        whole_ = writesOf(run.system);
        writes_ = run.system.callsOf("writeAt").size();
    }

    /// What is on the disk, and the outcome, after a request that was perhaps stopped.
    void expectFits(const LanedRun& run, const TreeCounts& counts) const {
        const Outcome& outcome = run.access.outcome();
        const std::uint64_t left = filesBelow(run.folder.path()) - 1;
        EXPECT_EQ(outcome.filesRemoved + left, counts.files);
        EXPECT_EQ(removedOf(run.system), outcome.filesRemoved + outcome.foldersRemoved);
        EXPECT_THAT(outcome.troubles, IsEmpty());
        const std::map<std::string, Writes> made = writesOf(run.system);
        std::size_t kept = 0;  // of those that were wholly overwritten
        const std::vector<Call> removed = run.system.callsOf("removeFile");
        for (const auto& [name, writes] : made) {
            const bool isGone = std::ranges::any_of(
                removed, [&name = name](const Call& call) { return call.key.name == name; });
            const bool isWhole = writes == whole_.at(name);
            EXPECT_TRUE(isWhole || !isGone) << name;
            if (isWhole && !isGone) ++kept;
        }
        EXPECT_LE(kept, left == 0 ? 0U : 1U) << "more than the file at hand";
        EXPECT_EQ(outcome.left.empty(), left == 0);
    }
    /// What a pause has left is finished by the same engine.
    static void expectFinished(LanedRun& run, std::uint64_t files) {
        const std::uint64_t before = run.access.outcome().filesRemoved;
        std::vector<HeldItem> left = run.access.takeLeft();
        run.access.clearStop();
        run.system.before = {};
        run.access.shredItems(left);
        EXPECT_THAT(run.access.outcome().troubles, IsEmpty());
        EXPECT_THAT(run.access.outcome().left, IsEmpty());
        EXPECT_EQ(before + run.access.outcome().filesRemoved, files);
        EXPECT_THAT(namesIn(run.folder.path()), ElementsAre("outside"));
    }
    /// Asks for a pause before the call of the kind that has this number.
    static void pauseAt(LanedRun& run, const std::string& what, std::size_t number, bool forGood) {
        run.system.before = [&run, what, number, forGood,
                             made = std::size_t{0}](const Call& call) mutable {
            if (call.key.what != what || made++ != number) return;
            if (forGood) run.access.requestStop();
            run.access.requestPause();
        };
    }

    std::size_t writes_ = 0;

  private:
    std::map<std::string, Writes> whole_;
};

TEST_F(LanedStopTest, AtAnyWriteKeepsWhatWasNotWhollyOverwritten) {
    const std::size_t step = writes_ / seedsOf(10) + 1;
    for (std::size_t write = 0; write < writes_; write += step) {
        for (const int slow : {0, 50}) {
            LanedRun run(true);
            const TreeCounts counts = makeTree(run.folder, filesEach);
            run.system.secondIsSlowBy = std::chrono::microseconds(slow);
            pauseAt(run, "writeAt", write, false);
            EXPECT_TRUE(run.shred("tree").stopped);
            expectFits(run, counts);
            expectFinished(run, counts.files);
            if (HasFailure()) FAIL() << "at write " << write << ", slow by " << slow;
        }
    }
}

TEST_F(LanedStopTest, WhileNamesAreChangedOrRemovedIsFinishedLater) {
    for (const char* what : {"rename", "removeFile", "removeFolder"}) {
        for (const std::size_t number : {0U, 99U, 200U}) {
            LanedRun run(true);
            const TreeCounts counts = makeTree(run.folder, filesEach);
            pauseAt(run, what, number, false);
            run.shred("tree");
            expectFits(run, counts);
            expectFinished(run, counts.files);
            if (HasFailure()) FAIL() << what << " " << number;
        }
    }
}

TEST_F(LanedStopTest, ForGoodLeavesAFolderThatAnotherEngineFinishes) {
    LanedRun run(true);
    const TreeCounts counts = makeTree(run.folder, filesEach);
    pauseAt(run, "writeAt", writes_ / 2, true);
    run.shred("tree");
    expectFits(run, counts);
    const std::uint64_t before = run.access.outcome().filesRemoved;
    FileAccess another({run.system, run.clock, run.draws}, run.preferences, run.bar, run.fileName);
    std::vector<std::string> left = run.access.outcome().left;
    ASSERT_FALSE(left.empty());
    another.shredDroppedFile(left);
    EXPECT_EQ(before + another.outcome().filesRemoved, counts.files);
    EXPECT_THAT(namesIn(run.folder.path()), ElementsAre("outside"));
}

TEST_F(LanedStopTest, FromAThirdThreadAtAnyMomentIsTheSame) {
    for (unsigned i = 0; i < seedsOf(12); ++i) {
        LanedRun run(true);
        const TreeCounts counts = makeTree(run.folder, filesEach);
        std::thread third([&] {
            std::this_thread::sleep_for(std::chrono::microseconds(1000 * i));
            run.access.requestPause();
        });
        run.shred("tree");
        third.join();
        const bool wasInTime = run.access.outcome().stopped;
        if (wasInTime && namesIn(run.folder.path()).size() > 1) {
            // Before the item was taken from its place it is no holding folder that is left.
            expectFits(run, counts);
            expectFinished(run, counts.files);
        } else {
            EXPECT_THAT(namesIn(run.folder.path()), ElementsAre("outside"));
        }
        if (HasFailure()) FAIL() << "round " << i;
    }
}

}  // namespace
}  // namespace dorvanel::test
