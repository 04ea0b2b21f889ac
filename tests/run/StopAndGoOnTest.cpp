// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <filesystem>

#include "run/RunFixture.h"

// Cancelling what has touched nothing, stopping what shreds and going on with what that has left,
// and asking before the session is ended.

namespace dorvanel::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

class StopAndGoOnTest : public RunFixture {
  protected:
    StopAndGoOnTest() {
        addSafariCache();
        preferences.set("ShredCache", true);
    }
    void stillCollecting() override {
        if (onCollecting) onCollecting();
    }
    void expectCancelled() {
        run.waitForWorker();
        EXPECT_TRUE(std::filesystem::exists(page));
        EXPECT_THAT(calls.calls(), Not(Contains(StartsWith("event"))));
        ASSERT_EQ(reports.size(), 1U);
        EXPECT_EQ(reports[0].result, RunResult::cancelled);
        EXPECT_EQ(run.activity(), Activity::idle);
        EXPECT_FALSE(run.isQuitting());
        EXPECT_EQ(run.shutdownStatus(), ShreddingRun::nothing);
        EXPECT_THAT(mPathArray, IsEmpty());
        EXPECT_THAT(logLines(), Not(Contains("Start Shredding Now")));
        EXPECT_THAT(logLines(), Contains("User selected Cancel - Dorvanel Cancelled"));
    }

    std::string page = home / "Library/Caches/Safari/00/page.cache";
    std::function<void()> onCollecting;
};

TEST_F(StopAndGoOnTest, ACancelledWaitShredsNothingAndTheNextRunDoes) {
    processes.add("Safari", "APPL", "sfri");
    quitWait.onWait = [this] {
        if (clock.sleeps.size() == 3) run.cancel();
    };
    run.shredAndShutdown();
    expectCancelled();
    EXPECT_EQ(clock.sleeps.size(), 3U);
    processes.processes.clear();
    quitWait.onWait = {};
    run.shredAndLogout();
    run.waitForWorker();
    EXPECT_FALSE(std::filesystem::exists(page));
    EXPECT_THAT(calls.calls(), Contains("event rlgo"));
}

TEST_F(StopAndGoOnTest, ACancelWhileCollectingShredsNothing) {
    onCollecting = [this] { run.cancel(); };
    run.shredAndRestart();
    expectCancelled();
}

TEST_F(StopAndGoOnTest, ACancelThatComesTooLateOrTooEarlyChangesNothing) {
    run.cancel();
    preferences.set("ConfirmShredding", true);
    alerts.onAlert = [this](const std::string&) { run.cancel(); };
    fileName.onSet = [this] { run.cancel(); };
    run.shredAndNothing();
    run.waitForWorker();
    EXPECT_FALSE(std::filesystem::exists(page));
    EXPECT_EQ(reports.at(0).result, RunResult::completed);
}

TEST_F(StopAndGoOnTest, AQuitRequestAfterACancelIsNotLost) {
    processes.add("Safari", "APPL", "sfri");
    quitWait.onWait = [this] {
        run.cancel();
        run.giveUp();
    };
    run.shredAndShutdown();
    EXPECT_TRUE(run.isQuitting());
    EXPECT_EQ(reports.at(0).result, RunResult::givenUp);
    run.shredAndNothing();
    EXPECT_EQ(reports.at(1).refusal, Refusal::quitting);
    EXPECT_TRUE(std::filesystem::exists(page));
}

TEST_F(StopAndGoOnTest, AStopLeavesTheRestAndGoingOnFinishesIt) {
    const std::string other = home / "other";
    writeFile(other, "secret");
    writeFile(home / "item", "secret");
    fileName.onSet = [this] { fileAccess.requestPause(); };
    ASSERT_TRUE(run.shredFiles(holdAll(*system, {home / "item", other})));
    run.waitForWorker();
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_TRUE(reports[0].outcome.stopped);
    EXPECT_TRUE(reports[0].canGoOn);
    EXPECT_EQ(reports[0].itemsInAll, 2U);
    EXPECT_EQ(reports[0].itemsLeft, 2U);
    EXPECT_TRUE(std::filesystem::exists(other));
    fileName.onSet = {};
    ASSERT_TRUE(run.goOn());
    run.waitForWorker();
    EXPECT_TRUE(reports.at(1).wentOn);
    EXPECT_FALSE(reports[1].canGoOn);
    EXPECT_FALSE(std::filesystem::exists(other));
    EXPECT_FALSE(run.goOn()) << "there is nothing more";
    for (const auto& entry : std::filesystem::directory_iterator(home.path())) {
        EXPECT_EQ(entry.path().filename().native().find("Items ("), std::string::npos);
    }
}

TEST_F(StopAndGoOnTest, WhatAnApplicationUsesByNowIsLeftAlone) {
    preferences.set("ConfirmShredding", false);
    // Before the first item is begun.
    run.keepPlans([this](const std::vector<RunItem>&) {
        fileAccess.requestPause();
        return Plan{};
    });
    run.shredAndNothing();
    run.waitForWorker();
    ASSERT_TRUE(reports.at(0).canGoOn);
    EXPECT_EQ(logLines().back(), "Dorvanel Stopped - some items were not shredded");
    listing.show({"/Applications/Safari.app/Contents/MacOS/Safari"});
    ASSERT_TRUE(run.goOn());
    run.waitForWorker();
    EXPECT_TRUE(std::filesystem::exists(page));
    EXPECT_THAT(reports.at(1).skipped, ElementsAre("Safari"));
}

TEST_F(StopAndGoOnTest, TheNextRequestTakesThePlaceOfWhatIsLeft) {
    writeFile(home / "item", "secret");
    writeFile(home / "next", "secret");
    fileAccess.requestPause();
    fileName.onSet = [this] { fileAccess.requestPause(); };
    ASSERT_TRUE(run.shredFiles(held(home / "item")));
    run.waitForWorker();
    fileName.onSet = {};
    ASSERT_TRUE(run.shredFiles(held(home / "next")));
    run.waitForWorker();
    EXPECT_FALSE(std::filesystem::exists(home / "next"));
    EXPECT_FALSE(run.goOn());
}

TEST_F(StopAndGoOnTest, AStopForGoodIsForTheNextRequestToo) {
    fileAccess.requestStop();
    run.shredAndShutdown();
    run.waitForWorker();
    EXPECT_TRUE(std::filesystem::exists(page));
    EXPECT_TRUE(reports.at(0).endingStruck);
    EXPECT_EQ(reports[0].ending, Ending::shutdown);
}

/// Answers as the test says, and remembers what it was asked.
class FakeCountdown final : public EndingCountdown {
  public:
    bool mayEnd(Ending ending) override {
        asked.push_back(ending);
        if (onAsk) onAsk();
        return answer;
    }
    void strike() override { isStruck = true; }
    std::vector<Ending> asked;
    std::function<void()> onAsk;
    bool answer = true;
    std::atomic<bool> isStruck = false;
};

class CountedDownTest : public StopAndGoOnTest {
  protected:
    FakeCountdown countdown;
    ShreddingRun counted{{fileAccess, preferences, watch, collectors, mPathArray, traces, mentions,
                          processes, events, quitWait, *worker, alerts, window, application, *this,
                          &countdown}};
};

TEST_F(CountedDownTest, EachEndingIsAskedForOnceItsShreddingIsOver) {
    countdown.onAsk = [this] {
        EXPECT_FALSE(std::filesystem::exists(page));
        EXPECT_EQ(counted.activity(), Activity::ending);
    };
    const std::pair<void (ShreddingRun::*)(), const char*> endings[] = {
        {&ShreddingRun::shredAndLogout, "event rlgo"},
        {&ShreddingRun::shredAndShutdown, "event shut"},
        {&ShreddingRun::shredAndRestart, "event rest"}};
    for (const auto& [shred, event] : endings) {
        addSafariCache();
        calls.clear();
        (counted.*shred)();
        counted.waitForWorker();
        EXPECT_THAT(calls.calls(), Contains(event));
    }
    EXPECT_THAT(countdown.asked, ElementsAre(Ending::logout, Ending::shutdown, Ending::restart));
}

TEST_F(CountedDownTest, ANoStrikesTheEndingAndTheReportSaysSo) {
    countdown.answer = false;
    counted.shredAndShutdown();
    counted.waitForWorker();
    EXPECT_THAT(calls.calls(), Not(Contains(StartsWith("event"))));
    EXPECT_TRUE(reports.at(0).endingStruck);
    EXPECT_EQ(reports[0].result, RunResult::completed);
}

TEST_F(CountedDownTest, AQuitRequestWhileItCountsStrikesItWhateverTheAnswer) {
    countdown.onAsk = [this] { counted.giveUp(); };
    counted.shredAndShutdown();
    counted.waitForWorker();
    EXPECT_TRUE(countdown.isStruck);
    EXPECT_THAT(calls.calls(), Not(Contains(StartsWith("event"))));
    EXPECT_TRUE(reports.at(0).endingStruck);
}

TEST_F(CountedDownTest, WhatEndsWithNothingOrWasStoppedIsNotAskedFor) {
    counted.shredAndNothing();
    counted.waitForWorker();
    addSafariCache();
    fileName.onSet = [this] { fileAccess.requestPause(); };
    counted.shredAndRestart();
    counted.waitForWorker();
    EXPECT_THAT(countdown.asked, IsEmpty());
    EXPECT_TRUE(reports.at(1).endingStruck);
    EXPECT_THAT(calls.calls(), Not(Contains(StartsWith("event"))));
}

}  // namespace
}  // namespace dorvanel::test
