// SPDX-License-Identifier: MIT

// Large files, of which a second thread makes and writes blocks: the same comes of it as without.
#include "engine/WriteLane.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <functional>
#include <map>
#include <tuple>
#include <vector>

#include "engine/LanedRun.h"
#include "support/ContentHash.h"
#include "support/Disk.h"

namespace dorvanel::test {
namespace {

constexpr std::size_t block = OverwriteBuffer::blockSize;
constexpr std::size_t large = WriteLane::worthwhile;

struct Settings {
    int pattern = 0;
    int numberOfWrites = 2;
    bool doD = false;
    bool nsa = false;
};

/// What came of a file, as far as it must not depend on the threads.
struct Result {
    std::map<std::uint64_t, Writes> writes;  ///< by their offset, each in its order
    std::string contents;                    ///< hash of them
    std::uint32_t nextDraw = 0;
    std::uint64_t overwritten = 0;
    bool hadSecond = false;

    static Result of(bool hasTwoThreads, const Settings& settings, std::size_t size,
                     const std::function<void(LanedRun&)>& prepare = {}) {
        LanedRun run(hasTwoThreads);
        run.preferences.set("OverwritePattern", settings.pattern);
        run.preferences.set("NumberOfWrites", settings.numberOfWrites);
        run.preferences.set("DoDSanitize", settings.doD);
        run.preferences.set("NSA", settings.nsa);
        const std::string path = run.folder / "file";
        writeFile(path, recognisable(size));
        if (prepare) prepare(run);
        run.access.shredOneFile(path);

        Result result;
        for (const auto& call : run.system.callsOf("writeAt")) {
            result.writes[call.offset].push_back(
                fmt::format("{} #{:x} {}", call.length, call.hash, call.result));
        }
        const std::string contents = readFile(path);
        result.contents =
            fmt::format("{} {:x}", contents.size(), contentHash(contents.data(), contents.size()));
        result.nextDraw = run.draws.next();
        result.overwritten = run.access.outcome().filesOverwritten;
        result.hadSecond = hadSecondThread(run.system);
        return result;
    }
};

void expectEqual(const Result& two, const Result& one) {
    EXPECT_EQ(two.writes, one.writes);
    EXPECT_EQ(two.contents, one.contents);
    EXPECT_EQ(two.nextDraw, one.nextDraw);
    EXPECT_EQ(two.overwritten, one.overwritten);
    EXPECT_FALSE(one.hadSecond);
}

class WriteLaneTest : public ::testing::Test {
  protected:
    void SetUp() override {
        if (!hasLane()) GTEST_SKIP() << "no folder in memory, or one processor alone";
    }
};

TEST_F(WriteLaneTest, EveryBlockIsWrittenAsByOneThreadWhateverTheSize) {
    for (const std::size_t size : {large, large + 1, large + block - 1, large + 3 * block + 77}) {
        const Result two = Result::of(true, {}, size);
        EXPECT_TRUE(two.hadSecond) << size;
        expectEqual(two, Result::of(false, {}, size));
    }
}

TEST_F(WriteLaneTest, AFileThatIsNotWorthAThreadIsWrittenByOne) {
    EXPECT_FALSE(Result::of(true, {}, large - 1).hadSecond);
}

TEST_F(WriteLaneTest, EveryPassOfABlockIsWrittenInItsOrder) {
    // By index: one to four passes, three, and more than are kept for another thread.
    for (const int index : {0, 4, 11}) {
        const Settings settings{.numberOfWrites = index};
        expectEqual(Result::of(true, settings, large + 5), Result::of(false, settings, large + 5));
    }
}

class WriteLanePatternTest : public WriteLaneTest,
                             public ::testing::WithParamInterface<std::tuple<int, bool, bool>> {};

TEST_P(WriteLanePatternTest, EveryPatternIsWrittenAsByOneThread) {
    const auto [pattern, doD, nsa] = GetParam();
    const Settings settings{pattern, 4, doD, nsa};
    expectEqual(Result::of(true, settings, large + 1), Result::of(false, settings, large + 1));
}

INSTANTIATE_TEST_SUITE_P(Of, WriteLanePatternTest,
                         ::testing::Combine(::testing::ValuesIn(isSanitized()
                                                                    ? std::vector{0, 3}
                                                                    : std::vector{0, 1, 3, 7}),
                                            ::testing::Bool(), ::testing::Bool()));

TEST_F(WriteLaneTest, ASlowSecondThreadChangesNothing) {
    const auto slow = [](LanedRun& run) {
        run.system.secondIsSlowBy = std::chrono::milliseconds(2);
    };
    expectEqual(Result::of(true, {}, large, slow), Result::of(false, {}, large));
}

TEST_F(WriteLaneTest, AWriteThatFailsIsToldOnceAndTheOthersAreMade) {
    for (const int nth : {1, 2, 17, 31, 32}) {
        LanedRun run(true);
        writeFile(run.folder / "file", recognisable(large));
        run.system.fail({"writeAt", "file", nth}, EIO);
        run.access.shredOneFile(run.folder / "file");
        const Outcome& outcome = run.access.outcome();
        EXPECT_EQ(run.system.failed, 1);
        EXPECT_EQ(outcome.filesOverwritten, 0U) << nth;
        EXPECT_EQ(outcome.notOverwritten, 1U) << nth;
        ASSERT_EQ(outcome.troubles.size(), 1U) << nth;
        EXPECT_EQ(outcome.troubles[0].code, EIO);
        EXPECT_EQ(run.system.callsOf("writeAt").size(), large / block + 1);
    }
}

TEST_F(WriteLaneTest, ADiskWithoutRoomForTheSlackIsNoFailure) {
    const auto full = [](LanedRun& run) {
        run.system.fail({"writeAt", "file", static_cast<int>(large / block) + 1}, ENOSPC);
    };
    const Result two = Result::of(true, {}, large, full);
    EXPECT_EQ(two.overwritten, 1U);
    expectEqual(two, Result::of(false, {}, large, full));
}

TEST_F(WriteLaneTest, AStopLeavesNothingToBeWrittenAndNoSlack) {
    for (const int nth : {1, 5, 20}) {
        LanedRun run(true);
        writeFile(run.folder / "file", recognisable(large));
        run.system.before = [&](const LanedSystemCalls::Call& call) {
            if (call.key.what == "writeAt" && call.key.nth == nth) run.access.requestStop();
        };
        run.shred("file");
        const auto writes = run.system.callsOf("writeAt");
        const bool isOver = run.system.calls.back().key.what != "writeAt";
        EXPECT_TRUE(isOver) << "something was written after the file was closed";
        // Those that were given to the thread before the stop was seen are made.
        EXPECT_LE(writes.size(), static_cast<std::size_t>(nth) + WriteLane::depth + 2);
        EXPECT_TRUE(std::ranges::all_of(
            writes, [](const auto& call) { return call.offset + call.length <= large; }));
        EXPECT_EQ(run.access.outcome().filesOverwritten, 0U);
        EXPECT_TRUE(run.access.outcome().stopped);
        EXPECT_EQ(filesBelow(run.folder.path()), 1U);
    }
}

TEST_F(WriteLaneTest, AFileThatIsReadBackIsWrittenByOneThread) {
    LanedRun run(true);
    run.access.setVerifies(true);
    writeFile(run.folder / "file", recognisable(large + 1));
    const Outcome& outcome = run.shred("file");
    EXPECT_FALSE(hadSecondThread(run.system));
    EXPECT_EQ(outcome.filesOverwritten, 1U);
    EXPECT_EQ(outcome.perItem.at(0).verified, 1U);
}

}  // namespace
}  // namespace dorvanel::test
