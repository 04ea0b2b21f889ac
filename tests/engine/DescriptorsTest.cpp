// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <sys/resource.h>

#include <cerrno>

#include "support/Disk.h"
#include "support/EngineFixture.h"

namespace dorvanel::test {
namespace {

using ::testing::IsEmpty;

/// What happens where the process, or the machine, has no descriptor left.
class DescriptorsTest : public EngineFixture, public testing::WithParamInterface<int> {
  protected:
    void SetUp() override {
        faulty.inMemory = 0;  // files wait open for their flush
        for (int i = 0; i < 5; ++i) {
            writeFile(folder / ("tree/" + std::to_string(i)), recognisable(1000));
            writeFile(folder / ("tree/sub/" + std::to_string(i)), recognisable(1000));
        }
        writeFile(folder / "first", recognisable(1000));
    }

    /// Shreds two items, of which the first one leaves a file waiting; the `nth` call from the
    /// second one's move on fails.
    const Outcome& shredFailing(const std::string& operation, int nth) {
        int moves = 0;
        faulty.before = [=, this](const std::string& call, const std::string&) mutable {
            if (call != "makeFolder" || ++moves != 2) return;
            faulty.failOnce(operation, nth, GetParam());
        };
        return shred({folder / "first", folder / "tree"});
    }
};

TEST_P(DescriptorsTest, AFileThatCannotBeOpenedIsTriedAgainAfterAFlush) {
    for (const char* operation : {"openFile", "openFolder"}) {
        const Outcome& outcome = shredFailing(operation, 2);
        EXPECT_EQ(faulty.failed, 1) << operation;
        EXPECT_EQ(outcome.filesOverwritten, 11U);
        EXPECT_EQ(outcome.foldersRemoved, 2U);
        EXPECT_THAT(outcome.troubles, IsEmpty());
        EXPECT_THAT(system.callsOf("reopenFile"), IsEmpty()) << "it was not for its permissions";
        EXPECT_THAT(namesIn(folder.path()), IsEmpty());
        faulty.reset();
        system.calls.clear();
        SetUp();
    }
}

TEST_P(DescriptorsTest, TheFlushComesBeforeTheSecondTry) {
    shredFailing("openFile", 1);
    std::vector<std::string> calls;
    for (const auto& call : system.calls) calls.push_back(call.what);
    const auto second = std::find(calls.rbegin(), calls.rend(), "makeFolder").base();
    const auto failed = std::find(second, calls.end(), "openFile");
    ASSERT_NE(failed, calls.end());
    EXPECT_EQ(
        std::vector<std::string>(failed, failed + 5),
        (std::vector<std::string>{"openFile", "flushFile", "close", "removeFile", "removeFolder"}));
    EXPECT_NE(std::find(failed + 5, calls.end(), "openFile"), calls.end());
}

INSTANTIATE_TEST_SUITE_P(OfTheProcessAndOfTheMachine, DescriptorsTest,
                         testing::Values(EMFILE, ENFILE));

TEST(FewDescriptorsTest, ADeepTreeIsShreddedWithTwentyDescriptors) {
    const TemporaryFolder folder(quickPlace());
    std::string path = folder / "tree";
    for (int i = 0; i < 200; ++i) path += "/level";
    writeFile(path + "/file", recognisable(1000));
    const auto shredWithFew = [&]() -> std::string {
        struct rlimit limit {};
        getrlimit(RLIMIT_NOFILE, &limit);
        limit.rlim_cur = openDescriptors() + 20;
        if (setrlimit(RLIMIT_NOFILE, &limit) != 0) return "setrlimit";
        TestEngine engine;
        engine.faulty.inMemory = 0;
        const Outcome& outcome = engine.shred({folder / "tree"});
        if (outcome.filesOverwritten != 1) return "not overwritten";
        if (outcome.foldersRemoved != 201) return "not all removed";
        return outcome.troubles.empty() ? "" : outcome.troubles[0].operation;
    };
    EXPECT_EQ(inChild(shredWithFew), "");
    EXPECT_THAT(namesIn(folder.path()), IsEmpty());
}

}  // namespace
}  // namespace dorvanel::test
