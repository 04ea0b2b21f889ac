// SPDX-License-Identifier: MIT
#include "watch/BrowserWatch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include "watch/ListedApplication.h"
#include "watch/WatchHarness.h"

namespace dorvanel::test {
namespace {

using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;
using ui::Color;

const std::string kSafari = "/Applications/Safari.app/Contents/MacOS/Safari -psn_0_1";
const std::string kMail = "/Applications/Mail.app/Contents/MacOS/Mail";

class BrowserWatchTest : public ::testing::Test, public WatchHarness {};

TEST_F(BrowserWatchTest, AnEnabledApplicationThatQuitsStartsOneRun) {
    launch();
    pass({kSafari});
    EXPECT_EQ(owner.runs, 0);
    pass({});
    EXPECT_EQ(owner.runs, 1);
    pass({});
    EXPECT_EQ(owner.runs, 1);
}

TEST_F(BrowserWatchTest, ADisabledApplicationThatQuitsStartsNoneAndItsLabelStaysLightGrey) {
    preferences.disabled.insert("Safari");
    launch();
    pass({kSafari});
    EXPECT_EQ(window.mBWSafari.colors.back(), Color::lightGray);
    pass({});
    EXPECT_EQ(window.mBWSafari.colors.back(), Color::lightGray);
    EXPECT_EQ(owner.runs, 0);
}

TEST_F(BrowserWatchTest, OneApplicationQuittingStartsARunWhileAnotherStillRuns) {
    launch();
    pass({kSafari, kMail});
    pass({kMail});
    EXPECT_EQ(owner.runs, 1);
    EXPECT_EQ(window.status(), kRunningText);
}

TEST_F(BrowserWatchTest, ALineThatMountsADiskImageCountsForNothing) {
    launch();
    pass({"/usr/bin/hdid /Applications/Safari.app/image.dmg"});
    EXPECT_EQ(watch.isRunning(), bw_typedef{});
    EXPECT_EQ(window.status(), kNoneRunningText);
}

TEST_F(BrowserWatchTest, ALineWithMailAndMailsmithCountsForMailOnly) {
    launch();
    pass({"/Applications/Mailsmith.app/x /Applications/Mail.app/y"});
    bw_typedef expected;
    expected.mail = 1;
    EXPECT_EQ(watch.isRunning(), expected);
}

TEST_F(BrowserWatchTest, ALineWithMailsmithOnlyCountsForMailsmith) {
    launch();
    pass({"/Applications/Mailsmith.app/Contents/MacOS/Mailsmith"});
    bw_typedef expected;
    expected.mailsmith = 1;
    EXPECT_EQ(watch.isRunning(), expected);
}

TEST_F(BrowserWatchTest, AFolderNamediCabInThePathCountsAsiCab) {
    launch();
    pass({"/Users/alice/iCab downloads/viewer"});
    bw_typedef expected;
    expected.icab = 1;
    EXPECT_EQ(watch.isRunning(), expected);
    EXPECT_EQ(window.mBWiCab.colors.back(), Color::red);
}

TEST_F(BrowserWatchTest, APassWithoutSenderStartsNothingAndNeitherDoesTheNextTimedOne) {
    launch();
    pass({kSafari});
    listing.show({});
    watch.HandleBrowserWatchTimer(nullptr);
    EXPECT_EQ(window.mBWSafari.colors.back(), Color::green);
    EXPECT_EQ(watch.isRunning().safari, 0U);
    EXPECT_EQ(window.status(), kHaveQuitText);
    EXPECT_EQ(owner.runs, 0);
    pass();
    EXPECT_EQ(owner.runs, 0);
}

TEST_F(BrowserWatchTest, WithNothingEverRunningTheStatusNeverSaysThatAllHaveQuit) {
    launch();
    EXPECT_EQ(window.status(), kWaitingText);
    pass({});
    EXPECT_EQ(window.status(), kNoneRunningText);
    pass({});
    pass({});
    EXPECT_THAT(window.browserWatchStatusTextbox.texts, Not(Contains(kHaveQuitText)));
}

TEST_F(BrowserWatchTest, SwitchingThePreferenceStopsAndRestartsTheWatchWithinTwoSeconds) {
    launch();
    pass({kSafari});
    preferences.set("BrowserWatch", false);
    loop.advance(2s);
    EXPECT_EQ(window.status(), kNotEnabledText);
    for (FakeTextField* label : window.labels()) EXPECT_EQ(label->colors.back(), Color::lightGray);
    EXPECT_FALSE(watch.isWatching());
    const std::size_t passes = listing.commands.size();
    loop.advance(1min);
    EXPECT_EQ(listing.commands.size(), passes);

    preferences.set("BrowserWatch", true);
    loop.advance(2s);
    EXPECT_EQ(window.status(), kWaitingText);
    EXPECT_TRUE(watch.isWatching());
    loop.advance(10s);
    EXPECT_EQ(listing.commands.size(), passes + 1);
}

TEST_F(BrowserWatchTest, TheFirstPassComesTenSecondsAfterLaunch) {
    launch();
    loop.advance(9999ms);
    EXPECT_EQ(listing.commands.size(), 0U);
    loop.advance(1ms);
    EXPECT_EQ(listing.commands.size(), 1U);
    EXPECT_EQ(window.browserWatchStatusTextbox.texts,
              (std::vector{kWaitingText, kNoneRunningText}));
    EXPECT_EQ(window.browserWatchStatusTextbox.displays, 2);
}

TEST_F(BrowserWatchTest, LaunchedWithThePreferenceOffItSaysSoAndGreysTheLabels) {
    preferences.set("BrowserWatch", false);
    launch();
    EXPECT_EQ(window.browserWatchStatusTextbox.texts, std::vector{kNotEnabledText});
    EXPECT_EQ(window.browserWatchStatusTextbox.displays, 1);
    for (FakeTextField* label : window.labels()) {
        EXPECT_EQ(label->colors, std::vector{Color::lightGray});
    }
    loop.advance(1min);
    EXPECT_TRUE(listing.commands.empty());
    EXPECT_EQ(window.browserWatchStatusTextbox.texts.size(), 1U);
}

TEST_F(BrowserWatchTest, AtLaunchEveryFlagOfThePassBeforeIsFilledByBytes) {
    launch();
    EXPECT_EQ(watch.isRunning(), bw_typedef{});
    for (const SupportedApplication& application : applications) {
        EXPECT_EQ(watch.wasRunning().*application.flag, 0x01010101U) << application.name;
    }
}

TEST_F(BrowserWatchTest, TheFirstPassNeverStartsARun) {
    launch();
    pass({});
    EXPECT_EQ(watch.wasRunning(), bw_typedef{});
    EXPECT_EQ(owner.runs, 0);
}

TEST_F(BrowserWatchTest, TheStatusGoesFromRunningToHaveQuitToNoneRunning) {
    launch();
    pass({kSafari});
    pass({});
    pass({});
    EXPECT_THAT(window.browserWatchStatusTextbox.texts,
                ElementsAre(kWaitingText, kRunningText, kHaveQuitText, kNoneRunningText));
    EXPECT_EQ(window.browserWatchStatusTextbox.displays, 4);
}

TEST_F(BrowserWatchTest, TheStatusSpeaksOfDisabledApplicationsToo) {
    preferences.disabled.insert("Safari");
    launch();
    pass({kSafari});
    EXPECT_EQ(window.status(), kRunningText);
}

TEST_F(BrowserWatchTest, TheCommandNamesTheUserAndNothingElseVaries) {
    launch();
    pass();
    EXPECT_THAT(listing.commands, ElementsAre("ps -w -w -o command -U alice"));
}

TEST_F(BrowserWatchTest, TheHeaderLineIsNeverMatched) {
    launch();
    listing.lines = {kSafari + "\n", "init\n"};
    pass();
    EXPECT_EQ(watch.isRunning(), bw_typedef{});
}

TEST_F(BrowserWatchTest, ALastLineWithoutNewlineCounts) {
    launch();
    listing.lines = {"COMMAND\n", kSafari};
    pass();
    EXPECT_EQ(watch.isRunning().safari, 1U);
}

TEST_F(BrowserWatchTest, AnEmptyListingTurnsTheLabelsGreen) {
    launch();
    listing.lines = {};
    pass();
    for (FakeTextField* label : window.labels())
        EXPECT_EQ(label->colors, std::vector{Color::green});
    EXPECT_EQ(window.status(), kNoneRunningText);
    EXPECT_EQ(sound.beeps, 0);
}

TEST_F(BrowserWatchTest, AListingThatCannotBeStartedBeepsAndChangesNothing) {
    launch();
    pass({kSafari});
    const std::vector<Color> colors = window.mBWSafari.colors;
    listing.fails = true;
    pass();
    EXPECT_EQ(sound.beeps, 1);
    EXPECT_EQ(window.mBWSafari.colors, colors);
    EXPECT_EQ(watch.isRunning().safari, 1U);
    EXPECT_FALSE(watch.isKnown());
    EXPECT_EQ(window.status(), kRunningText);
    EXPECT_EQ(owner.runs, 0);
}

TEST_F(BrowserWatchTest, AListingThatIsCutOffStartsNothingAndTheNextWholeOneDoes) {
    launch();
    pass({kSafari});
    listing.isCutOff = true;
    pass({});
    pass({});
    EXPECT_EQ(owner.runs, 0);
    EXPECT_EQ(watch.isRunning().safari, 1U);
    EXPECT_EQ(window.status(), kRunningText);
    EXPECT_EQ(sound.beeps, 0);
    listing.isCutOff = false;
    pass({});
    EXPECT_TRUE(watch.isKnown());
    EXPECT_EQ(owner.runs, 1);
    EXPECT_EQ(window.status(), kHaveQuitText);
}

TEST_F(BrowserWatchTest, SeveralLinesOfOneApplicationAreOneApplication) {
    launch();
    pass({kSafari, kSafari});
    EXPECT_EQ(window.mBWSafari.colors, std::vector{Color::red});
}

TEST_F(BrowserWatchTest, AnApplicationEnabledAgainIsGreenOrRedAtTheNextPass) {
    preferences.disabled = {"Safari", "Apple Mail"};
    launch();
    pass({kSafari});
    preferences.disabled.clear();
    pass({kSafari});
    EXPECT_EQ(window.mBWSafari.colors.back(), Color::red);
    EXPECT_EQ(window.mBWMail.colors.back(), Color::green);
}

TEST_F(BrowserWatchTest, AnApplicationEnabledOnlyWhenItHasQuitStartsARun) {
    preferences.disabled.insert("Safari");
    launch();
    pass({kSafari});
    preferences.disabled.clear();
    pass({});
    EXPECT_EQ(owner.runs, 1);
}

TEST_F(BrowserWatchTest, SeveralApplicationsQuittingTogetherStartOneRun) {
    launch();
    pass({kSafari, kMail});
    pass({});
    EXPECT_EQ(owner.runs, 1);
}

TEST_F(BrowserWatchTest, TwoPollsAtOnceChangeNothing) {
    watch.scheduleTimer();
    launch();
    preferences.set("BrowserWatch", false);
    loop.advance(2s);
    preferences.set("BrowserWatch", true);
    loop.advance(2s);
    EXPECT_EQ(loop.validTimers(), 3U);
    EXPECT_EQ(window.browserWatchStatusTextbox.texts,
              (std::vector{kWaitingText, kNotEnabledText, kWaitingText}));
}

TEST_F(BrowserWatchTest, ThePollStartsAWatchAgainThatARunHasStopped) {
    launch();
    watch.invalidateTimer();
    watch.showNotEnabled();
    EXPECT_FALSE(watch.isWatching());
    loop.advance(2s);
    EXPECT_TRUE(watch.isWatching());
    EXPECT_EQ(window.status(), kWaitingText);
}

TEST_F(BrowserWatchTest, StoppingForAQuitShowsNothing) {
    launch();
    watch.invalidateTimer();
    EXPECT_EQ(window.status(), kWaitingText);
    EXPECT_TRUE(window.mBWSafari.colors.empty());
}

TEST_F(BrowserWatchTest, GreyingTheLabelsLeavesTheFlags) {
    launch();
    pass({kSafari});
    watch.disableProcessDisplay();
    EXPECT_EQ(watch.isRunning().safari, 1U);
    for (FakeTextField* label : window.labels()) EXPECT_EQ(label->colors.back(), Color::lightGray);
}

TEST(BrowserWatchEndTest, NoTimerOutlivesTheWatch) {
    FakeClock clock;
    FakeRunLoop loop(clock);
    FakePreferences preferences;
    FakeProcessListing listing;
    FakeSystemSound sound;
    FakeWatchWindow window;
    CountingOwner owner;
    preferences.set("BrowserWatch", true);
    {
        BrowserWatch watch({preferences, listing, loop, sound}, window.outlets(), owner);
        watch.scheduleTimer();
        watch.setInitialState();
        EXPECT_EQ(loop.validTimers(), 2U);
    }
    EXPECT_EQ(loop.validTimers(), 0U);
}

}  // namespace
}  // namespace dorvanel::test
