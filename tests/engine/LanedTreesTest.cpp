// SPDX-License-Identifier: MIT

// Large trees in memory, of which a second thread removes the names: nothing is different but the
// time that it takes.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <algorithm>
#include <map>
#include <set>

#include "engine/LanedRun.h"
#include "support/Disk.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Call = LanedSystemCalls::Call;

class LanedTreesTest : public ::testing::Test {
  protected:
    void SetUp() override {
        if (!hasLane()) GTEST_SKIP() << "no folder in memory, or one processor alone";
    }
    /// Descriptors that are open after all calls, as far as the calls tell.
    static int openAfter(const std::vector<Call>& calls) {
        int open = 0;
        for (const Call& call : calls) {
            if (call.key.what.starts_with("open") && call.result >= 0) ++open;
            if (call.key.what == "close") --open;
        }
        return open;
    }
};

TEST_F(LanedTreesTest, AreShreddedTheSameByOneThreadAndByTwo) {
    LanedRun one(false);
    const TreeCounts counts = makeTree(one.folder, 40);
    const std::string outcomeOfOne = textOf(one.shred("tree"), one.folder);
    const std::vector<std::string> linesOfOne = one.log.lines();
    for (const int slow : {0, 100}) {
        LanedRun two(true);
        makeTree(two.folder, 40);
        two.system.secondIsSlowBy = std::chrono::microseconds(slow);
        const Outcome& outcome = two.shred("tree");

        EXPECT_TRUE(hadSecondThread(two.system));
        EXPECT_FALSE(hadSecondThread(one.system));
        EXPECT_EQ(textOf(outcome, two.folder), outcomeOfOne);
        EXPECT_EQ(outcome.filesRemoved, counts.files);
        EXPECT_EQ(outcome.foldersRemoved, counts.folders);
        EXPECT_THAT(outcome.troubles, IsEmpty());
        EXPECT_EQ(two.fileName.texts, one.fileName.texts);
        EXPECT_EQ(two.bar.values, one.bar.values);
        EXPECT_EQ(two.log.lines(), linesOfOne);
        EXPECT_EQ(writesOf(two.system), writesOf(one.system));
        const std::vector<std::string> removals = removalsOf(two.system);
        const std::vector<std::string> removalsOfOne = removalsOf(one.system);
        ASSERT_EQ(removals.size(), removalsOfOne.size());
        for (std::size_t i = 0; i < removals.size(); ++i) {
            EXPECT_EQ(removals[i], removalsOfOne[i]) << i;
        }
        EXPECT_THAT(namesIn(two.folder.path()), ElementsAre("outside"));
        EXPECT_THAT(namesIn(one.folder.path()), ElementsAre("outside"));
        EXPECT_EQ(readFile(two.folder / "outside/file"), readFile(one.folder / "outside/file"));
        FeedbackSequence again = one.draws;  // both go on as the other one
        EXPECT_EQ(two.draws.next(), again.next());
    }
}

TEST_F(LanedTreesTest, AFileIsWrittenToThenClosedThenRemoved) {
    LanedRun run(true);
    makeTree(run.folder, 40);
    run.shred("tree");
    std::map<std::string, std::string> last;  // what was done last, by name
    int removed = 0;
    for (const Call& call : run.system.calls) {
        std::string& before = last[call.key.name];
        if (call.key.what == "writeAt") {
            EXPECT_TRUE(before == "status" || before == "writeAt") << before;
        } else if (call.key.what == "removeFile" && !before.empty()) {
            EXPECT_TRUE(before == "close" || before == "statusAt" || before == "removeFolder")
                << before;
            ++removed;
        }
        before = call.key.what;
    }
    EXPECT_GT(removed, 300);
}

TEST_F(LanedTreesTest, AFolderGoesAfterAllThatIsInIt) {
    LanedRun run(true);
    makeTree(run.folder, 40);
    run.system.secondIsSlowBy = std::chrono::microseconds(50);
    run.shred("tree");
    for (const Call& call : run.system.callsOf("removeFolder")) {
        EXPECT_EQ(call.result, 0) << call.key.name;
    }
}

TEST_F(LanedTreesTest, LeaveNoDescriptorOpenAndCloseNoneTwice) {
    const std::size_t before = openDescriptors();
    {
        LanedRun run(true);
        const std::size_t beforeRequest = openDescriptors();
        makeTree(run.folder, 40);
        run.shred("tree");
        EXPECT_EQ(openDescriptors(), beforeRequest);
        EXPECT_EQ(openAfter(run.system.calls), 0);
        for (const Call& call : run.system.callsOf("close")) EXPECT_EQ(call.result, 0);
    }
    EXPECT_EQ(openDescriptors(), before);
}

TEST_F(LanedTreesTest, ASecondFewItemsAfterALargeOneAreShreddedAsWell) {
    LanedRun run(true);
    makeTree(run.folder, 40);
    writeFile(run.folder / "few/one", "secret");
    writeFile(run.folder / "large/sub/x", "secret");
    for (int i = 0; i < 150; ++i) {
        writeFile(run.folder / ("large/" + std::to_string(i)), recognisable(5000));
    }
    std::vector<std::string> paths{run.folder / "tree", run.folder / "few", run.folder / "large"};
    run.access.shredDroppedFile(paths);
    const Outcome& outcome = run.access.outcome();
    EXPECT_THAT(outcome.troubles, IsEmpty());
    EXPECT_EQ(outcome.perItem.at(1).overwritten, 1U);
    EXPECT_EQ(outcome.perItem.at(2).overwritten, 151U);
    EXPECT_EQ(outcome.perItem.at(2).bytes, 150U * 5000 + 6);
    makeTree(run.folder, 30);
    EXPECT_THAT(run.shred("tree").troubles, IsEmpty());
    EXPECT_THAT(namesIn(run.folder.path()), ElementsAre("outside"));
}

TEST_F(LanedTreesTest, OnTheSystemsOwnCallsAreGoneAsWell) {
    const TemporaryHome home;
    const TemporaryFolder folder(quickPlace());
    const TreeCounts counts = makeTree(folder, 60);
    FakePreferences preferences;
    preferences.set("OverwritePattern", 0);
    preferences.set("NumberOfWrites", 2);
    FakeClock clock;
    FakeProgressIndicator bar;
    FakeTextField name;
    FeedbackSequence draws;
    const auto system = platform::makeSystemCalls();
    FileAccess access({*system, clock, draws}, preferences, bar, name);
    std::vector<std::string> paths{folder / "tree"};
    access.shredDroppedFile(paths);
    EXPECT_EQ(access.outcome().filesRemoved, counts.files);
    EXPECT_EQ(access.outcome().foldersRemoved, counts.folders);
    EXPECT_THAT(access.outcome().troubles, IsEmpty());
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("outside"));
}

TEST_F(LanedTreesTest, OfSeveralPassesHaveTheSameWrites) {
    LanedRun one(false);
    LanedRun two(true);
    for (LanedRun* run : {&one, &two}) {
        run->preferences.set("NumberOfWrites", 4);
        makeTree(run->folder, 20);
        run->shred("tree");
        EXPECT_THAT(namesIn(run->folder.path()), ElementsAre("outside"));
    }
    EXPECT_EQ(writesOf(two.system), writesOf(one.system));
    EXPECT_EQ(two.draws.next(), one.draws.next());
}

TEST_F(LanedTreesTest, OnAMediumNoNameGoesBeforeItsFileWasFlushed) {
    LanedRun run(true);
    makeTree(run.folder, 40);
    run.system.inMemory = 0;
    run.shred("tree");
    std::set<std::string> dirty;
    for (const Call& call : run.system.calls) {
        if (call.key.what == "writeAt") dirty.insert(call.key.name);
        if (call.key.what == "flushFileSystem") dirty.clear();
        if (call.key.what == "flushFile") dirty.erase(call.key.name);
        if (call.key.what == "removeFile") {
            EXPECT_FALSE(dirty.contains(call.key.name)) << call.key.name;
        }
    }
    EXPECT_THAT(namesIn(run.folder.path()), ElementsAre("outside"));
}

TEST_F(LanedTreesTest, AFileThatGrewUnderAnotherNameIsCountedByItsFormerSize) {
    LanedRun one(false);
    LanedRun two(true);
    std::vector<std::string> texts;
    for (LanedRun* run : {&one, &two}) {
        for (int i = 0; i < 60; ++i) {
            const std::string file = run->folder / ("tree/" + std::to_string(i));
            writeFile(file, recognisable(1000));
            hardLink(file, run->folder / ("tree/same " + std::to_string(i)));
        }
        const Outcome& outcome = run->shred("tree");
        EXPECT_EQ(outcome.bytesOverwritten, 120U * 1000);
        texts.push_back(textOf(outcome, run->folder));
    }
    EXPECT_EQ(texts[0], texts[1]);
}

TEST_F(LanedTreesTest, FoldersThatHoldFilesAloneAreNotListedForTheirOwnNames) {
    LanedRun run(true);
    for (const char* folder : {"plain", "mixed", "mixed/inner"}) {
        for (int i = 0; i < 60; ++i) {
            writeFile(run.folder / ("tree/" + std::string(folder) + "/" + std::to_string(i)), "x");
        }
    }
    std::map<std::string, int> listed;
    run.shred("tree");
    for (const Call& call : run.system.callsOf("readFolder")) ++listed[call.key.name];
    // To measure and to name the files; then to overwrite, under the new name.
    EXPECT_EQ(listed["plain"], 2);
    EXPECT_EQ(listed["inner"], 2);
    EXPECT_EQ(listed["mixed"], 3);
}

TEST_F(LanedTreesTest, TheDrawsForFoldersThatAreNotListedAreMade) {
    // A folder with a FIFO is listed, and draws as much for that as for a file of no bytes.
    std::vector<std::uint32_t> next;
    for (const bool isPlain : {true, false}) {
        LanedRun run(true);
        for (int i = 0; i < 119; ++i) {
            writeFile(run.folder / ("tree/sub/" + std::to_string(i)), "x");
        }
        const std::string last = run.folder / "tree/sub/last";
        if (isPlain) {
            writeFile(last);
        } else {
            ASSERT_EQ(mkfifo(last.c_str(), 0600), 0);
        }
        run.shred("tree");
        EXPECT_THAT(namesIn(run.folder.path()), IsEmpty());
        const auto listings = run.system.callsOf("readFolder");
        EXPECT_EQ(std::ranges::count_if(listings,
                                        [](const Call& call) { return call.key.name == "sub"; }),
                  isPlain ? 2 : 3);
        next.push_back(run.draws.next());
    }
    EXPECT_EQ(next[0], next[1]);
}

}  // namespace
}  // namespace dorvanel::test
