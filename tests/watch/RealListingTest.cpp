// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

#include "support/EnvironmentVariable.h"
#include "support/FakeApplication.h"
#include "support/TemporaryFolder.h"
#include "watch/WatchHarness.h"

namespace dorvanel::test {
namespace {

using ui::Color;

/// Browser Watch on real processes. The command `ps` that it finds is the real one, with only the
/// processes of this test let through: what else runs on the machine is not the test's business.
class RealListingTest : public ::testing::Test {
  protected:
    RealListingTest() {
        const std::string ps = folder / "bin/ps";
        writeFile(ps,
                  "#!/bin/sh\n/bin/ps \"$@\" | sed -n -e 1p -e '\\|" + (folder / "apps") + "|p'\n");
        std::filesystem::permissions(ps, std::filesystem::perms::owner_all);
        harness.launch();
    }

    TemporaryFolder folder;
    EnvironmentVariable path{"PATH", folder / "bin:/usr/bin:/bin"};
    std::unique_ptr<platform::ProcessListing> listing = platform::makeProcessListing();
    WatchHarness harness{listing.get()};
};

TEST_F(RealListingTest, ARealApplicationIsSeenRunningAndItsEndStartsARun) {
    {
        const FakeApplication safari(folder / "apps", "Safari", "APPLsfri");
        harness.pass();
        EXPECT_EQ(harness.window.mBWSafari.colors.back(), Color::red);
        EXPECT_EQ(harness.window.mBWMail.colors.back(), Color::green);
        EXPECT_EQ(harness.window.status(), kRunningText);
        EXPECT_EQ(harness.owner.runs, 0);
    }
    harness.pass();
    EXPECT_EQ(harness.window.mBWSafari.colors.back(), Color::green);
    EXPECT_EQ(harness.window.status(), kHaveQuitText);
    EXPECT_EQ(harness.owner.runs, 1);
    harness.pass();
    EXPECT_EQ(harness.owner.runs, 1);
}

TEST_F(RealListingTest, AnApplicationThatHasEndedButWasNotWaitedForHasQuit) {
    FakeApplication safari(folder / "apps", "Safari", "APPLsfri");
    harness.pass();
    safari.process().killWithoutWaiting();
    harness.pass();
    EXPECT_EQ(harness.owner.runs, 1);
}

TEST_F(RealListingTest, OneApplicationQuitsWhileAnotherRuns) {
    const FakeApplication mail(folder / "apps", "Mail", "APPLemal");
    {
        const FakeApplication safari(folder / "apps", "Safari", "APPLsfri");
        harness.pass();
    }
    harness.pass();
    EXPECT_EQ(harness.owner.runs, 1);
    EXPECT_EQ(harness.window.status(), kRunningText);
}

TEST_F(RealListingTest, AFolderNamediCabCountsAsiCab) {
    const FakeApplication viewer(folder / "apps/my iCab things", "Viewer", "APPLview");
    harness.pass();
    EXPECT_EQ(harness.window.mBWiCab.colors.back(), Color::red);
}

TEST_F(RealListingTest, MailsmithIsNotMail) {
    const FakeApplication mailsmith(folder / "apps", "Mailsmith", "APPLBLTO");
    harness.pass();
    EXPECT_EQ(harness.window.mBWMailsmith.colors.back(), Color::red);
    EXPECT_EQ(harness.window.mBWMail.colors.back(), Color::green);
}

TEST_F(RealListingTest, WithoutPsNobodyKnowsWhatRunsAndNothingBeeps) {
    std::filesystem::remove(folder / "bin/ps");
    const EnvironmentVariable nowhere("PATH", folder / "bin");
    harness.pass();
    EXPECT_FALSE(harness.watch.isKnown());
    EXPECT_EQ(harness.window.status(), kWaitingText);
    EXPECT_EQ(harness.sound.beeps, 0);
}

}  // namespace
}  // namespace dorvanel::test
