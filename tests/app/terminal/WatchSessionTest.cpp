#include "app/terminal/WatchSession.h"

#include <gtest/gtest.h>

#include <sstream>

#include "app/terminal/TestTerminal.h"
#include "support/FakeClock.h"
#include "support/FakePreferences.h"
#include "support/FakeProcessListing.h"
#include "support/FakeRunLoop.h"

namespace dorvanel::test {
namespace {

const std::string kSafari = "/Applications/Safari.app/Contents/MacOS/Safari";

struct CountedRuns final : BrowserWatchOwner {
    void shredAndNothing() override { ++count; }

    int count = 0;
};

/// Sets what a listing says from pass to pass, and quits after the last one.
class WatchSessionTest : public ::testing::Test {
  protected:
    std::string linesOf(const std::vector<std::vector<std::string>>& passes) {
        preferences.set("BrowserWatch", true);
        std::size_t pass = 0;
        listing.onOpen = [&] {
            listing.show(passes.at(pass++));
            if (pass == passes.size()) loop.performOnMainThread([&] { session.requestQuit(); });
        };
        session.run();
        return memory.out.str();
    }

    FakeClock clock;
    FakeRunLoop loop{clock};
    FakePreferences preferences;
    FakeProcessListing listing;
    FakeSystemSound sound;
    CountedRuns runs;
    TestTerminal memory;
    terminal::WatchSession session{{preferences, listing, loop, sound}, runs, memory.terminal};
};

TEST_F(WatchSessionTest, EachNewStatusTextIsOneLine) {
    EXPECT_EQ(linesOf({{}, {kSafari}, {kSafari}, {}, {}}),
              "Enabled and waiting for the first timer event to occur...\n"
              "No supported applications are running...\n"
              "A supported browser or email application is running...\n"
              "All supported browser or email application have quit...\n"
              "No supported applications are running...\n");
    EXPECT_EQ(memory.err.str(), "");
}

TEST_F(WatchSessionTest, TheSameTextAgainIsNoNewLine) {
    EXPECT_EQ(linesOf({{}, {}, {}}),
              "Enabled and waiting for the first timer event to occur...\n"
              "No supported applications are running...\n");
}

TEST_F(WatchSessionTest, AnApplicationThatQuitsStartsARun) {
    linesOf({{kSafari}, {}, {}});
    EXPECT_EQ(runs.count, 1);
}

TEST_F(WatchSessionTest, PassesComeEveryTenSeconds) {
    const auto start = clock.now();
    linesOf({{}, {}, {}});
    EXPECT_EQ(clock.now() - start, std::chrono::seconds(30));
}

TEST_F(WatchSessionTest, AQuitRequestInTheMiddleOfAPassStartsNoRun) {
    preferences.set("BrowserWatch", true);
    int pass = 0;
    listing.onOpen = [&] {
        if (++pass == 1) {
            listing.show({kSafari});
        } else {
            listing.show({});
            session.requestQuit();
        }
    };
    session.run();
    EXPECT_EQ(pass, 2);
    EXPECT_EQ(runs.count, 0);
}

TEST_F(WatchSessionTest, AQuitRequestBeforeItStartsEndsItAtOnceAndAgainDoesNothing) {
    preferences.set("BrowserWatch", true);
    session.requestQuit();
    session.requestQuit();
    session.run();
    EXPECT_TRUE(listing.commands.empty());
}

TEST_F(WatchSessionTest, WithBrowserWatchOffItSaysSoAndWaitsForThePreference) {
    preferences.set("BrowserWatch", false);
    const auto start = clock.now();
    loop.scheduleRepeatingTimer(std::chrono::minutes(1), [&](platform::Timer& timer) {
        timer.invalidate();
        preferences.set("BrowserWatch", true);
    });
    listing.onOpen = [&] { session.requestQuit(); };
    session.run();
    EXPECT_EQ(memory.out.str(),
              "Not enabled. Use preferences to enable...\n"
              "Enabled and waiting for the first timer event to occur...\n"
              "No supported applications are running...\n");
    EXPECT_LE(clock.now() - start, std::chrono::seconds(72));
}

}  // namespace
}  // namespace dorvanel::test
