// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <unistd.h>

#include <csignal>
#include <deque>
#include <filesystem>

#include "platform/PollLoop.h"
#include "support/FakeApplication.h"
#include "support/FakeClock.h"
#include "support/TemporaryFolder.h"
#include "watch/ApplicationWatch.h"
#include "watch/DescribedApplications.h"

namespace dorvanel::test {
namespace {

using catalogue::Entry;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Quit = std::vector<std::string>;

/// The real processes, of which only those that run from the test's folder can be seen or reached.
class OnlyFrom final : public platform::ProgramListing {
  public:
    explicit OnlyFrom(std::string folder) : folder_(std::move(folder)) {}

    std::optional<std::vector<platform::RunningProgram>> list() override {
        if (fails > 0 && fails-- > 0) return std::nullopt;
        auto programs = real_->list();
        if (!programs) return std::nullopt;
        std::erase_if(*programs, [&](const platform::RunningProgram& program) {
            return !program.executable.starts_with(folder_) && program.script != alsoScript;
        });
        return programs;
    }
    bool askToQuit(const platform::RunningProgram& program) override {
        return real_->askToQuit(program);
    }

    int fails = 0;                ///< so many looks from now on
    std::string alsoScript{"-"};  ///< what Python runs is let through by its name

  private:
    std::unique_ptr<platform::ProgramListing> real_ = platform::makeProgramListing();
    std::string folder_;
};

/// Applications that are copies of a program under their names, watched by the real parts. The
/// loop's clock stands still, so no timer fires but when a test has time pass: what is told without
/// that was told by the system.
class RealApplicationsTest : public ::testing::Test, public ApplicationWatchOwner {
  protected:
    RunningApplications::Entries chosenApplications() override { return chosen; }
    void applicationHasQuit(const Quit& ids) override {
        calls.push_back(ids);
        loop->stop();
    }
    /// Runs the loop until the owner has been told so often.
    void runUntilTold(std::size_t times) {
        while (calls.size() < times) loop->run();
    }
    /// Has the timer fire once, and done what was posted by then.
    void discover() {
        clock.advance(ApplicationWatch::kDiscoveryInterval);
        runAWhile();
    }
    void runAWhile() {
        bool isDone = false;
        // Posted from within: the timers fire in between.
        loop->performOnMainThread([&] {
            loop->performOnMainThread([&] {
                isDone = true;
                loop->stop();
            });
        });
        while (!isDone) loop->run();
    }

    TemporaryFolder folder;
    FakeClock clock;
    std::unique_ptr<ui::RunLoop> loop = std::move(platform::makeRunLoop(clock).value());
    OnlyFrom listing{folder.path()};
    std::unique_ptr<platform::LockProbe> locks = platform::makeLockProbe();
    std::unique_ptr<platform::ProgramEnds> ends = platform::makeProgramEnds(*loop);
    Entry firefox = describedFirefox();
    Entry chrome = describedChrome();
    RunningApplications applications{listing, *locks, [this](const Entry&) {
                                         return std::vector<std::string>{folder / "lock"};
                                     }};
    RunningApplications::Entries chosen{&firefox, &chrome};
    std::vector<Quit> calls;
    ApplicationWatch watch{{applications, *ends, *loop}, *this};
};

TEST_F(RealApplicationsTest, ARunningApplicationIsSeenAndItsEndIsTold) {
    const FakeApplication process(folder.path(), "firefox", "");
    EXPECT_THAT(applications.running(chosen), ElementsAre(&firefox));
    watch.start();
    kill(process.pid(), SIGTERM);
    runUntilTold(1);
    EXPECT_THAT(calls, ElementsAre(Quit{"firefox"}));
    EXPECT_THAT(applications.running(chosen), IsEmpty());
}

TEST_F(RealApplicationsTest, AScriptNamedSoAndAFileThatIsOpenAreNoApplications) {
    const std::string script = folder / "firefox";
    writeFile(script, "#!/bin/sh\necho ready; kill -STOP $$\n");
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    ChildProcess shell({script});
    ASSERT_EQ(shell.readLine(), "ready");
    const FakeApplication other(folder.path(), "other", "", script);
    EXPECT_THAT(applications.running(chosen), IsEmpty());
}

TEST_F(RealApplicationsTest, AScriptOfPythonIsWatchedToo) {
    const Entry qutebrowser = describedApplication("qutebrowser", {"qutebrowser"});
    chosen = {&qutebrowser};
    listing.alsoScript = "qutebrowser";
    const std::string script = folder / "qutebrowser";
    writeFile(script, "import signal\nprint('ready', flush=True)\nsignal.pause()\n");
    ChildProcess process({"python3", script});
    ASSERT_EQ(process.readLine(), "ready");
    watch.start();
    process.signal(SIGTERM);
    runUntilTold(1);
    EXPECT_THAT(calls, ElementsAre(Quit{"qutebrowser"}));
}

TEST_F(RealApplicationsTest, OnlyTheLastOfSeveralProcessesEndsTheApplication) {
    std::deque<FakeApplication> processes;
    for (int i = 0; i < 5; ++i) {
        processes.emplace_back(folder.path() / std::to_string(i), "firefox", "");
    }
    const FakeApplication unrelated(folder.path(), "chrome", "");
    watch.start();
    for (int i = 0; i < 4; ++i)
        processes[static_cast<std::size_t>(i)].process().killWithoutWaiting();
    discover();
    EXPECT_THAT(calls, IsEmpty());
    kill(processes.back().pid(), SIGTERM);
    runUntilTold(1);
    EXPECT_THAT(calls, ElementsAre(Quit{"firefox"}));
}

TEST_F(RealApplicationsTest, AChildThatOutlivesItsParentKeepsTheApplicationRunning) {
    FakeApplication parent(folder.path(), "firefox", "", "parent");
    watch.start();
    const pid_t child = std::stoi(parent.process().readLine());
    parent.process().killWithoutWaiting();
    discover();
    EXPECT_THAT(calls, IsEmpty());
    kill(child, SIGTERM);
    runUntilTold(1);
    EXPECT_THAT(calls, ElementsAre(Quit{"firefox"}));
}

TEST_F(RealApplicationsTest, HundredsOfProcessesThatEndAreToldOnce) {
    const std::string program = makeBundle(folder.path(), "firefox", "");
    std::deque<ChildProcess> processes;
    for (int i = 0; i < 300; ++i) {
        processes.emplace_back(std::vector<std::string>{program});
        ASSERT_EQ(processes.back().readLine(), "ready");
    }
    watch.start();
    for (const ChildProcess& process : processes) process.killWithoutWaiting();
    runUntilTold(1);
    discover();
    EXPECT_THAT(calls, ElementsAre(Quit{"firefox"}));
}

TEST_F(RealApplicationsTest, OneThatBecomesAnotherProgramHasQuit) {
    const std::string other = makeBundle(folder / "other", "other", "");
    FakeApplication process(folder.path(), "firefox", "", other);
    watch.start();
    process.becomeOther();
    discover();
    EXPECT_THAT(calls, ElementsAre(Quit{"firefox"}));
}

TEST_F(RealApplicationsTest, ALookThatFailsOnceIsMadeUpFor) {
    const FakeApplication process(folder.path(), "firefox", "");
    watch.start();
    listing.fails = 1;
    kill(process.pid(), SIGTERM);
    while (listing.fails > 0) runAWhile();
    EXPECT_THAT(calls, IsEmpty());
    clock.advance(ApplicationWatch::kDiscoveryInterval);
    runUntilTold(1);
    EXPECT_THAT(calls, ElementsAre(Quit{"firefox"}));
}

TEST_F(RealApplicationsTest, ALockThatOutlivesTheProcessIsWaitedFor) {
    firefox.locks = {"{profile}/lock"};
    const ChildProcess holder({"sleep", "300"});
    std::filesystem::create_symlink("127.0.0.1:+" + std::to_string(holder.pid()), folder / "lock");
    EXPECT_THAT(applications.running(chosen), ElementsAre(&firefox));
    const FakeApplication process(folder.path(), "firefox", "");
    watch.start();
    kill(process.pid(), SIGTERM);
    while (process.isRunning()) {
    }
    discover();
    EXPECT_THAT(calls, IsEmpty());
    holder.killWithoutWaiting();
    clock.advance(ApplicationWatch::kDiscoveryInterval);
    runUntilTold(1);
    EXPECT_THAT(calls, ElementsAre(Quit{"firefox"}));
}

TEST_F(RealApplicationsTest, AskedToQuitTheTopmostProcessEndsAndItsChildIsLeftToIt) {
    FakeApplication parent(folder.path(), "firefox", "", "parent");
    const pid_t child = std::stoi(parent.process().readLine());
    FakeApplication spared(folder.path(), "chrome", "");
    EXPECT_EQ(applications.askToQuit({&firefox}), 1U);
    EXPECT_EQ(parent.process().waitForEnd(), 128 + SIGTERM);
    EXPECT_EQ(kill(child, 0), 0);
    EXPECT_TRUE(spared.isRunning());
    EXPECT_EQ(applications.askToQuit({&firefox}), 1U);  // now it is the topmost
    while (!applications.running({&firefox}).empty()) {
    }
}

}  // namespace
}  // namespace dorvanel::test
