// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <csignal>

#include "support/ChildProcess.h"
#include "support/FakeApplication.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

const std::string kWaiting = "Enabled and waiting for the first timer event to occur...";

/// The program itself, in a temporary home.
class WatchProgramTest : public ::testing::Test {
  protected:
    TemporaryHome home;
};

class WatchSignalTest : public WatchProgramTest, public ::testing::WithParamInterface<int> {};

TEST_P(WatchSignalTest, SaysThatItWaitsAndASignalEndsItWithSuccess) {
    const FakeApplication safari(home.path(), "Safari", "APPLsfri");
    ChildProcess watch({DORVANEL_PROGRAM, "watch", "--yes"});
    EXPECT_EQ(watch.readLine(), kWaiting);
    watch.signal(GetParam());
    EXPECT_EQ(watch.readLine(), "");
    EXPECT_EQ(watch.waitForEnd(), 0);
    EXPECT_TRUE(safari.isRunning());
}

INSTANTIATE_TEST_SUITE_P(Signals, WatchSignalTest, ::testing::Values(SIGINT, SIGTERM));

TEST_F(WatchProgramTest, TwoSignalsEndItLikeOne) {
    ChildProcess watch({DORVANEL_PROGRAM, "--home", home.path(), "watch"});
    EXPECT_EQ(watch.readLine(), kWaiting);
    watch.signal(SIGTERM);
    watch.signal(SIGINT);
    EXPECT_EQ(watch.waitForEnd(), 0);
}

TEST_F(WatchProgramTest, WithBrowserWatchOffItSaysSo) {
    ChildProcess off({DORVANEL_PROGRAM, "prefs", "set", "BrowserWatch", "NO"});
    ASSERT_EQ(off.waitForEnd(), 0);
    ChildProcess watch({DORVANEL_PROGRAM, "watch"});
    EXPECT_EQ(watch.readLine(), "Not enabled. Use preferences to enable...");
    watch.signal(SIGTERM);
    EXPECT_EQ(watch.waitForEnd(), 0);
}

TEST_F(WatchProgramTest, AnArgumentTooManyIsBadUsage) {
    ChildProcess watch({DORVANEL_PROGRAM, "watch", "everything"});
    EXPECT_EQ(watch.waitForEnd(), 2);
}

}  // namespace
}  // namespace dorvanel::test
