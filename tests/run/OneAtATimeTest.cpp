// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <filesystem>
#include <future>

#include "run/RunFixture.h"

namespace dorvanel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A machine without a thread to give.
class NoWorker final : public platform::Worker {
  public:
    Result<Done> start(std::function<void()>) override {
        return Error{EAGAIN, "start a thread", {}, {}};
    }
    void wait() override {}
};

class OneAtATimeTest : public RunFixture {
  protected:
    OneAtATimeTest() {
        addSafariCache();
        preferences.set("ShredCache", true);
        writeFile(folder / "one", "1");
        writeFile(folder / "two", "2");
    }

    /// Has the worker wait in its first file, whose name has then been logged, until `go`.
    void holdWorker() {
        fileName.onSet = [this] {
            if (held_.exchange(true)) return;
            arrived_.set_value();
            go.get_future().wait();
        };
    }
    /// Returns when it waits there.
    void waitUntilHeld() { arrived_.get_future().wait(); }

    TemporaryFolder folder;
    std::promise<void> go;

  private:
    std::atomic<bool> held_ = false;
    std::promise<void> arrived_;
};

TEST_F(OneAtATimeTest, HandedOverFilesAreShreddedByTheWorkerWithoutQuestionOrLog) {
    preferences.set("ConfirmShredding", true);
    preferences.set("HideAfterShredding", true);
    EXPECT_TRUE(run.shredFiles(held(folder / "one")));
    run.waitForWorker();
    EXPECT_FALSE(std::filesystem::exists(folder / "one"));
    EXPECT_THAT(calls.calls(), ElementsAre("ended"));
    EXPECT_FALSE(std::filesystem::exists(activityLogPath()));
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_TRUE(reports[0].handedOver);
    EXPECT_EQ(reports[0].outcome.filesOverwritten, 1U);
    EXPECT_EQ(run.activity(), Activity::idle);
}

TEST_F(OneAtATimeTest, ARunWhileHandedOverFilesAreShreddedIsRefused) {
    holdWorker();
    ASSERT_TRUE(run.shredFiles(held(folder / "one")));
    EXPECT_EQ(run.activity(), Activity::shredding);
    waitUntilHeld();
    run.shredAndNothing();
    EXPECT_THAT(logLines(), ElementsAre("Dorvanel *not* Initiated - thread already running", ""));
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_EQ(reports[0].refusal, Refusal::atWork);
    go.set_value();
    run.waitForWorker();
    EXPECT_TRUE(std::filesystem::exists(home / "Library/Caches/Safari/00/page.cache"));
}

TEST_F(OneAtATimeTest, FilesHandedOverWhileOthersAreShreddedStay) {
    holdWorker();
    ASSERT_TRUE(run.shredFiles(held(folder / "one")));
    EXPECT_FALSE(run.shredFiles(held(folder / "two")));
    EXPECT_EQ(reports.at(0).refusal, Refusal::atWork);
    EXPECT_TRUE(reports[0].handedOver);
    go.set_value();
    run.waitForWorker();
    EXPECT_TRUE(std::filesystem::exists(folder / "two"));
    EXPECT_TRUE(run.shredFiles(held(folder / "two"))) << "now it is their turn";
    run.waitForWorker();
    EXPECT_FALSE(std::filesystem::exists(folder / "two"));
}

TEST_F(OneAtATimeTest, FilesHandedOverAtAnAlertOfARunStay) {
    preferences.set("ConfirmShredding", true);
    alerts.answers["Dorvanel Confirmation"] = ui::AlertButton::defaultButton;
    alerts.onAlert = [this](const std::string&) {
        EXPECT_EQ(run.activity(), Activity::asking);
        EXPECT_FALSE(run.shredFiles(held(folder / "one")));
    };
    run.shredAndNothing();
    EXPECT_TRUE(std::filesystem::exists(folder / "one"));
}

TEST_F(OneAtATimeTest, FilesHandedOverWhileApplicationsAreWaitedForStay) {
    processes.add("Safari", "APPL", "sfri");
    bool asked = false;
    quitWait.onWait = [&] {
        if (std::exchange(asked, true)) return;
        EXPECT_EQ(run.activity(), Activity::waitingForApplications);
        EXPECT_FALSE(run.shredFiles(held(folder / "one")));
        run.shredAndNothing();
    };
    run.shredAndLogout();
    run.waitForWorker();
    EXPECT_TRUE(std::filesystem::exists(folder / "one"));
}

TEST_F(OneAtATimeTest, ARefusedRequestForAShutdownDoesNotEndTheRunAtWork) {
    holdWorker();
    run.shredAndNothing();
    run.shredAndShutdown();
    go.set_value();
    run.waitForWorker();
    EXPECT_THAT(calls.calls(), ElementsAre("ended", "ended"));
}

TEST_F(OneAtATimeTest, APlainRunThatIsRefusedDoesNotTakeTheLogoutFromTheRunAtWork) {
    holdWorker();
    run.shredAndLogout();
    run.shredAndNothing();
    go.set_value();
    run.waitForWorker();
    EXPECT_THAT(calls.calls(), ElementsAre("ended", "event rlgo", "ended"));
}

TEST_F(OneAtATimeTest, WithPreferencesThatCannotBeReadNothingIsTouched) {
    preferences.known = false;
    writeFile(activityLogPath(), "the run before");
    run.shredAndNothing();
    EXPECT_FALSE(run.shredFiles(held(folder / "one")));
    ASSERT_EQ(reports.size(), 2U);
    for (const RunReport& report : reports) {
        EXPECT_EQ(report.result, RunResult::notInitiated);
        EXPECT_EQ(report.refusal, Refusal::preferencesUnknown);
    }
    EXPECT_THAT(listing.commands, IsEmpty());
    EXPECT_EQ(readFile(activityLogPath()), "the run before");
    EXPECT_TRUE(std::filesystem::exists(folder / "one"));
    preferences.known = true;
    run.shredAndNothing();
    run.waitForWorker();
    EXPECT_FALSE(std::filesystem::exists(home / "Library/Caches/Safari"));
}

TEST_F(OneAtATimeTest, WithoutAThreadTheRunIsNotInitiatedAndTheNextCanBe) {
    NoWorker none;
    ShreddingRun one{{fileAccess, preferences, watch, collectors, mPathArray, traces, mentions,
                      processes, events, quitWait, none, alerts, window, application, *this}};
    one.shredAndShutdown();
    one.shredFiles(held(folder / "one"));
    ASSERT_EQ(reports.size(), 2U);
    for (const RunReport& report : reports) EXPECT_EQ(report.refusal, Refusal::noThread);
    EXPECT_EQ(one.threadCount(), 0);
    EXPECT_EQ(one.activity(), Activity::idle);
    EXPECT_THAT(calls.calls(), ElementsAre("ended", "ended"));
    const auto lines = logLines();
    ASSERT_GE(lines.size(), 3U);
    EXPECT_EQ(lines[lines.size() - 3], "Start Shredding Now");
    EXPECT_EQ(lines[lines.size() - 2], "Dorvanel *not* Initiated - no thread available");
    EXPECT_TRUE(std::filesystem::exists(home / "Library/Caches/Safari/00/page.cache"));
    EXPECT_TRUE(std::filesystem::exists(folder / "one"));
    EXPECT_THAT(mPathArray, IsEmpty());
}

TEST_F(OneAtATimeTest, WhenNobodyKnowsWhatRunsEverythingIsPassedOver) {
    listing.isCutOff = true;
    run.shredAndShutdown();
    run.waitForWorker();
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_EQ(reports[0].result, RunResult::nothingSelected);
    EXPECT_EQ(reports[0].skipped.size(), 11U);
    EXPECT_TRUE(reports[0].listingUnknown);
    EXPECT_TRUE(std::filesystem::exists(home / "Library/Caches/Safari/00/page.cache"));
    EXPECT_THAT(calls.calls(), ElementsAre("ended")) << "no shutdown";
}

}  // namespace
}  // namespace dorvanel::test
