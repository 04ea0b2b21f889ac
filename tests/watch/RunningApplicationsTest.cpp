// SPDX-License-Identifier: MIT
#include "watch/RunningApplications.h"

#include <gmock/gmock.h>

#include "support/FakeProgramListing.h"
#include "watch/DescribedApplications.h"

namespace dorvanel::test {
namespace {

using catalogue::Entry;
using platform::LockState;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Entries = RunningApplications::Entries;

class RunningApplicationsTest : public ::testing::Test {
  protected:
    /// The numbers of the processes that are the application's.
    std::vector<std::int32_t> pidsOf(const Entry& entry) {
        std::vector<std::int32_t> pids;
        const auto found = applications.processes({&entry});
        EXPECT_TRUE(found);
        const auto own = found->find(entry.id);
        if (own == found->end()) return pids;
        for (const auto& program : own->second) pids.push_back(program.process.pid);
        return pids;
    }

    FakeProgramListing listing;
    FakeLockProbe locks;
    std::vector<std::string> lockPaths{"/home/a/lock"};
    Entry firefox = describedFirefox();
    Entry chrome = describedChrome();
    Entry qutebrowser = describedApplication("qutebrowser", {"qutebrowser"});
    RunningApplications applications{listing, locks, [this](const Entry&) { return lockPaths; }};
};

TEST_F(RunningApplicationsTest, AProcessBelongsToWhoeverHasTheNameOfItsProgram) {
    listing.start("/usr/lib/firefox/firefox");
    listing.start("/opt/google/chrome/chrome");
    listing.start("/opt/other/firefox-bin");
    EXPECT_THAT(pidsOf(firefox), ElementsAre(101, 103));
    EXPECT_THAT(pidsOf(chrome), ElementsAre(102));
    EXPECT_THAT(pidsOf(qutebrowser), IsEmpty());
}

TEST_F(RunningApplicationsTest, ANameMustBeTheWholeOfTheLastComponent) {
    listing.start("/usr/bin/firefox-esr");
    listing.start("/usr/lib/firefox/plugin-container");
    listing.start("/usr/bin/myfirefox");
    listing.start("/usr/bin/Firefox");
    EXPECT_THAT(pidsOf(firefox), IsEmpty());
}

TEST_F(RunningApplicationsTest, TheShortNameOnlyCountsWhereTheProgramIsNotTold) {
    listing.start("").comm = "firefox";
    listing.start("/usr/bin/vim").comm = "firefox";
    EXPECT_THAT(pidsOf(firefox), ElementsAre(101));
}

TEST_F(RunningApplicationsTest, AShortNameIsComparedWithAsMuchOfALongOne) {
    const Entry longName = describedApplication("long", {"abcdefghijklmnopqrstuvwxyz"});
    listing.start("").comm = "abcdefghijklmno";
    listing.start("").comm = "abcdefghijklmn";
    listing.start("").comm = "";
    EXPECT_THAT(pidsOf(longName), ElementsAre(101));
}

TEST_F(RunningApplicationsTest, AScriptOfPythonIsItsApplication) {
    listing.start("/usr/bin/python3.11").script = "qutebrowser";
    listing.start("/usr/bin/python3.11").script = "other";
    listing.start("/usr/bin/python3.11");
    EXPECT_THAT(pidsOf(qutebrowser), ElementsAre(101));
}

TEST_F(RunningApplicationsTest, AllThatIsInAnApplicationsFlatpakIsTheApplications) {
    listing.start("/usr/bin/bwrap").flatpak = "org.mozilla.firefox";
    listing.start("/app/lib/firefox/firefox").flatpak = "org.mozilla.firefox";
    listing.start("/usr/bin/bwrap").flatpak = "org.mozilla.firefox.other";
    EXPECT_THAT(pidsOf(firefox), ElementsAre(101, 102));
}

TEST_F(RunningApplicationsTest, AllThatIsInAnApplicationsSnapIsTheApplications) {
    listing.start("/snap/firefox/12/bin/launch").snap = "firefox";
    listing.start("/usr/bin/bash").snap = "other";
    EXPECT_THAT(pidsOf(firefox), ElementsAre(101));
}

TEST_F(RunningApplicationsTest, OnlyInstallsOfItsKindNameASandbox) {
    const Entry crossed = describedApplication(
        "crossed", {"crossed"},
        {{"native", {{"a", "~/.var/app/org.native/x"}, {"b", "~/snap/native/x"}}},
         {"snap", {{"a", "~/.var/app/org.snapped/x"}, {"b", "~/snap/own"}}},
         {"flatpak", {{"a", "~/snap/flat/x"}, {"b", "~/.var/app/org.own"}, {"c", "~/x"}}}});
    listing.start("/bin/a").flatpak = "org.native";
    listing.start("/bin/a").snap = "native";
    listing.start("/bin/a").flatpak = "org.snapped";
    listing.start("/bin/a").snap = "flat";
    listing.start("/bin/a").snap = "own";
    listing.start("/bin/a").flatpak = "org.own";
    EXPECT_THAT(pidsOf(crossed), ElementsAre(105, 106));
}

TEST_F(RunningApplicationsTest, AProgramThatASandboxBringsAlongIsNotAnotherApplication) {
    listing.start("/snap/chromium/12/usr/lib/chromium-browser/chrome").snap = "chromium";
    listing.start("/app/bin/chrome").flatpak = "org.chromium.Chromium";
    EXPECT_THAT(pidsOf(chrome), IsEmpty());
}

TEST_F(RunningApplicationsTest, WhatASandboxedTerminalStartsIsWhatItIs) {
    listing.start("/opt/google/chrome/chrome").snap = "terminal";
    EXPECT_THAT(pidsOf(chrome), ElementsAre(101));
}

TEST_F(RunningApplicationsTest, AHeldLockMeansThatTheApplicationRuns) {
    firefox.locks = {"{profile}/lock"};
    EXPECT_THAT(applications.running({&firefox, &chrome}), IsEmpty());
    for (const LockState state : {LockState::held, LockState::unknown}) {
        locks.state = state;
        EXPECT_THAT(applications.running({&firefox, &chrome}), ElementsAre(&firefox));
    }
}

TEST_F(RunningApplicationsTest, EachLockIsProbedUntilOneIsHeld) {
    firefox.locks = {"{profile}/lock"};
    lockPaths = {"/a", "/b"};
    EXPECT_FALSE(applications.holdsLock(firefox));
    EXPECT_THAT(locks.probed, ElementsAre("/a", "/b"));
    locks.state = LockState::held;
    EXPECT_TRUE(applications.holdsLock(firefox));
    lockPaths = {};
    EXPECT_FALSE(applications.holdsLock(firefox));
}

TEST_F(RunningApplicationsTest, WhereNothingIsKnownEverythingMayRun) {
    listing.fails = true;
    EXPECT_FALSE(applications.processes({&firefox}));
    EXPECT_THAT(applications.running({&firefox, &chrome}), ElementsAre(&firefox, &chrome));
    EXPECT_EQ(applications.askToQuit({&firefox}), std::nullopt);
    EXPECT_THAT(listing.asked, IsEmpty());
}

TEST_F(RunningApplicationsTest, TheTopmostProcessesAreAskedToQuit) {
    listing.start("/usr/lib/firefox/firefox");       // 101
    listing.start("/usr/lib/firefox/firefox", 101);  // a tab
    listing.start("/usr/bin/bash", 101);
    listing.start("/usr/lib/firefox/firefox", 103);  // of its own
    listing.start("/opt/google/chrome/chrome");
    EXPECT_EQ(applications.askToQuit({&firefox}), 2U);
    EXPECT_THAT(listing.asked, ElementsAre(101, 104));
}

TEST_F(RunningApplicationsTest, OnlyTheChosenApplicationsAreAsked) {
    listing.start("/usr/lib/firefox/firefox");
    listing.start("/opt/google/chrome/chrome");
    EXPECT_EQ(applications.askToQuit({&chrome, &qutebrowser}), 1U);
    EXPECT_THAT(listing.asked, ElementsAre(102));
}

TEST_F(RunningApplicationsTest, InASandboxTheOneWithTheNameIsAskedAndNotItsWrapper) {
    listing.start("/usr/bin/bwrap").flatpak = "org.mozilla.firefox";
    listing.start("/app/lib/firefox/firefox", 101).flatpak = "org.mozilla.firefox";
    listing.start("/app/lib/firefox/firefox", 102).flatpak = "org.mozilla.firefox";
    EXPECT_EQ(applications.askToQuit({&firefox}), 1U);
    EXPECT_THAT(listing.asked, ElementsAre(102));
}

TEST_F(RunningApplicationsTest, InASandboxWithoutTheNameTheTopmostOfAllAreAsked) {
    listing.start("/usr/bin/bwrap").flatpak = "org.mozilla.firefox";
    listing.start("/app/bin/launch", 101).flatpak = "org.mozilla.firefox";
    listing.start("/usr/lib/firefox/firefox");  // another one, in no sandbox
    EXPECT_EQ(applications.askToQuit({&firefox}), 2U);
    EXPECT_THAT(listing.asked, ElementsAre(101, 103));
}

TEST_F(RunningApplicationsTest, WhoeverHasGoneMeanwhileIsNotCounted) {
    listing.start("/usr/lib/firefox/firefox");
    listing.start("/usr/lib/firefox/firefox");
    listing.gone = {101};
    EXPECT_EQ(applications.askToQuit({&firefox}), 1U);
}

TEST_F(RunningApplicationsTest, AProcessOfTwoApplicationsIsAskedOnce) {
    const Entry twin = describedApplication("twin", {"firefox"});
    listing.start("/usr/lib/firefox/firefox");
    EXPECT_EQ(applications.askToQuit({&firefox, &twin}), 1U);
    EXPECT_THAT(listing.asked, ElementsAre(101));
}

}  // namespace
}  // namespace dorvanel::test
