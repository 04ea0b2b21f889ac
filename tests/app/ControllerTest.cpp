// SPDX-License-Identifier: MIT
#include "app/Controller.h"

#include "app/ApplicationsOfToday.h"
#include "engine/FileAccess.h"
#include "prefs/Preferences.h"
#include "run/ShreddingRun.h"
#include "support/SharedPreferences.h"
#include "targets/ProfilesMenu.h"
#include "watch/BrowserWatch.h"

#include <gmock/gmock.h>

#include <array>
#include <filesystem>

#include "engine/random/FeedbackSequence.h"
#include "support/FakeAlertPanel.h"
#include "support/FakeClock.h"
#include "support/FakeDesktop.h"
#include "support/FakeOutlets.h"
#include "support/FakeProcessListing.h"
#include "support/FakeProcessManager.h"
#include "support/FakeProgramListing.h"
#include "support/FakeQuitWait.h"
#include "support/FakeRunLoop.h"
#include "support/FakeUserDefaults.h"
#include "support/LogCapture.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

using namespace std::chrono_literals;

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ui::AlertButton;
using ui::SheetCode;
using ui::TerminateReply;

constexpr const char* waiting = "Enabled and waiting for the first timer event to occur...";
constexpr const char* notEnabled = "Not enabled. Use preferences to enable...";

class ControllerTest : public ::testing::Test, private RunObserver {
  protected:
    ~ControllerTest() override {
        controller.run().waitForWorker();
        kalvet_logger_close();
    }

    void set(BoolKey key, bool value) {
        preferences->displayedValues.insert_or_assign(key, Number::fromBool(value));
        ASSERT_TRUE(preferences->commitDisplayedValues());
    }
    void addSafariCache() { writeFile(home / "Library/Caches/Safari/page.cache", "secret"); }
    void runEnded(const RunReport&) override { calls.add("ended"); }

    TemporaryHome home;
    CallLog calls;
    FakeClock clock;
    FakeUserDefaults defaults;
    std::shared_ptr<Preferences> preferences = sharedPreferences(defaults);
    FakeRunLoop runLoop{clock};
    FakeProcessListing listing;
    FakeProcessManager processes;
    FakeSystemEvents events{calls};
    FakeQuitWait quitWait{clock};
    std::unique_ptr<platform::Worker> worker = platform::makeWorker();
    FakeSystemSound sound;
    FakeBundle bundle;
    FakeAlertPanel alerts;
    FakeApplicationObject application{calls};
    FakeWorkspace workspace;
    FakeWindow window{calls};
    ui::Menu mainMenu;
    FakeProgressIndicator progress;
    FakeTextField fileName;
    FakeTextField status;
    std::array<FakeTextField, 12> labels;
    std::unique_ptr<platform::SystemCalls> system = platform::makeSystemCalls();
    FeedbackSequence draws;
    std::unique_ptr<platform::CleaningCalls> cleaningCalls = platform::makeCleaningCalls();
    FakeProgramListing runsPrograms;
    FakeProgramListing programs;  ///< the watch's
    FakeLockProbe locks;
    FakeProgramEnds ends;
    TodayServices today{*cleaningCalls, runsPrograms, programs, *system, locks, ends, [this] {
                            return catalogue::Folders{home / "applications", {}};
                        }};

    Controller controller{
        {*system,
         clock,
         draws,
         platform::defaultFileManager(),
         defaults,
         *preferences,
         runLoop,
         listing,
         processes,
         events,
         quitWait,
         *worker,
         sound,
         today,
         bundle,
         alerts,
         application,
         workspace,
         window,
         mainMenu,
         progress,
         fileName,
         {&status, &labels[0], &labels[1], &labels[2], &labels[3], &labels[4], &labels[5],
          &labels[6], &labels[7], &labels[8], &labels[9], &labels[10], &labels[11]},
         *this}};
};

TEST_F(ControllerTest, LaunchingShowsTheWindowAndStartsBrowserWatch) {
    controller.applicationDidFinishLaunching();
    EXPECT_THAT(calls.calls(), ElementsAre("autosave My Window", "center", "front"));
    EXPECT_THAT(status.texts, ElementsAre(waiting));
    EXPECT_TRUE(controller.browserWatch().isWatching());
    EXPECT_EQ(runLoop.validTimers(), 2U);
}

TEST_F(ControllerTest, LaunchingWithoutBrowserWatchStartsOnlyThePoll) {
    set("BrowserWatch", false);
    controller.applicationDidFinishLaunching();
    EXPECT_THAT(status.texts, ElementsAre(notEnabled));
    EXPECT_EQ(runLoop.validTimers(), 1U);
    EXPECT_THAT(labels[11].colors, ElementsAre(ui::Color::lightGray));
}

TEST_F(ControllerTest, ABackgroundElementStartsHiddenWithNoWindow) {
    bundle.values["NSUIElement"] = "1";
    controller.applicationDidFinishLaunching();
    EXPECT_THAT(calls.calls(), ElementsAre("autosave My Window", "hide"));
}

TEST_F(ControllerTest, AnyOtherValueOfTheBackgroundKeyShowsTheWindow) {
    bundle.values["NSUIElement"] = "0";
    controller.applicationDidFinishLaunching();
    EXPECT_THAT(calls.calls(), Contains("front"));
}

TEST_F(ControllerTest, LaunchingBuildsTheProfilesMenuOnce) {
    std::filesystem::create_directories(home / "Library/Mozilla/Profiles/default");
    ui::MenuItem& profiles = mainMenu.addItemWithTitle("Profiles", {}, "");
    profiles.makeSubmenu();
    controller.applicationDidFinishLaunching();
    EXPECT_EQ(profiles.submenu()->numberOfItems(), 2);
    EXPECT_EQ(defaults.boolForKey("FirstRun"), true);
}

TEST_F(ControllerTest, ItemsOfTheLaunchAreShreddedAtOnceAndAskNothing) {
    writeFile(home / "dropped.txt", "secret");
    controller.setDroppedItems(holdAll(*system, {home / "dropped.txt"}));
    controller.applicationDidFinishLaunching();
    controller.run().waitForWorker();
    EXPECT_FALSE(std::filesystem::exists(home / "dropped.txt"));
    EXPECT_THAT(alerts.alerts, IsEmpty());
    EXPECT_THAT(calls.calls(), Contains("ended"));
    EXPECT_EQ(runLoop.validTimers(), 3U) << "two polls, which change nothing, and the watch";
}

TEST_F(ControllerTest, TheFirstPassOfTheWatchNeverStartsARun) {
    addSafariCache();
    set("ConfirmShredding", false);
    controller.applicationDidFinishLaunching();
    runLoop.advance(std::chrono::seconds(11));
    EXPECT_EQ(listing.commands.size(), 1U);
    EXPECT_THAT(calls.calls(), Not(Contains("ended")));
}

TEST_F(ControllerTest, AnApplicationThatQuitsIsCleanedUpAfter) {
    addSafariCache();
    set("ConfirmShredding", false);
    controller.applicationDidFinishLaunching();
    listing.show({"/Applications/Safari.app/Contents/MacOS/Safari"});
    runLoop.advance(std::chrono::seconds(11));
    listing.show({});
    runLoop.advance(std::chrono::seconds(10));
    controller.run().waitForWorker();
    EXPECT_FALSE(std::filesystem::exists(home / "Library/Caches/Safari"));
}

constexpr const char* lynx = R"(name = "Lynx"
kind = "browser"
processes = ["lynx"]
[[install]]
name = "native"
data = "~/.lynx"
[[trace]]
kind = "cache"
shred = ["{data}/cache"]
)";

/// A controller whose main loop runs, with Browser Watch on and an application of today chosen.
class ApplicationOfTodayTest : public ControllerTest {
  protected:
    ApplicationOfTodayTest() {
        writeFile(home / "applications/lynx.toml", lynx);
        writeFile(home / ".lynx/cache/a", "secret");
        preferences->displayedValues.insert_or_assign("BrowserWatch", Number::fromBool(true));
        preferences->displayedValues.insert_or_assign("ConfirmShredding", Number::fromBool(false));
        EXPECT_TRUE(preferences->commitDisplayedValues());
    }
    void choose() { ASSERT_TRUE(TraceChoice(defaults).select("lynx", {"cache"})); }
    void launch() {
        controller.applicationDidFinishLaunching();
        runLoop.advance(0s);
    }
    void end(const platform::RunningProgram& program) {
        const std::int32_t pid = program.process.pid;
        programs.end(pid);
        ends.end({pid});
    }
    [[nodiscard]] bool isShredded() {
        controller.run().waitForWorker();
        return !std::filesystem::exists(home / ".lynx/cache");
    }
};

TEST_F(ApplicationOfTodayTest, ARunFollowsTheEndOfItsLastProcess) {
    choose();
    const auto first = programs.start("/usr/bin/lynx");
    const auto second = programs.start("/usr/bin/lynx");
    launch();
    end(first);
    EXPECT_FALSE(isShredded());
    end(second);
    EXPECT_TRUE(isShredded());
}

TEST_F(ApplicationOfTodayTest, OneThatIsChosenLaterIsFollowedFromThenOn) {
    const auto program = programs.start("/usr/bin/lynx");
    launch();
    choose();
    runLoop.advance(2s);
    end(program);
    EXPECT_TRUE(isShredded());
}

TEST_F(ApplicationOfTodayTest, WithoutBrowserWatchNothingIsListedAndNothingFollows) {
    preferences->displayedValues.insert_or_assign("BrowserWatch", Number::fromBool(false));
    ASSERT_TRUE(preferences->commitDisplayedValues());
    choose();
    const auto program = programs.start("/usr/bin/lynx");
    launch();
    runLoop.advance(10s);
    EXPECT_EQ(programs.lists, 0);
    end(program);
    EXPECT_FALSE(isShredded());
}

TEST_F(ApplicationOfTodayTest, OneThatIsNotChosenIsNotFollowed) {
    const auto program = programs.start("/usr/bin/lynx");
    launch();
    runLoop.advance(4s);
    EXPECT_EQ(programs.lists, 0);
    end(program);
    EXPECT_FALSE(isShredded());
}

TEST_F(ApplicationOfTodayTest, AnEndWhileARunIsAtWorkIsFollowedByARunOfItsOwn) {
    choose();
    const auto program = programs.start("/usr/bin/lynx");
    runsPrograms.start("/usr/bin/lynx");
    launch();
    // The application ends while a run lists the processes, and counts as running for that one.
    runsPrograms.onList = [&] {
        runsPrograms.onList = nullptr;
        end(program);
    };
    controller.shredAndNothing();
    EXPECT_FALSE(isShredded());
    runsPrograms.programs.clear();
    runLoop.advance(1s);
    EXPECT_TRUE(isShredded());
}

TEST_F(ControllerTest, QuittingWhileIdleIsAllowedAtOnceAndStopsTheWatch) {
    controller.applicationDidFinishLaunching();
    EXPECT_EQ(controller.applicationShouldTerminate(), TerminateReply::now);
    EXPECT_FALSE(controller.browserWatch().isWatching());
    EXPECT_TRUE(controller.run().appNeedsToTerminate());
}

TEST_F(ControllerTest, QuittingWhileAWorkerShredsWaitsForItsLastLine) {
    addSafariCache();
    set("ConfirmShredding", false);
    set("ActivityLog", true);
    controller.applicationDidFinishLaunching();
    std::atomic<bool> asked = false;
    TerminateReply reply = TerminateReply::now;
    fileName.onSet = [&] {
        if (asked.exchange(true)) return;
        while (controller.run().awaitingConfirmation()) {  // the action has not returned yet
        }
        reply = controller.applicationShouldTerminate();
    };
    controller.shredAndNothing();
    controller.run().waitForWorker();
    EXPECT_EQ(reply, TerminateReply::later);
    EXPECT_FALSE(controller.browserWatch().isWatching());
    EXPECT_EQ(calls.calls().back(), "reply yes");
    EXPECT_EQ(LogCapture::linesNow().back(), "Dorvanel Completed Successfully");
}

TEST_F(ControllerTest, QuittingWhileTheConfirmationIsOpenQuitsAtOnce) {
    addSafariCache();
    controller.applicationDidFinishLaunching();
    alerts.answer = AlertButton::alternateButton;
    TerminateReply reply = TerminateReply::later;
    alerts.onAlert = [&] { reply = controller.applicationShouldTerminate(); };
    controller.shredAndNothing();
    controller.run().waitForWorker();
    EXPECT_EQ(reply, TerminateReply::now);
    EXPECT_TRUE(controller.browserWatch().isWatching()) << "nothing else is touched";
    EXPECT_FALSE(controller.run().appNeedsToTerminate());
    EXPECT_TRUE(std::filesystem::exists(home / "Library/Caches/Safari/page.cache"));
}

TEST_F(ControllerTest, TheQuitCommandWithoutBrowserWatchQuitsWithNoSheet) {
    set("BrowserWatch", false);
    controller.reallyQuit();
    EXPECT_THAT(calls.calls(), ElementsAre("terminate"));
}

TEST_F(ControllerTest, TheQuitCommandWithBrowserWatchAsksWhetherHidingWouldDo) {
    controller.reallyQuit();
    EXPECT_THAT(
        calls.calls(),
        ElementsAre("sheet Quit: Quitting Dorvanel will interrupt Browser Watch™ and Dorvanel will "
                    "not run automatically when you quit from your web browser or email "
                    "application. Would you prefer to hide Dorvanel in the Dock? "
                    "[Hide|Quit|Cancel]"));
    calls.clear();
    window.dismiss(SheetCode::otherButton);
    EXPECT_THAT(calls.calls(), IsEmpty()) << "\"Cancel\" leaves everything running";
    window.dismiss(SheetCode::defaultButton);
    window.dismiss(SheetCode::alternateButton);
    EXPECT_THAT(calls.calls(), ElementsAre("hide", "terminate"));
}

TEST_F(ControllerTest, TerminatingSavesThePreferences) {
    preferences->displayedValues.insert_or_assign("ShredHistory", Number::fromBool(true));
    ASSERT_TRUE(preferences->commitDisplayedValues());
    defaults.calls.clear();
    EXPECT_TRUE(controller.applicationWillTerminate());
    EXPECT_THAT(defaults.calls, Contains("set ShredHistory YES"));
    EXPECT_EQ(defaults.calls.back(), "synchronize");
}

TEST_F(ControllerTest, AnOpenedFileIsAcknowledgedAndNothingElseHappens) {
    writeFile(home / "handed.txt", "kept");
    EXPECT_TRUE(controller.applicationOpenFile(home / "handed.txt"));
    controller.applicationDidBecomeActive();
    EXPECT_EQ(readFile(home / "handed.txt"), "kept");
    EXPECT_THAT(calls.calls(), IsEmpty());
}

TEST_F(ControllerTest, HelpOpensTheThreeAddresses) {
    controller.emailSupport();
    controller.webFAQ();
    controller.webDownloads();
    ASSERT_EQ(workspace.urls.size(), 3U);
    EXPECT_THAT(workspace.urls[0], ::testing::StartsWith("mailto:"));
    EXPECT_THAT(workspace.urls[0], ::testing::EndsWith("?subject=Dorvanel%20X"));
    EXPECT_THAT(workspace.urls[1], ::testing::StartsWith("https://"));
    EXPECT_THAT(workspace.urls[2], ::testing::StartsWith("https://"));
}

TEST_F(ControllerTest, TheDockMenuStartsTheFourRuns) {
    set("ConfirmShredding", true);
    controller.applicationDidFinishLaunching();
    alerts.answer = AlertButton::defaultButton;
    ui::Menu& dock = controller.applicationDockMenu();
    ASSERT_EQ(dock.numberOfItems(), 4);
    for (int i = 0; i < 4; ++i) {
        dock.itemAtIndex(i).performAction();
        EXPECT_EQ(alerts.alerts.size(), static_cast<std::size_t>(i + 1));
    }
}

}  // namespace
}  // namespace dorvanel::test
