// SPDX-License-Identifier: MIT
#include "app/terminal/TerminalSession.h"

#include <gtest/gtest.h>

#include <functional>

#include "app/ApplicationsOfToday.h"
#include "app/terminal/TestTerminal.h"
#include "run/ShreddingRun.h"
#include "support/FakeClock.h"
#include "support/FakeDesktop.h"
#include "support/FakeProcessListing.h"
#include "support/FakeProcessManager.h"
#include "support/FakeQuitWait.h"
#include "support/FakeRunLoop.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

const std::string kSafari = "/Applications/Safari.app/Contents/MacOS/Safari";

/// The session of `dorvanel watch --yes`, on a clock driven by hand.
class TerminalSessionTest : public ::testing::Test {
  protected:
    TerminalSessionTest() {
        session.onRunEnded = [this](const RunReport& report) { reports.push_back(report); };
        clock.step = std::chrono::microseconds(1);
    }
    ~TerminalSessionTest() override { session.controller().run().waitForWorker(); }

    /// Sets what a listing says from pass to pass, and quits after the last one.
    std::string linesOf(const std::vector<std::vector<std::string>>& passes) {
        std::size_t pass = 0;
        listing.onOpen = [this, passes, pass]() mutable {
            listing.show(passes[std::min(pass, passes.size() - 1)]);
            if (++pass == passes.size()) {
                loop.performOnMainThread([this] { session.requestQuit(); });
            }
        };
        session.controller().applicationDidFinishLaunching();
        loop.run();
        return memory.out.str();
    }

    TemporaryHome home;
    FakeClock clock;
    FakeRunLoop loop{clock};
    FakeProcessListing listing;
    FakeProcessManager processes;
    CallLog calls;
    FakeSystemEvents events{calls};
    FakeQuitWait quitWait{clock};
    std::unique_ptr<platform::Worker> worker = platform::makeWorker();
    std::unique_ptr<platform::SystemCalls> system = platform::makeSystemCalls();
    MachinesTodayServices today{loop};
    TestTerminal memory;
    terminal::OpenedPreferences opened{memory.terminal};
    terminal::StatusLine status{memory.terminal};
    terminal::TerminalSession session{memory.terminal,
                                      opened,
                                      {.system = *system,
                                       .clock = clock,
                                       .runLoop = loop,
                                       .listing = listing,
                                       .processes = processes,
                                       .events = events,
                                       .quitWait = quitWait,
                                       .worker = *worker,
                                       .today = today.services()},
                                      terminal::TerminalAlertPanel::Answers::assumed,
                                      status};
    std::vector<RunReport> reports;
};

TEST_F(TerminalSessionTest, EachNewStatusTextIsOneLine) {
    EXPECT_EQ(linesOf({{}, {}, {kSafari}, {kSafari}}),
              "Enabled and waiting for the first timer event to occur...\n"
              "No supported applications are running...\n"
              "A supported browser or email application is running...\n");
}

TEST_F(TerminalSessionTest, PassesComeEveryTenSeconds) {
    const auto start = clock.now();
    linesOf({{}, {}, {}});
    const auto took = clock.now() - start;
    EXPECT_GE(took, std::chrono::seconds(30));
    EXPECT_LT(took, std::chrono::seconds(31));
}

TEST_F(TerminalSessionTest, AnApplicationThatQuitsIsCleanedUpAfterAndTheRunIsTold) {
    writeFile(home / "Library/Caches/Safari/page", "secret");
    linesOf({{kSafari}, {}, {}});
    session.controller().run().waitForWorker();
    session.tellPendingReports();
    EXPECT_EQ(readFile(home / "Library/Caches/Safari/page"), "");
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_EQ(reports[0].outcome.filesOverwritten, 1U);
}

TEST_F(TerminalSessionTest, AQuitRequestInTheMiddleOfAPassStartsNoRun) {
    writeFile(home / "Library/Caches/Safari/page", "kept");
    int pass = 0;
    listing.onOpen = [this, pass]() mutable {
        listing.show(++pass == 1 ? std::vector<std::string>{kSafari} : std::vector<std::string>{});
        if (pass == 2) session.requestQuit();
    };
    session.controller().applicationDidFinishLaunching();
    loop.run();
    EXPECT_EQ(readFile(home / "Library/Caches/Safari/page"), "kept");
}

TEST_F(TerminalSessionTest, AQuitRequestBeforeItStartsEndsItBeforeAnyPass) {
    session.controller().applicationDidFinishLaunching();
    session.requestQuit();
    session.requestQuit();
    loop.run();
    EXPECT_TRUE(listing.commands.empty());
}

TEST_F(TerminalSessionTest, WithBrowserWatchOffItSaysSoAndWaitsForThePreference) {
    const auto watch = [this](bool on) {
        opened.preferences().displayedValues.insert_or_assign("BrowserWatch", Number::fromBool(on));
        ASSERT_TRUE(opened.preferences().commitDisplayedValues());
    };
    watch(false);
    loop.scheduleRepeatingTimer(std::chrono::minutes(1), [&](ui::Timer& timer) {
        timer.invalidate();
        watch(true);
    });
    EXPECT_EQ(linesOf({{}}),
              "Not enabled. Use preferences to enable...\n"
              "Enabled and waiting for the first timer event to occur...\n"
              "No supported applications are running...\n");
}

}  // namespace
}  // namespace dorvanel::test
