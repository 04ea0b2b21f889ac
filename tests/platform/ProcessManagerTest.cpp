// SPDX-License-Identifier: MIT
#include "platform/ProcessManager.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <iostream>
#include <optional>

#include "support/FakeApplication.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

using namespace platform;

class ProcessManagerTest : public ::testing::Test {
  protected:
    /// A new walk, up to the process with this number.
    std::optional<ProcessSerialNumber> find(pid_t pid) {
        ProcessSerialNumber process = kNoProcess;
        while (processes->GetNextProcess(process) == noErr) {
            if (process.lowLongOfPSN == static_cast<std::uint32_t>(pid)) return process;
        }
        return std::nullopt;
    }

    TemporaryFolder folder;
    std::unique_ptr<ProcessManager> processes = makeProcessManager();
};

TEST_F(ProcessManagerTest, AnApplicationHasTheTypeTheCreatorAndTheNameOfItsBundle) {
    const FakeApplication safari(folder.path(), "Safari", "APPLsfri");
    const auto process = find(safari.pid());
    ASSERT_TRUE(process);
    ProcessInfoRec information;
    EXPECT_EQ(processes->GetProcessInformation(*process, information), noErr);
    EXPECT_EQ(information.processName, "Safari");
    EXPECT_EQ(information.processType, fourCharCode("APPL"));
    EXPECT_EQ(information.processSignature, fourCharCode("sfri"));
}

TEST_F(ProcessManagerTest, ANameIsCutAt31Bytes) {
    const FakeApplication longName(folder.path(), std::string(40, 'n'), "APPLsfri");
    ProcessInfoRec information;
    processes->GetProcessInformation(find(longName.pid()).value(), information);
    EXPECT_EQ(information.processName, std::string(31, 'n'));
}

TEST_F(ProcessManagerTest, AProcessOutsideOfABundleIsNoApplication) {
    ChildProcess cat({"cat"});
    EXPECT_FALSE(find(cat.pid()));
    EXPECT_FALSE(find(getpid()));
}

TEST_F(ProcessManagerTest, OurOwnProcessIsNeverSignalled) {
    const ProcessSerialNumber self = processes->GetCurrentProcess();
    EXPECT_EQ(self.lowLongOfPSN, static_cast<std::uint32_t>(getpid()));
    EXPECT_TRUE(processes->SameProcess(self, processes->GetCurrentProcess()));
    EXPECT_EQ(processes->SendQuit(self), errAEEventNotHandled);
}

TEST_F(ProcessManagerTest, QuittingSendsTheTerminationSignalAndDoesNotWait) {
    FakeApplication safari(folder.path(), "Safari", "APPLsfri");
    EXPECT_EQ(processes->SendQuit(find(safari.pid()).value()), noErr);
    EXPECT_EQ(safari.process().waitForEnd(), 128 + SIGTERM);
}

TEST_F(ProcessManagerTest, OneWhoseProgramWasDeletedMeanwhileIsStillItself) {
    FakeApplication safari(folder.path(), "Safari", "APPLsfri");
    const auto before = find(safari.pid());
    ASSERT_TRUE(before);
    std::filesystem::remove(safari.executable());
    EXPECT_EQ(find(safari.pid()), before);
    ProcessInfoRec information;
    EXPECT_EQ(processes->GetProcessInformation(*before, information), noErr);
    EXPECT_EQ(information.processSignature, fourCharCode("sfri"));
    EXPECT_EQ(processes->SendQuit(*before), noErr);
    EXPECT_EQ(safari.process().waitForEnd(), 128 + SIGTERM);
}

TEST_F(ProcessManagerTest, OneThatEndedSinceTheLookIsNotSignalled) {
    FakeApplication safari(folder.path(), "Safari", "APPLsfri");
    const auto process = find(safari.pid());
    ASSERT_TRUE(process);
    safari.process().killWithoutWaiting();
    ProcessInfoRec information{"kept", 1, 2};
    EXPECT_EQ(processes->GetProcessInformation(*process, information), procNotFound);
    EXPECT_EQ(information.processName, "kept");
    EXPECT_EQ(processes->SendQuit(*process), procNotFound);
    safari.process().waitForEnd();
    EXPECT_EQ(processes->GetProcessInformation(*process, information), procNotFound);
    EXPECT_EQ(processes->SendQuit(*process), procNotFound);
}

TEST_F(ProcessManagerTest, OneThatHasEndedButWasNotWaitedForDoesNotRun) {
    FakeApplication safari(folder.path(), "Safari", "APPLsfri");
    safari.process().killWithoutWaiting();
    EXPECT_FALSE(find(safari.pid()));
}

TEST_F(ProcessManagerTest, OneThatBecameAnotherProgramSinceTheLookIsNotSignalled) {
    const std::string other = makeBundle(folder / "other", "Other", "APPLothr");
    FakeApplication safari(folder.path(), "Safari", "APPLsfri", other);
    const auto process = find(safari.pid());
    ASSERT_TRUE(process);
    safari.becomeOther();
    ProcessInfoRec information;
    EXPECT_EQ(processes->GetProcessInformation(*process, information), procNotFound);
    EXPECT_EQ(processes->SendQuit(*process), procNotFound);
    EXPECT_TRUE(safari.isRunning());
    EXPECT_EQ(processes->GetProcessInformation(find(safari.pid()).value(), information), noErr);
    EXPECT_EQ(information.processSignature, fourCharCode("othr"));
}

TEST_F(ProcessManagerTest, AnotherUsersApplicationIsNotSeen) {
    if (geteuid() != 0) {
        std::cout << "Not run: only root can start a process as another user.\n";
        return;
    }
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
    const FakeApplication theirs(folder.path(), "Safari", "APPLsfri", {},
                                 {"setpriv", "--reuid", "65534", "--clear-groups"});
    EXPECT_FALSE(find(theirs.pid()));
    EXPECT_TRUE(theirs.isRunning());
}

TEST_F(ProcessManagerTest, AnInnerBundleSpeaksForItsOwnProcess) {
    const FakeApplication helper(folder / "Safari.app/Contents/Helpers", "Helper", "appehelp");
    writeFile(folder / "Safari.app/Contents/PkgInfo", "APPLsfri");
    ProcessInfoRec information;
    processes->GetProcessInformation(find(helper.pid()).value(), information);
    EXPECT_EQ(information.processSignature, fourCharCode("help"));
}

TEST_F(ProcessManagerTest, ABundleThatSaysNothingIsOfUnknownKind) {
    const FakeApplication silent(folder.path(), "Safari", "");
    ProcessInfoRec information;
    EXPECT_EQ(processes->GetProcessInformation(find(silent.pid()).value(), information), noErr);
    EXPECT_EQ(information.processType, fourCharCode("\?\?\?\?"));
    EXPECT_EQ(information.processSignature, fourCharCode("\?\?\?\?"));
}

TEST_F(ProcessManagerTest, AWalkEndsWithAnErrorAndLeavesTheNumberAlone) {
    ProcessSerialNumber unknown{7, 0};
    EXPECT_EQ(processes->GetNextProcess(unknown), procNotFound);
    EXPECT_EQ(unknown, (ProcessSerialNumber{7, 0}));
    ProcessInfoRec information;
    EXPECT_EQ(processes->GetProcessInformation(unknown, information), procNotFound);
    EXPECT_EQ(processes->SendQuit(unknown), procNotFound);
}

}  // namespace
}  // namespace dorvanel::test
