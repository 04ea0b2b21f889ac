// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>

#include "app/terminal/TestTerminal.h"
#include "log/ActivityLog.h"
#include "support/ChildProcess.h"
#include "support/EnvironmentVariable.h"
#include "support/FakeApplication.h"
#include "support/LogCapture.h"
#include "support/OwnProcesses.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"

// The program itself, and a signal at each moment at which it waits or works. Whatever was asked
// for, the machine is never logged out, powered off or restarted then.

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

/// The program itself holds both ends of its standard input, which so stays open and says nothing.
constexpr const char* withOpenInput = R"(
import os, sys
reading, writing = os.pipe()
os.set_inheritable(writing, True)
os.dup2(reading, 0)
os.dup2(1, 2)
os.execv(sys.argv[1], sys.argv[1:])
)";

class SignalMomentsTest : public ::testing::Test {
  protected:
    SignalMomentsTest() {
        writeFile(home / "Library/Caches/Safari/page", "secret");
        EXPECT_EQ(shell.run({"prefs", "set", "ActivityLog", "YES"}), 0);
        bus.startLoginManager();
    }

    static std::string readUntil(ChildProcess& process, const std::string& text) {
        std::string told;
        while (told.find(text) == std::string::npos) {
            const std::string line = process.readLine();
            if (line.empty()) break;
            told += line + "\n";
        }
        return told;
    }
    void expectUntouched() {
        EXPECT_TRUE(fs::exists(home / "Library/Caches/Safari/page"));
        EXPECT_EQ(bus.calls(), "");
        EXPECT_THAT(LogCapture::linesNow(), Not(Contains(StartsWith("Dorvanel Completed"))));
    }
    static void waitUntilLogged(const std::string& line, const ChildProcess& process) {
        while (process.isRunning() && !testing::Value(LogCapture::linesNow(), Contains(line))) {
        }
    }

    TemporaryHome home;
    TestTerminal shell;
    PrivateBus bus;
};

using Moment = std::tuple<int, const char*>;
class SignalWhileShreddingTest : public SignalMomentsTest,
                                 public ::testing::WithParamInterface<Moment> {};

TEST_P(SignalWhileShreddingTest, WhileItShredsEndsItWithoutTheEndingAndSaysWhatIsLeft) {
    const auto& [signal, ending] = GetParam();
    writeFile(home / "Library/Caches/Safari/large", std::string(std::size_t{64} << 20, 'x'));
    ASSERT_EQ(shell.run({"prefs", "set", "NumberOfWrites", "16"}), 0);
    ChildProcess run(
        {"sh", "-c", "exec \"$0\" run --yes --then \"$1\" 2>&1", DORVANEL_PROGRAM, ending});
    waitUntilLogged("Start Shredding Now", run);
    run.signal(signal);
    const std::string told = readUntil(run, "; stopped\n");
    EXPECT_THAT(told, HasSubstr("dorvanel: left: "));
    EXPECT_EQ(run.waitForEnd(), 130);
    EXPECT_EQ(bus.calls(), "");
    EXPECT_THAT(LogCapture::linesNow(), Not(Contains(StartsWith("Dorvanel Completed"))));
}

INSTANTIATE_TEST_SUITE_P(Endings, SignalWhileShreddingTest,
                         ::testing::Values(Moment{SIGINT, "shutdown"}, Moment{SIGTERM, "logout"},
                                           Moment{SIGHUP, "restart"}));

TEST_F(SignalMomentsTest, WhileTheProcessesAreListedNothingIsCollected) {
    const std::string listed = home / "listed";
    writeFile(home / "bin/ps", "#!/bin/sh\necho COMMAND\n: >'" + listed + "'\nsleep 3\n");
    fs::permissions(home / "bin/ps", fs::perms::owner_all);
    const EnvironmentVariable path("PATH", home / "bin" + ":" + std::getenv("PATH"));
    ChildProcess run({DORVANEL_PROGRAM, "run", "--yes", "--then", "shutdown"});
    while (run.isRunning() && !fs::exists(listed)) {
    }
    run.signal(SIGTERM);
    EXPECT_EQ(run.waitForEnd(), 130);
    expectUntouched();
}

TEST_F(SignalMomentsTest, WhileApplicationsAreWaitedForTheRunIsGivenUpAtOnce) {
    ASSERT_TRUE(processesAreOwn()) << "it would ask this user's real applications to quit";
    const FakeApplication omniWeb(home.path(), "OmniWeb", "APPLOWEB", "stay");
    ChildProcess run({DORVANEL_PROGRAM, "run", "--yes", "--then", "shutdown"});
    waitUntilLogged("User selected Shutdown", run);
    run.signal(SIGTERM);
    EXPECT_EQ(run.waitForEnd(), 130);
    expectUntouched();
}

TEST_F(SignalMomentsTest, AtTheConfirmationItEndsUnanswered) {
    ChildProcess run({"python3", "-c", withOpenInput, DORVANEL_PROGRAM, "run", "--then", "logout"});
    EXPECT_THAT(readUntil(run, "Are you sure"), HasSubstr("Dorvanel Confirmation"));
    run.signal(SIGTERM);
    EXPECT_EQ(run.waitForEnd(), 130);
    expectUntouched();
    EXPECT_THAT(LogCapture::linesNow(), Not(Contains(StartsWith("User selected"))));
}

class LaunchAlertTest : public SignalMomentsTest,
                        public ::testing::WithParamInterface<const char*> {};

TEST_P(LaunchAlertTest, AtTheAlertOfTheFirstLaunchItEndsToo) {
    writeFile(home / "Library/Mozilla/Profiles/one/x");
    writeFile(home / "Library/Mozilla/Profiles/two/x");
    const std::string command = GetParam();
    ChildProcess program({"python3", "-c", withOpenInput, DORVANEL_PROGRAM, command});
    EXPECT_THAT(readUntil(program, "not be displayed again"),
                HasSubstr("Multiple Mozilla Profiles"));
    program.signal(SIGTERM);
    EXPECT_EQ(program.waitForEnd(), command == "watch" ? 0 : 130);
    expectUntouched();
}

INSTANTIATE_TEST_SUITE_P(Commands, LaunchAlertTest, ::testing::Values("run", "watch"));

TEST_F(SignalMomentsTest, AWatchWhoseOutputHasGoneEndsLikeByASignal) {
    constexpr const char* withoutReader = R"(
import os, signal, sys
signal.signal(signal.SIGPIPE, signal.SIG_DFL)
reading, writing = os.pipe()
os.close(reading)
os.dup2(writing, 1)
os.execv(sys.argv[1], sys.argv[1:])
)";
    ChildProcess watch({"python3", "-c", withoutReader, DORVANEL_PROGRAM, "watch", "--yes"});
    EXPECT_EQ(watch.waitForEnd(), 0);
    expectUntouched();
}

TEST_F(SignalMomentsTest, AListingThatFailsLeavesEverythingAloneAndIsTold) {
    writeFile(home / "bin/ps", "#!/bin/sh\necho COMMAND\nexit 1\n");
    fs::permissions(home / "bin/ps", fs::perms::owner_all);
    const EnvironmentVariable path("PATH", home / "bin" + ":" + std::getenv("PATH"));
    EXPECT_EQ(shell.run({"run", "--yes", "--then", "shutdown"}), 0);
    EXPECT_THAT(shell.err.str(), HasSubstr("the processes could not be listed"));
    expectUntouched();
}

}  // namespace
}  // namespace dorvanel::test
