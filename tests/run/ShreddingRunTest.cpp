// SPDX-License-Identifier: MIT
#include "run/ShreddingRun.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <future>

#include "run/RunFixture.h"

namespace dorvanel::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using ::testing::Not;
using ::testing::StartsWith;
using ui::AlertButton;

using ShreddingRunTest = RunFixture;

constexpr const char* notEnabled = "Not enabled. Use preferences to enable...";

/// Where a line stands in the log; a test fails when it does not stand there.
std::size_t position(const std::vector<std::string>& lines, const std::string& line) {
    const auto found = std::find(lines.begin(), lines.end(), line);
    EXPECT_NE(found, lines.end()) << line;
    return static_cast<std::size_t>(found - lines.begin());
}

TEST_F(ShreddingRunTest, ShredsWhatTheCollectorsTakeAndTellsHowItEnded) {
    addSafariCache();
    preferences.set("ShredCache", true);
    run.shredAndNothing();
    run.waitForWorker();
    EXPECT_FALSE(std::filesystem::exists(home / "Library/Caches/Safari"));
    const auto lines = logLines();
    ASSERT_GE(lines.size(), 6U);
    EXPECT_EQ(lines[0], "Dorvanel Initiated");
    EXPECT_EQ(lines[1], "");
    EXPECT_EQ(lines[2], "User selected YES in Confirm dialog");
    EXPECT_EQ(lines[3], "");
    EXPECT_EQ(lines[lines.size() - 2], "");
    EXPECT_EQ(lines.back(), "Dorvanel Completed Successfully");
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_EQ(reports[0].result, RunResult::completed);
    EXPECT_EQ(reports[0].outcome.filesOverwritten, 1U);
    EXPECT_EQ(reports[0].outcome.bytesOverwritten, 6U);
    EXPECT_EQ(run.threadCount(), 0);
    EXPECT_THAT(mPathArray, IsEmpty());
}

TEST_F(ShreddingRunTest, CallsTheCollectorsInTheirOrder) {
    run.shredAndLogout();
    std::vector<std::string> wanted;
    for (const char* label : {"IE",
                              "iCab",
                              "OmniWeb 4",
                              "OmniWeb 5",
                              "Opera 5.x",
                              "Opera 6.x",
                              "Opera 7.x",
                              "Apple Mail 1.1",
                              "Apple Mail 1.2 (Jaguar)",
                              "Apple Mail 2.0 (Tiger)",
                              "Mail Cache",
                              "Eudora 5.x",
                              "Eudora 6.x",
                              "Safari",
                              "Mozilla 1.x and Netscape 7",
                              "Mailsmith",
                              "Camino 0.7",
                              "Camino 0.8",
                              "Firefox 0.8",
                              "Firefox 1.0",
                              "Firefox 1.5",
                              "Quicktime Cache"}) {
        wanted.emplace_back(label);
    }
    std::vector<std::string> seen;
    for (const std::string& line : logLines()) {
        if (std::find(wanted.begin(), wanted.end(), line) != wanted.end()) seen.push_back(line);
    }
    EXPECT_EQ(seen, wanted);
}

TEST_F(ShreddingRunTest, ASecondRequestWhileAnAlertIsOpenDoesNothingAndWritesNothing) {
    preferences.set("ConfirmShredding", true);
    std::vector<std::string> during;
    alerts.onAlert = [&](const std::string&) {
        const auto before = logLines();
        run.shred();
        EXPECT_EQ(logLines(), before);
        EXPECT_TRUE(run.awaitingConfirmation());
        during = calls.calls();
    };
    alerts.answers["Dorvanel Confirmation"] = AlertButton::defaultButton;
    run.shredAndNothing();
    EXPECT_THAT(during, ElementsAre("center", "front", StartsWith("alert"), "ended"));
    ASSERT_EQ(reports.size(), 2U);
    EXPECT_EQ(reports[0].refusal, Refusal::atWork);
    EXPECT_EQ(reports[1].result, RunResult::cancelled);
}

TEST_F(ShreddingRunTest, ARequestWhileAWorkerWorksIsRefusedInTheLog) {
    addSafariCache();
    preferences.set("ShredCache", true);
    std::promise<void> refused;
    std::promise<void> arrived;
    // The worker waits in its first file, whose name has then been logged.
    std::atomic<bool> once = false;
    fileName.onSet = [&] {
        if (once.exchange(true)) return;
        arrived.set_value();
        refused.get_future().wait();
    };
    run.shredAndNothing();
    arrived.get_future().wait();
    ASSERT_EQ(run.threadCount(), 1);
    run.shred();
    const auto lines = logLines();
    EXPECT_THAT(lines, ElementsAre("Dorvanel *not* Initiated - thread already running", ""));
    EXPECT_FALSE(run.awaitingConfirmation());
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_EQ(reports[0].result, RunResult::notInitiated);
    EXPECT_EQ(reports[0].refusal, Refusal::atWork);
    refused.set_value();
    run.waitForWorker();
    EXPECT_EQ(run.threadCount(), 0);
}

TEST_F(ShreddingRunTest, ARequestOnceQuittingHasBegunGrantsTheQuitAndStartsNothing) {
    addSafariCache();
    preferences.set("ShredCache", true);
    EXPECT_FALSE(run.putOffQuit()) << "there is nothing to wait for";
    run.shredAndNothing();
    EXPECT_THAT(logLines(),
                ElementsAre("Dorvanel *not* Initiated - application needs to terminate", ""));
    EXPECT_THAT(calls.calls(), ElementsAre("reply yes", "ended"));
    EXPECT_TRUE(run.awaitingConfirmation()) << "no further run may start";
    EXPECT_EQ(run.threadCount(), 0);
    EXPECT_TRUE(std::filesystem::exists(home / "Library/Caches/Safari/00/page.cache"));
}

TEST_F(ShreddingRunTest, TheConfirmationNamesTheItemGroups) {
    preferences.set("ConfirmShredding", true);
    preferences.set("ShredCache", true);
    preferences.set("ShredHistory", true);
    run.shredAndNothing();
    run.waitForWorker();
    const auto seen = calls.calls();
    ASSERT_GE(seen.size(), 3U);
    EXPECT_EQ(seen[0], "center");
    EXPECT_EQ(seen[1], "front");
    EXPECT_EQ(seen[2],
              "alert Dorvanel Confirmation: Are you sure you want to shred these items: Browser "
              "Cache, Browser History ? [No|Yes|]");
}

TEST_F(ShreddingRunTest, WithNoGroupsTwoBlanksStandBeforeTheQuestionMark) {
    preferences.set("ConfirmShredding", true);
    run.shredAndNothing();
    EXPECT_THAT(calls.calls(),
                Contains("alert Dorvanel Confirmation: Are you sure you want to shred these items: "
                         " ? [No|Yes|]"));
}

TEST_F(ShreddingRunTest, SayingNoCancelsAndResetsWhatFollows) {
    addSafariCache();
    preferences.set("ShredCache", true);
    preferences.set("ConfirmShredding", true);
    alerts.answers["Dorvanel Confirmation"] = AlertButton::defaultButton;
    run.shredAndLogout();
    EXPECT_EQ(logLines().back(), "User selected NO in Confirm dialog - Dorvanel Cancelled");
    EXPECT_EQ(run.shutdownStatus(), ShreddingRun::nothing);
    EXPECT_FALSE(run.awaitingConfirmation());
    EXPECT_TRUE(run.logoutShutdownRestart());
    EXPECT_EQ(labels[0].colors.back(), ui::Color::lightGray);
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_EQ(reports[0].result, RunResult::cancelled);
    EXPECT_TRUE(std::filesystem::exists(home / "Library/Caches/Safari/00/page.cache"));
}

TEST_F(ShreddingRunTest, APlainRunTakesTheQuickTimeCacheOnlyAfterACancelledLogoutRun) {
    run.shredAndNothing();
    EXPECT_THAT(logLines(), Not(Contains("Quicktime Cache")));

    preferences.set("ConfirmShredding", true);
    alerts.answers["Dorvanel Confirmation"] = AlertButton::defaultButton;
    run.shredAndLogout();
    preferences.set("ConfirmShredding", false);
    run.shredAndNothing();
    EXPECT_THAT(logLines(), Contains("Quicktime Cache"));

    run.shredAndNothing();
    EXPECT_THAT(logLines(), Not(Contains("Quicktime Cache")));
}

TEST_F(ShreddingRunTest, TakesNoPathOfASafariThatRuns) {
    addSafariCache();
    preferences.set("ShredCache", true);
    listing.show({"/Applications/Safari.app/Contents/MacOS/Safari"});
    run.shredAndNothing();
    run.waitForWorker();
    EXPECT_THAT(logLines(), Not(Contains("Safari")));
    EXPECT_TRUE(std::filesystem::exists(home / "Library/Caches/Safari/00/page.cache"));
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_THAT(reports[0].skipped, ElementsAre("Safari"));
}

TEST_F(ShreddingRunTest, SkipsMozillaWhenEitherItOrNetscapeRuns) {
    for (const char* running : {"/Applications/Mozilla.app/x", "/Applications/Netscape.app/x"}) {
        listing.show({running});
        run.shredAndNothing();
        EXPECT_THAT(logLines(), Not(Contains("Mozilla 1.x and Netscape 7"))) << running;
    }
    listing.show({});
    run.shredAndNothing();
    EXPECT_THAT(logLines(), Contains("Mozilla 1.x and Netscape 7"));
}

TEST_F(ShreddingRunTest, WithNothingSelectedNoWorkerStartsAndNoLogoutIsSent) {
    run.shredAndLogout();
    EXPECT_EQ(logLines().back(), "Nothing selected to shred");
    EXPECT_EQ(run.threadCount(), 0);
    EXPECT_EQ(run.shutdownStatus(), ShreddingRun::logout) << "it keeps its value";
    EXPECT_THAT(calls.calls(), ElementsAre("ended"));
    EXPECT_EQ(reports[0].result, RunResult::nothingSelected);
    EXPECT_FALSE(run.awaitingConfirmation());
}

TEST_F(ShreddingRunTest, EndsWithTheEventThatWasAskedFor) {
    const std::pair<void (ShreddingRun::*)(), std::pair<const char*, const char*>> endings[] = {
        {&ShreddingRun::shredAndLogout, {"User selected Logout", "event rlgo"}},
        {&ShreddingRun::shredAndShutdown, {"User selected Shutdown", "event shut"}},
        {&ShreddingRun::shredAndRestart, {"User selected Restart", "event rest"}},
    };
    preferences.set("ShredCache", true);
    for (const auto& [action, expected] : endings) {
        calls.clear();
        addSafariCache();
        (run.*action)();
        run.waitForWorker();
        EXPECT_THAT(calls.calls(), ElementsAre(expected.second, "ended"));
        const auto lines = logLines();
        EXPECT_GT(position(lines, "Dorvanel Completed Successfully"),
                  position(lines, expected.first));
    }
    calls.clear();
    addSafariCache();
    run.shredAndNothing();
    run.waitForWorker();
    EXPECT_THAT(calls.calls(), ElementsAre("ended"));
}

TEST_F(ShreddingRunTest, AFailedEventChangesNothing) {
    events.result = errAEEventNotHandled;
    addSafariCache();
    preferences.set("ShredCache", true);
    run.shredAndLogout();
    run.waitForWorker();
    EXPECT_EQ(reports.at(0).result, RunResult::completed);
    EXPECT_EQ(run.shutdownStatus(), ShreddingRun::logout) << "a finished run leaves it";
}

TEST_F(ShreddingRunTest, ALogoutRunStopsBrowserWatchAndAsksApplicationsToQuit) {
    preferences.set("BrowserWatch", true);
    watch.setInitialState();
    processes.add("Safari", "APPL", "sfri");
    processes.onWalk = [this] {
        if (processes.walks == 2) processes.processes.clear();
    };
    run.shredAndLogout();
    EXPECT_EQ(processes.quits.size(), 1U);
    EXPECT_FALSE(watch.isWatching());
    EXPECT_EQ(clock.sleeps.size(), 1U);
    EXPECT_THAT(status.texts, Contains(notEnabled));
    EXPECT_THAT(calls.calls(), ElementsAre("ended")) << "nobody is asked";
}

TEST_F(ShreddingRunTest, AsksWhenApplicationsDoNotQuitAndGoesOnWithOK) {
    addSafariCache();
    preferences.set("ShredCache", true);
    processes.add("Safari", "APPL", "sfri");
    processes.add("OmniWeb", "APPL", "OWEB");
    run.shredAndRestart();
    run.waitForWorker();
    EXPECT_EQ(clock.sleeps.size(), 51U) << "25.5 seconds";
    EXPECT_THAT(
        calls.calls(),
        Contains("alert Dorvanel Quit Browsers: 2 Email or Browser Applications did not "
                 "quit.  Please quit them and click OK to continue.  If you continue without "
                 "quitting those applicaitons some items will not be shredded. "
                 "[Cancel|OK|]"));
    EXPECT_THAT(calls.calls(), Contains("event rest"));
    EXPECT_EQ(processes.quits.size(), 2U) << "each is asked once";
}

TEST_F(ShreddingRunTest, CancellingThereLeavesBrowserWatchStoppedUntilThePollStartsIt) {
    preferences.set("BrowserWatch", true);
    watch.scheduleTimer();
    watch.setInitialState();
    processes.add("Safari", "APPL", "sfri");
    alerts.answers["Dorvanel Quit Browsers"] = AlertButton::defaultButton;
    run.shredAndLogout();
    EXPECT_EQ(logLines().back(),
              "User selected Cancel in Quit Browsers dialog - Dorvanel Cancelled");
    EXPECT_EQ(run.shutdownStatus(), ShreddingRun::nothing);
    EXPECT_FALSE(watch.isWatching());
    EXPECT_EQ(reports.at(0).result, RunResult::cancelled);
    clock.step = std::chrono::seconds(0);
    runLoop.advance(std::chrono::seconds(3));
    EXPECT_TRUE(watch.isWatching());
}

TEST_F(ShreddingRunTest, WithoutBrowserWatchARunLooksOnceMoreAndSaysThatItIsOff) {
    run.shredAndNothing();
    EXPECT_EQ(text(status), "No supported applications are running...");
    ASSERT_GE(status.texts.size(), 2U);
    EXPECT_EQ(status.texts[status.texts.size() - 2], notEnabled);
    EXPECT_EQ(listing.commands.size(), 2U);
}

TEST_F(ShreddingRunTest, TheWatchPassesOfARunNeverStartAnother) {
    preferences.set("ShredCache", true);
    listing.show({"/Applications/Safari.app/x"});
    watch.HandleBrowserWatchTimer(nullptr);
    listing.show({});
    run.shredAndNothing();
    run.waitForWorker();
    EXPECT_EQ(reports.size(), 1U);
}

TEST_F(ShreddingRunTest, HidesTheApplicationAfterwardsWhereThatIsWanted) {
    addSafariCache();
    preferences.set("ShredCache", true);
    preferences.set("HideAfterShredding", true);
    run.shredAndNothing();
    run.waitForWorker();
    EXPECT_THAT(calls.calls(), ElementsAre("hide", "ended"));
}

TEST_F(ShreddingRunTest, AQuitPutOffIsGrantedAfterTheLastLine) {
    addSafariCache();
    preferences.set("ShredCache", true);
    fileName.onSet = [&] { EXPECT_TRUE(run.putOffQuit() || run.threadCount() == 0); };
    run.shredAndNothing();
    run.waitForWorker();
    EXPECT_THAT(calls.calls(), ElementsAre("ended", "reply yes"));
    EXPECT_EQ(logLines().back(), "Dorvanel Completed Successfully");
}

TEST_F(ShreddingRunTest, WithTheLogOffAnEmptyFileIsLeft) {
    writeFile(activityLogPath(), "the run before");
    preferences.set("ActivityLog", false);
    addSafariCache();
    preferences.set("ShredCache", true);
    run.shredAndNothing();
    run.waitForWorker();
    EXPECT_EQ(readFile(activityLogPath()), "");
    EXPECT_FALSE(std::filesystem::exists(home / "Library/Caches/Safari"));
}

TEST_F(ShreddingRunTest, CompletedIsWrittenWhateverHappenedToTheItems) {
    preferences.set("ShredCache", true);  // no such folder anywhere
    run.shredAndNothing();
    run.waitForWorker();
    EXPECT_EQ(logLines().back(), "Dorvanel Completed Successfully");
    EXPECT_EQ(reports.at(0).outcome.items, 0U);
}

}  // namespace
}  // namespace dorvanel::test
