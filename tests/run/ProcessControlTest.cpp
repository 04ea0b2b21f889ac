// SPDX-License-Identifier: MIT
#include "run/ProcessControl.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>
#include <sstream>

#include "support/FakeClock.h"
#include "support/FakeOtherApplications.h"
#include "support/FakeProcessManager.h"
#include "support/FakeQuitWait.h"

namespace dorvanel::test {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

class ProcessControlTest : public ::testing::Test {
  protected:
    std::chrono::microseconds slept() const {
        return std::accumulate(clock.sleeps.begin(), clock.sleeps.end(), 0us);
    }

    FakeProcessManager processes;
    FakeClock clock;
    FakeQuitWait quitWait{clock};
    FakeOtherApplications others;
};

TEST_F(ProcessControlTest, WithNoWatchedApplicationNothingIsSentAndOneWaitIsAll) {
    processes.add("Finder", "FNDR", "MACS");
    EXPECT_EQ(KillEveryone(processes, others, quitWait), 0);
    EXPECT_TRUE(processes.quits.empty());
    EXPECT_THAT(clock.sleeps, ElementsAre(500'000us));
    EXPECT_EQ(processes.walks, 2);
}

TEST_F(ProcessControlTest, ApplicationsThatAreNoBundlesAreAskedOnceAndWaitedForWithTheOthers) {
    others.looks = {2, 2, 1, 0};
    EXPECT_EQ(KillEveryone(processes, others, quitWait), 0);
    EXPECT_EQ(others.asked, 1);
    EXPECT_THAT(clock.sleeps, ElementsAre(500'000us, 500'000us, 500'000us));
}

TEST_F(ProcessControlTest, ThoseThatStayAreCountedWithTheOthers) {
    processes.add("Safari", "APPL", "sfri");
    others.looks.assign(51, 2);
    EXPECT_EQ(KillEveryone(processes, others, quitWait), 3);
}

TEST_F(ProcessControlTest, OurOwnProcessIsNeitherCountedNorQuit) {
    processes.current = processes.add("Dorvanel X", "APPL", "sfri");
    EXPECT_EQ(Killer(processes, 1), 0);
    EXPECT_TRUE(processes.quits.empty());
}

TEST_F(ProcessControlTest, AWatchedSignatureOfAnotherTypeIsIgnored) {
    processes.add("Safari helper", "appe", "sfri");
    processes.add("Safari document", "appl", "sfri");
    EXPECT_EQ(Killer(processes, 1), 0);
    EXPECT_TRUE(processes.quits.empty());
}

TEST_F(ProcessControlTest, TwoInstancesOfOneApplicationCountAsTwo) {
    const auto first = processes.add("Safari", "APPL", "sfri");
    const auto second = processes.add("Safari", "APPL", "sfri");
    EXPECT_EQ(Killer(processes, 1), 2);
    EXPECT_THAT(processes.quits, ElementsAre(first, second));
}

TEST_F(ProcessControlTest, AnApplicationThatQuitsAfterTenSecondsEndsTheWaitAtTheNextLook) {
    processes.add("Safari", "APPL", "sfri");
    const auto start = clock.now();
    processes.onWalk = [&] {
        if (clock.now() - start >= 10s) processes.processes.clear();
    };
    EXPECT_EQ(KillEveryone(processes, others, quitWait), 0);
    EXPECT_EQ(slept(), 10s);
    EXPECT_EQ(processes.walks, 21);  // one to quit, then a look at 0.5 s, 1 s, ... 10 s
}

TEST_F(ProcessControlTest, OneThatNeverQuitsIsWaitedForFor25AndAHalfSecondsAndAskedOnce) {
    processes.add("Safari", "APPL", "sfri");
    EXPECT_EQ(KillEveryone(processes, others, quitWait), 1);
    EXPECT_EQ(slept(), 25'500ms);
    EXPECT_EQ(clock.sleeps.size(), 51U);
    EXPECT_EQ(processes.quits.size(), 1U);
    EXPECT_EQ(processes.walks, 51);
}

TEST_F(ProcessControlTest, TheLastLookCountsEvenWhenOneQuitsDuringTheLastWait) {
    processes.add("Safari", "APPL", "sfri");
    const auto start = clock.now();
    processes.onWalk = [&] {
        if (clock.now() - start >= 25'500ms) processes.processes.clear();
    };
    EXPECT_EQ(KillEveryone(processes, others, quitWait), 1);
}

TEST_F(ProcessControlTest, ACancelledWaitEndsItAtOnce) {
    processes.add("Safari", "APPL", "sfri");
    quitWait.onWait = [&] {
        if (clock.sleeps.size() == 2) quitWait.cancel();
    };
    EXPECT_EQ(KillEveryone(processes, others, quitWait), 1);
    EXPECT_EQ(slept(), 1s);
    EXPECT_EQ(processes.walks, 3);
}

TEST_F(ProcessControlTest, AllElevenSignaturesAreWatchedAndNoOthers) {
    processes.add("1", "APPL", "sfri");
    processes.add("2", "APPL", "MSIE");
    processes.add("3", "APPL", "MOZZ");
    processes.add("4", "APPL", "MOZB");
    processes.add("5", "APPL", "OPRA");
    processes.add("6", "APPL", "OWEB");
    processes.add("7", "APPL", "iCAB");
    processes.add("8", "APPL", "CHIM");
    processes.add("9", "APPL", "emal");
    processes.add("10", "APPL", "BLTO");
    processes.add("11", "APPL", "CSOm");
    EXPECT_EQ(Killer(processes, 1), 11);
    for (const auto& watched : processes.processes) {
        EXPECT_THAT(processes.quits, ::testing::Contains(watched.serial));
    }
    processes.processes.clear();
    processes.add("case", "APPL", "SFRI");
    processes.add("case", "APPL", "icab");
    processes.add("Safari", "APPL", "\?\?\?\?");
    processes.add("iCab", "APPL", "xxxx");
    EXPECT_EQ(Killer(processes, 0), 0);
}

TEST_F(ProcessControlTest, CountingSendsNothing) {
    processes.add("Safari", "APPL", "sfri");
    EXPECT_EQ(Killer(processes, 0), 1);
    EXPECT_TRUE(processes.quits.empty());
}

TEST_F(ProcessControlTest, AProcessThatCannotBeReadIsPassedOver) {
    processes.add("gone", "APPL", "sfri");
    processes.processes.back().readable = false;
    const auto second = processes.add("Safari", "APPL", "sfri");
    EXPECT_EQ(Killer(processes, 1), 1);
    EXPECT_THAT(processes.quits, ElementsAre(second));
}

TEST_F(ProcessControlTest, AQuitThatFailsIsCountedAllTheSame) {
    processes.add("Safari", "APPL", "sfri");
    processes.quitResult = procNotFound;
    EXPECT_EQ(Killer(processes, 1), 1);
    EXPECT_EQ(SendQuitAppleEventToApplication(processes, {0, 101}), procNotFound);
}

TEST_F(ProcessControlTest, TheDiagnosticListingHasANameADashAndTheSignature) {
    processes.add("Safari", "APPL", "sfri");
    processes.add("", "APPL", "none");
    processes.add("Finder", "FNDR", "MACS");
    std::ostringstream output;
    EXPECT_EQ(GetProcesses(processes, output), procNotFound);
    EXPECT_EQ(output.str(), "Safari-sfri\nFinder-MACS\n");
}

TEST_F(ProcessControlTest, TheDiagnosticListingEndsAtTheFirstProcessThatCannotBeRead) {
    processes.add("Safari", "APPL", "sfri");
    processes.add("gone", "APPL", "sfri");
    processes.processes.back().readable = false;
    processes.add("Finder", "FNDR", "MACS");
    std::ostringstream output;
    EXPECT_EQ(GetProcesses(processes, output), procNotFound);
    EXPECT_EQ(output.str(), "Safari-sfri\n");
}

TEST_F(ProcessControlTest, ANameThatLooksLikeAFormatIsWrittenAsItIs) {
    processes.add("%s%n%x {}", "APPL", "%d%n");
    std::ostringstream output;
    GetProcesses(processes, output);
    EXPECT_EQ(output.str(), "%s%n%x {}-%d%n\n");
}

struct RecordingSystemEvents final : platform::SystemEvents {
    OSErr send(FourCharCode eventID) override {
        sent.push_back(eventID);
        return result;
    }

    std::vector<FourCharCode> sent;
    OSErr result = noErr;
};

TEST(SystemProcessEventTest, IsHandedOnAndItsCodeHandedBack) {
    RecordingSystemEvents events;
    EXPECT_EQ(SendAppleEventToSystemProcess(events, platform::kAEShutDown), noErr);
    events.result = errAETimeout;
    EXPECT_EQ(SendAppleEventToSystemProcess(events, platform::kAERestart), errAETimeout);
    EXPECT_THAT(events.sent, ElementsAre(fourCharCode("shut"), fourCharCode("rest")));
}

}  // namespace
}  // namespace dorvanel::test
