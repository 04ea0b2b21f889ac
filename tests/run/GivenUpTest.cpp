// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <filesystem>
#include <thread>

#include "run/RunFixture.h"

// A quit request, at every moment of a run. Its doors are the signals and every Quit command; what
// must never come of it is a shredding that goes on unseen, or a logout, shutdown or restart.

namespace dorvanel::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;
using ui::AlertButton;

class GivenUpTest : public RunFixture {
  protected:
    GivenUpTest() {
        addSafariCache();
        preferences.set("ShredCache", true);
    }

    void expectNothingShreddedOrSent() {
        run.waitForWorker();
        EXPECT_TRUE(std::filesystem::exists(home / "Library/Caches/Safari/00/page.cache"));
        EXPECT_THAT(calls.calls(), Not(Contains(StartsWith("event"))));
        ASSERT_EQ(reports.size(), 1U);
        EXPECT_EQ(reports[0].result, RunResult::givenUp);
        EXPECT_EQ(run.activity(), Activity::idle);
        EXPECT_THAT(mPathArray, IsEmpty());
        EXPECT_THAT(logLines(), Not(Contains(StartsWith("Dorvanel Completed"))));
        EXPECT_THAT(logLines(), Not(Contains("Start Shredding Now")));
        // The log is closed: what comes now is not written.
        const auto lines = logLines();
        kalvet_logger("later");
        EXPECT_EQ(logLines(), lines);
    }
};

TEST_F(GivenUpTest, AtTheConfirmationTheAnswerNoLongerCounts) {
    preferences.set("ConfirmShredding", true);
    alerts.onAlert = [this](const std::string&) { run.giveUp(); };
    for (const AlertButton answer : {AlertButton::alternateButton, AlertButton::defaultButton}) {
        alerts.answers["Dorvanel Confirmation"] = answer;
    }
    run.shredAndShutdown();
    expectNothingShreddedOrSent();
    EXPECT_EQ(logLines().back(), "") << "no line tells of an answer";
}

TEST_F(GivenUpTest, WhileApplicationsAreWaitedForTheWaitEndsAtOnce) {
    processes.add("Safari", "APPL", "sfri");
    quitWait.onWait = [this] {
        if (clock.sleeps.size() == 3) run.giveUp();
    };
    run.shredAndShutdown();
    expectNothingShreddedOrSent();
    EXPECT_EQ(clock.sleeps.size(), 3U);
    EXPECT_THAT(calls.calls(), ElementsAre("ended")) << "and nobody is asked";
    EXPECT_EQ(run.shutdownStatus(), ShreddingRun::nothing);
}

TEST_F(GivenUpTest, AtTheQuestionAboutApplicationsThatDidNotQuit) {
    processes.add("Safari", "APPL", "sfri");
    alerts.onAlert = [this](const std::string&) { run.giveUp(); };
    run.shredAndRestart();
    expectNothingShreddedOrSent();
}

TEST_F(GivenUpTest, WhileTheProcessesAreListedBeforeCollecting) {
    watch.setInitialState();
    listing.onOpen = [this] {
        if (listing.commands.size() == 2) run.giveUp();
    };
    run.shredAndLogout();
    expectNothingShreddedOrSent();
    EXPECT_THAT(logLines(), Not(Contains("Safari"))) << "nothing is collected";
}

TEST_F(GivenUpTest, WhileTheProcessesAreListedAtTheVeryBeginningTheRunIsNotInitiated) {
    listing.onOpen = [this] { run.giveUp(); };
    run.shredAndLogout();
    EXPECT_THAT(logLines(),
                ElementsAre("Dorvanel *not* Initiated - application needs to terminate", ""));
    EXPECT_EQ(reports.at(0).refusal, Refusal::quitting);
    EXPECT_TRUE(std::filesystem::exists(home / "Library/Caches/Safari/00/page.cache"));
}

TEST_F(GivenUpTest, WhileTheWorkerShredsTheWorkGoesOnButNothingFollows) {
    for (void (ShreddingRun::*action)() :
         {&ShreddingRun::shredAndLogout, &ShreddingRun::shredAndShutdown,
          &ShreddingRun::shredAndRestart}) {
        FakeQuitWait wait(clock);
        Collectors others(mPathArray, preferences, platform::defaultFileManager(), defaults, clock);
        ShreddingRun one{{fileAccess, preferences, watch, others, mPathArray, traces, mentions,
                          processes, events, wait, *worker, alerts, window, application, *this}};
        addSafariCache();
        reports.clear();
        fileName.onSet = [&] { one.giveUp(); };
        (one.*action)();
        one.waitForWorker();
        EXPECT_FALSE(std::filesystem::exists(home / "Library/Caches/Safari"));
        EXPECT_THAT(calls.calls(), Not(Contains(StartsWith("event"))));
        EXPECT_EQ(logLines().back(), "Dorvanel Completed Successfully");
        ASSERT_EQ(reports.size(), 1U);
        EXPECT_EQ(reports[0].result, RunResult::completed);
        EXPECT_TRUE(reports[0].endingStruck);
    }
}

TEST_F(GivenUpTest, AWorkerThatIsStoppedSendsNothingAndTheLogDoesNotSayThatItCompleted) {
    fileName.onSet = [this] { fileAccess.requestStop(); };
    run.shredAndShutdown();
    run.waitForWorker();
    EXPECT_THAT(calls.calls(), ElementsAre("ended"));
    EXPECT_THAT(logLines(), Not(Contains(StartsWith("Dorvanel Completed"))));
    EXPECT_EQ(logLines().back(), "Dorvanel Stopped - some items were not shredded");
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_TRUE(reports[0].outcome.stopped);
    EXPECT_TRUE(reports[0].endingStruck);
}

TEST_F(GivenUpTest, BeforeARunNoneBeginsAndHandedOverFilesStayToo) {
    run.giveUp();
    EXPECT_FALSE(run.shredFiles(held(home / "Library/Caches/Safari")));
    EXPECT_EQ(reports.at(0).refusal, Refusal::quitting);
    run.shredAndNothing();
    EXPECT_EQ(reports.at(1).refusal, Refusal::quitting);
    EXPECT_TRUE(std::filesystem::exists(home / "Library/Caches/Safari/00/page.cache"));
}

TEST_F(GivenUpTest, FromAnotherThreadAtAnyMomentNothingIsEverSentAfterwards) {
    // Each round gives up somewhere else in the run; where the worker was first, it goes on.
    for (int spin = 0; spin < 200; ++spin) {
        addSafariCache();
        reports.clear();
        calls.clear();
        FakeQuitWait wait(clock);
        ShreddingRun one{{fileAccess, preferences, watch, collectors, mPathArray, traces, mentions,
                          processes, events, wait, *worker, alerts, window, application, *this}};
        std::atomic<bool> asked = false;
        bool sentBefore = false;
        std::thread quit([&] {
            for (int i = 0; i < spin * 50; ++i) std::this_thread::yield();
            sentBefore = !calls.calls().empty();
            one.giveUp();
            asked = true;
        });
        one.shredAndLogout();
        one.waitForWorker();
        quit.join();
        ASSERT_EQ(reports.size(), 1U);
        const bool sent = testing::Value(calls.calls(), Contains(StartsWith("event")));
        EXPECT_TRUE(!sent || !reports[0].endingStruck);
        EXPECT_TRUE(reports[0].result != RunResult::givenUp || !sent) << sentBefore;
        EXPECT_EQ(one.activity(), Activity::idle);
    }
}

}  // namespace
}  // namespace dorvanel::test
