// SPDX-License-Identifier: MIT

// What fails in a large tree in memory, of which a second thread removes the names, is told as if
// there were no such thread.
#include <gmock/gmock.h>
#include <sys/resource.h>

#include <algorithm>
#include <cerrno>
#include <new>

#include "engine/LanedRun.h"
#include "support/Disk.h"
#include "support/Seeds.h"

namespace dorvanel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Call = LanedSystemCalls::Call;
using Key = LanedSystemCalls::Key;

constexpr int filesEach = 18;

/// A call that is to fail, and how.
struct Fault {
    std::string what;
    int code;
};

class LanedFaultsTest : public ::testing::TestWithParam<Fault> {
  protected:
    void SetUp() override {
        if (!hasLane()) GTEST_SKIP() << "no folder in memory, or one processor alone";
    }

    /// Calls of the operation from everywhere in a request: those that fail in turn.
    static std::vector<Key> chosen(const std::string& what) {
        LanedRun run(false);
        makeTree(run.folder, filesEach);
        run.shred("tree");
        std::vector<Call> calls = run.system.callsOf(what);
        // A path is another one in each run.
        std::erase_if(calls, [](const Call& call) { return call.key.name.starts_with('/'); });
        std::vector<Key> keys;
        const std::size_t most = std::max(seedsOf(6), 2U);
        for (std::size_t i = 0; i < most && !calls.empty(); ++i) {
            keys.push_back(calls[i * (calls.size() - 1) / std::max<std::size_t>(most - 1, 1)].key);
        }
        keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
        return keys;
    }

    struct Result {
        std::string outcome;
        std::vector<std::string> removals;
        std::vector<std::string> lines;
        std::uint64_t left = 0;
        std::uint32_t nextDraw = 0;
        int failed = 0;
        bool hadSecond = false;
    };
    static Result shredFailing(bool hasTwoThreads, int slow, const Key& key, int code) {
        LanedRun run(hasTwoThreads);
        const TreeCounts counts = makeTree(run.folder, filesEach);
        const std::uint64_t outside = filesBelow(run.folder / "outside");
        run.system.secondIsSlowBy = std::chrono::microseconds(slow);
        run.system.fail(key, code);
        const std::size_t open = openDescriptors();
        const Outcome& outcome = run.shred("tree");
        EXPECT_EQ(openDescriptors(), open);
        EXPECT_EQ(removedOf(run.system), outcome.filesRemoved + outcome.foldersRemoved);
        const std::uint64_t left = filesBelow(run.folder.path()) - outside;
        EXPECT_EQ(outcome.filesRemoved + left, counts.files);
        return {textOf(outcome, run.folder),
                removalsOf(run.system),
                run.log.lines(),
                left,
                run.draws.next(),
                run.system.failed,
                hadSecondThread(run.system)};
    }
};

TEST_P(LanedFaultsTest, IsToldTheSameByOneThreadAndByTwo) {
    const std::vector<Key> keys = chosen(GetParam().what);
    ASSERT_FALSE(keys.empty());
    int hadSecond = 0;
    for (const Key& key : keys) {
        const std::string text = key.what + " " + key.name + " " + std::to_string(key.nth);
        const Result one = shredFailing(false, 0, key, GetParam().code);
        EXPECT_EQ(one.failed, 1) << text;
        for (const int slow : {0, 50}) {
            const Result two = shredFailing(true, slow, key, GetParam().code);
            EXPECT_EQ(two.failed, 1) << text;
            EXPECT_EQ(two.outcome, one.outcome) << text;
            EXPECT_EQ(two.removals, one.removals) << text;
            EXPECT_EQ(two.lines, one.lines) << text;
            EXPECT_EQ(two.left, one.left) << text;
            EXPECT_EQ(two.nextDraw, one.nextDraw) << text;
            hadSecond += two.hadSecond ? 1 : 0;
        }
        if (HasFailure()) return;
    }
    EXPECT_GT(hadSecond, 0) << "a failure at the very beginning ends the request";
}

INSTANTIATE_TEST_SUITE_P(Of, LanedFaultsTest,
                         ::testing::Values(Fault{"openFile", EIO}, Fault{"openFile", EACCES},
                                           Fault{"status", EIO}, Fault{"statusAt", EIO},
                                           Fault{"writeAt", EIO}, Fault{"writeAt", ENOSPC},
                                           Fault{"removeFile", EACCES},
                                           Fault{"removeFolder", EACCES}, Fault{"rename", EIO},
                                           Fault{"rename", EEXIST}, Fault{"openFolder", EIO},
                                           Fault{"readFolder", EIO}, Fault{"changeMode", EACCES}),
                         [](const auto& test) {
                             return test.param.what + "WithErrno" + std::to_string(test.param.code);
                         });

class LanedShortageTest : public LanedFaultsTest {};

TEST_F(LanedShortageTest, NoRoomForTheSlackIsNoFailure) {
    LanedRun run(true);
    const TreeCounts counts = makeTree(run.folder, 30);
    int failed = 0;
    for (const Key& key : chosen("writeAt")) {
        if (key.nth != 2) continue;  // the first one is of the file's own bytes
        LanedRun two(true);
        makeTree(two.folder, filesEach);
        two.system.fail(key, ENOSPC);
        const Outcome& outcome = two.shred("tree");
        failed += two.system.failed;
        EXPECT_EQ(outcome.notOverwritten, 0U);
        EXPECT_THAT(outcome.troubles, IsEmpty());
        EXPECT_THAT(namesIn(two.folder.path()), ElementsAre("outside"));
    }
    EXPECT_GT(failed, 0);
    EXPECT_EQ(run.shred("tree").filesRemoved, counts.files);
}

/// Shreds "tree" where the process has few descriptors more than it needs now; "" where all went.
std::string shredWithFewDescriptors(rlim_t few, LanedRun& run, std::uint64_t files,
                                    std::uint64_t folders) {
    struct rlimit limit {};
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = openDescriptors() + few;
    if (setrlimit(RLIMIT_NOFILE, &limit) != 0) return "setrlimit";
    FileAccess access({run.system, run.clock, run.draws}, run.preferences, run.bar, run.fileName);
    std::vector<std::string> paths{run.folder / "tree"};
    access.shredDroppedFile(paths);
    const Outcome& outcome = access.outcome();
    if (!outcome.troubles.empty()) return textOf(outcome, run.folder);
    if (outcome.filesRemoved != files) return "not all files removed";
    return outcome.foldersRemoved == folders ? "" : "not all folders removed";
}

TEST_F(LanedShortageTest, ALargeTreeIsShreddedWithFewDescriptors) {
    for (const rlim_t few : {20U, 60U, 120U}) {
        LanedRun run(true);
        const TreeCounts counts = makeTree(run.folder, 60);
        run.system.secondIsSlowBy = std::chrono::microseconds(50);
        EXPECT_EQ(inChild([&] {
                      return shredWithFewDescriptors(few, run, counts.files, counts.folders);
                  }),
                  "");
        EXPECT_THAT(namesIn(run.folder.path()), ElementsAre("outside")) << few;
    }
}

TEST_F(LanedShortageTest, ADeepTreeOfManyFilesIsShreddedWithFewDescriptors) {
    for (const rlim_t few : {20U, 60U, 120U}) {
        LanedRun run(true);
        std::string path = run.folder / "tree";
        constexpr int levels = 60;
        for (int i = 0; i < levels; ++i) {
            for (const char* name : {"1", "2", "3", "4", "5"}) {
                writeFile(path + "/" + name, recognisable(100));
            }
            path += "/level";
        }
        run.system.secondIsSlowBy = std::chrono::microseconds(50);
        const std::string said =
            inChild([&] { return shredWithFewDescriptors(few, run, levels * 5, levels); });
        EXPECT_EQ(said, "") << few;
        EXPECT_THAT(namesIn(run.folder.path()), IsEmpty()) << few;
    }
}

TEST_F(LanedShortageTest, MemoryThatRunsOutIsToldWithWhatIsLeftAndWhere) {
    std::size_t all = 0;
    {
        LanedRun run(true);
        makeTree(run.folder, filesEach);
        run.shred("tree");
        all = run.system.calls.size();
    }
    const std::size_t step = all / seedsOf(16);
    for (std::size_t at = 3; at < all; at += step) {
        const std::size_t open = openDescriptors();
        std::string what;
        {
            LanedRun run(true);
            const TreeCounts counts = makeTree(run.folder, filesEach);
            std::size_t calls = 0;
            run.system.before = [&](const Call& call) {
                // Closing needs no memory, and neither does what the second thread does.
                if (++calls < at || !what.empty() || call.isOfSecond || call.key.what == "close") {
                    return;
                }
                what = call.key.what;
                throw std::bad_alloc();
            };
            const Outcome& outcome = run.shred("tree");
            if (what.empty()) continue;  // too near to the end
            EXPECT_EQ(removedOf(run.system), outcome.filesRemoved + outcome.foldersRemoved)
                << what << " at call " << at;
            const std::uint64_t left = filesBelow(run.folder.path()) - 1;
            EXPECT_EQ(outcome.filesRemoved + left, counts.files) << what << " at call " << at;
            EXPECT_GT(outcome.notRemoved, 0U);
            EXPECT_FALSE(outcome.troubles.empty());
            std::vector<std::string> again;
            for (const std::string& name : namesIn(run.folder.path())) {
                if (name == "outside") continue;
                const std::string path = run.folder / name;
                EXPECT_NE(std::ranges::find(outcome.left, path), outcome.left.end()) << path;
                again.push_back(path);
            }
            run.access.shredDroppedFile(again);
            EXPECT_THAT(run.access.outcome().troubles, IsEmpty()) << what << " at call " << at;
            EXPECT_THAT(namesIn(run.folder.path()), ElementsAre("outside"));
        }
        EXPECT_TRUE(what != "readFolder" || openDescriptors() == open) << "at call " << at;
        if (HasFailure()) return;
    }
}

}  // namespace
}  // namespace dorvanel::test
