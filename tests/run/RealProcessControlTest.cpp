// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <csignal>
#include <sstream>

#include "run/ProcessControl.h"
#include "support/FakeApplication.h"
#include "support/FakeOtherApplications.h"
#include "support/FakeQuitWait.h"
#include "support/OnlyTheseProcesses.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

using namespace std::chrono_literals;

/// Process control on real processes in real bundles. Only what a test starts can be reached.
class RealProcessControlTest : public ::testing::Test {
  protected:
    TemporaryFolder folder;
    FakeClock clock;
    FakeQuitWait quitWait{clock};
    FakeOtherApplications others;
};

TEST_F(RealProcessControlTest, AWatchedApplicationIsAskedToQuitAndIsGoneThen) {
    FakeApplication safari(folder.path(), "Safari", "APPLsfri");
    OnlyTheseProcesses processes({safari.pid()});
    int ending = -1;
    // The test is its parent: it must be waited for before it can be gone.
    quitWait.onWait = [&] {
        if (ending < 0) ending = safari.process().waitForEnd();
    };
    EXPECT_EQ(KillEveryone(processes, others, quitWait), 0);
    EXPECT_EQ(ending, 128 + SIGTERM);
    EXPECT_EQ(clock.sleeps.size(), 1U);
}

TEST_F(RealProcessControlTest, OneThatTakesNoNoticeIsStillThereAtTheEnd) {
    const FakeApplication mail(folder.path(), "Mail", "APPLemal", "stay");
    OnlyTheseProcesses processes({mail.pid()});
    EXPECT_EQ(KillEveryone(processes, others, quitWait), 1);
    EXPECT_EQ(clock.sleeps.size(), 51U);
    EXPECT_TRUE(mail.isRunning());
}

TEST_F(RealProcessControlTest, TwoInstancesCountAsTwoAndOtherTypesAndCreatorsNotAtAll) {
    const FakeApplication first(folder / "1", "Safari", "APPLsfri");
    const FakeApplication second(folder / "2", "Safari", "APPLsfri");
    const FakeApplication helper(folder / "3", "Safari", "appesfri");
    const FakeApplication other(folder / "4", "Safari", "APPLothr");
    OnlyTheseProcesses processes({first.pid(), second.pid(), helper.pid(), other.pid()});
    EXPECT_EQ(Killer(processes, 0), 2);
    EXPECT_TRUE(first.isRunning() && second.isRunning() && helper.isRunning() && other.isRunning());
}

TEST_F(RealProcessControlTest, OneThatHasEndedButWasNotWaitedForIsNotCounted) {
    FakeApplication safari(folder.path(), "Safari", "APPLsfri");
    OnlyTheseProcesses processes({safari.pid()});
    ASSERT_EQ(Killer(processes, 0), 1);
    safari.process().killWithoutWaiting();
    EXPECT_EQ(Killer(processes, 0), 0);
}

TEST_F(RealProcessControlTest, TheDiagnosticListingNamesIt) {
    const FakeApplication safari(folder.path(), "%n Safari", "APPLsfri");
    OnlyTheseProcesses processes({safari.pid()});
    std::ostringstream output;
    EXPECT_EQ(GetProcesses(processes, output), procNotFound);
    EXPECT_EQ(output.str(), "%n Safari-sfri\n");
}

}  // namespace
}  // namespace dorvanel::test
