// SPDX-License-Identifier: MIT
#include "platform/ProgramListing.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <iostream>

#include "platform/linux/ProcessFolder.h"
#include "support/FakeApplication.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

using namespace platform;
namespace fs = std::filesystem;

constexpr uid_t nobody = 65534;

/// Has the shell stop once it is set up: nothing but SIGKILL gets it any further.
const std::string sayReadyAndStay = "echo ready; kill -STOP $$";

std::optional<RunningProgram> find(ProgramListing& listing, pid_t pid) {
    const auto programs = listing.list();
    EXPECT_TRUE(programs);
    if (!programs) return std::nullopt;
    for (const RunningProgram& program : *programs) {
        if (program.process.pid == pid) return program;
    }
    return std::nullopt;
}

class ProgramListingTest : public ::testing::Test {
  protected:
    std::optional<RunningProgram> find(pid_t pid) { return test::find(*listing, pid); }

    TemporaryFolder folder;
    std::unique_ptr<ProgramListing> listing = makeProgramListing();
};

TEST_F(ProgramListingTest, AProcessIsToldByTheProgramThatItExecutes) {
    const FakeApplication firefox(folder.path(), "firefox", "");
    const auto program = find(firefox.pid());
    ASSERT_TRUE(program);
    EXPECT_EQ(program->executable, firefox.executable());
    EXPECT_EQ(program->comm, "firefox");
    EXPECT_EQ(program->parent, getpid());
    EXPECT_EQ(program->process.started, ProcessFolder(firefox.pid()).startTime());
    EXPECT_EQ(program->script, "");
    EXPECT_EQ(program->flatpak, "");
    EXPECT_EQ(program->snap, "");
}

TEST_F(ProgramListingTest, ThatAProgramWasDeletedDoesNotShow) {
    const FakeApplication firefox(folder.path(), "firefox", "");
    fs::remove(firefox.executable());
    EXPECT_EQ(find(firefox.pid()).value().executable, firefox.executable());
}

TEST_F(ProgramListingTest, WhatACommandLineSaysDoesNotShow) {
    ChildProcess named(
        {"bash", "-c", "exec -a /usr/bin/firefox bash -c '" + sayReadyAndStay + "'"});
    ASSERT_EQ(named.readLine(), "ready");
    ChildProcess argument({"bash", "-c", sayReadyAndStay, "firefox", "/usr/bin/firefox"});
    ASSERT_EQ(argument.readLine(), "ready");
    for (const ChildProcess* process : {&named, &argument}) {
        const RunningProgram program = find(process->pid()).value();
        EXPECT_EQ(fs::path(program.executable).filename(), "bash");
        EXPECT_EQ(program.script, "");
    }
}

TEST_F(ProgramListingTest, AScriptOfTheShellIsTheShell) {
    const std::string script = folder / "firefox";
    writeFile(script, "#!/bin/sh\n" + sayReadyAndStay + "\n");
    fs::permissions(script, fs::perms::owner_all);
    ChildProcess process({script});
    ASSERT_EQ(process.readLine(), "ready");
    const RunningProgram program = find(process.pid()).value();
    EXPECT_EQ(program.executable, fs::canonical("/bin/sh"));
    EXPECT_EQ(program.script, "");
}

TEST_F(ProgramListingTest, OneThatBecameAnotherProgramIsThatOne) {
    const std::string other = makeBundle(folder / "other", "other", "");
    FakeApplication firefox(folder.path(), "firefox", "", other);
    const RunningProgram before = find(firefox.pid()).value();
    firefox.becomeOther();
    const RunningProgram after = find(firefox.pid()).value();
    EXPECT_EQ(after.executable, other);
    EXPECT_EQ(after.process, before.process);
    EXPECT_FALSE(listing->askToQuit(before));
    EXPECT_TRUE(firefox.isRunning());
}

TEST_F(ProgramListingTest, OneThatHasEndedButWasNotWaitedForDoesNotRun) {
    const FakeApplication firefox(folder.path(), "firefox", "");
    const RunningProgram before = find(firefox.pid()).value();
    kill(firefox.pid(), SIGKILL);
    while (firefox.isRunning()) {
    }
    EXPECT_FALSE(find(firefox.pid()));
    EXPECT_FALSE(listing->askToQuit(before));
}

TEST_F(ProgramListingTest, OneWhoseFirstThreadHasEndedRuns) {
    const FakeApplication firefox(folder.path(), "firefox", "", "thread");
    while (!ProcessFolder(firefox.pid()).executablePath().empty()) {
    }
    const auto program = find(firefox.pid());
    ASSERT_TRUE(program);
    EXPECT_EQ(program->executable, "");
    EXPECT_EQ(program->comm, "firefox");
}

TEST_F(ProgramListingTest, AChildOutlivesItsParent) {
    FakeApplication firefox(folder.path(), "firefox", "", "parent");
    const pid_t child = std::stoi(firefox.process().readLine());
    EXPECT_EQ(find(child).value().parent, firefox.pid());
    kill(firefox.pid(), SIGKILL);
    firefox.process().waitForEnd();
    const auto program = find(child);
    EXPECT_TRUE(program);
    EXPECT_TRUE(program && listing->askToQuit(*program));
}

TEST_F(ProgramListingTest, TheCallerItselfIsNeitherListedNorAsked) {
    EXPECT_FALSE(find(getpid()));
    RunningProgram self;
    self.process = {getpid(), ProcessFolder(getpid()).startTime().value()};
    self.executable = fs::canonical("/proc/self/exe");
    EXPECT_FALSE(listing->askToQuit(self));
}

TEST_F(ProgramListingTest, TheThreadsOfTheKernelAreNoPrograms) {
    const auto programs = listing->list();
    ASSERT_TRUE(programs);
    for (const RunningProgram& program : *programs) EXPECT_NE(program.process.pid, 2);
}

TEST_F(ProgramListingTest, AskingSendsTheTerminationSignalAndDoesNotWait) {
    FakeApplication firefox(folder.path(), "firefox", "");
    EXPECT_TRUE(listing->askToQuit(find(firefox.pid()).value()));
    EXPECT_EQ(firefox.process().waitForEnd(), 128 + SIGTERM);
}

TEST_F(ProgramListingTest, AnotherProcessOfTheSameNumberIsNotAsked) {
    const FakeApplication firefox(folder.path(), "firefox", "");
    RunningProgram former = find(firefox.pid()).value();
    --former.process.started;
    EXPECT_FALSE(listing->askToQuit(former));
    EXPECT_TRUE(firefox.isRunning());
}

TEST_F(ProgramListingTest, AScriptOfPythonIsNamed) {
    const std::string script = folder / "qutebrowser";
    writeFile(script, "import signal\nprint('ready', flush=True)\nsignal.pause()\n");
    ChildProcess process({"python3", "-E", script, "firefox"});
    ASSERT_EQ(process.readLine(), "ready");
    EXPECT_EQ(find(process.pid()).value().script, "qutebrowser");
    fs::remove(script);
    EXPECT_EQ(find(process.pid()).value().script, "");
}

TEST_F(ProgramListingTest, WhatPythonReadsFromTheCommandLineHasNoName) {
    ChildProcess process({"python3", "-c",
                          "import signal\nprint('ready', flush=True)\nsignal.pause()",
                          folder / "qutebrowser"});
    ASSERT_EQ(process.readLine(), "ready");
    EXPECT_EQ(find(process.pid()).value().script, "");
}

TEST_F(ProgramListingTest, AnotherUsersProgramIsNotListed) {
    if (geteuid() != 0) GTEST_SKIP() << "not run: only root can start a process as another user";
    fs::permissions(folder.path(), fs::perms(0755));
    const FakeApplication theirs(folder.path(), "firefox", "", {},
                                 {"setpriv", "--reuid", "65534", "--clear-groups"});
    EXPECT_FALSE(find(theirs.pid()));
    EXPECT_TRUE(theirs.isRunning());
}

TEST_F(ProgramListingTest, OneThatKeepsItsProgramToItselfIsListedByItsShortName) {
    fs::permissions(folder.path(), fs::perms(0755));
    std::vector<std::string> launcher;
    if (geteuid() == 0) launcher = {"setpriv", "--reuid", "65534", "--clear-groups"};
    const FakeApplication hidden(folder.path(), "firefox-of-many-letters", "", "hidden", launcher);
    const pid_t child = fork();
    if (child == 0) {
        if (geteuid() == 0 && setuid(nobody) != 0) _exit(2);
        const auto program = test::find(*listing, hidden.pid());
        if (!program) _exit(3);
        if (!program->executable.empty()) _exit(4);
        _exit(program->comm == "firefox-of-many" ? 0 : 5);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

/// A command line as the system keeps it.
std::string words(const std::vector<std::string>& arguments) {
    std::string line;
    for (const std::string& argument : arguments) line += argument + '\0';
    return line;
}

/// A folder that looks like /proc, for what cannot be had by starting a program.
class MadeProcessFolderTest : public ::testing::Test {
  protected:
    struct Made {
        uid_t user = getuid();
        std::string comm = "firefox";
        char state = 'S';
        unsigned long flags = 0x400000;
        int threads = 1;
        std::string executable = "/usr/lib/firefox/firefox";  ///< "": none
        std::string groups = "0::/user.slice\n";
        std::string arguments = {};
        std::string mounts = "mnt:[1]";
    };

    MadeProcessFolderTest() { make(getpid(), Made{}); }

    [[nodiscard]] std::string at(pid_t pid, const std::string& name) const {
        return proc / (std::to_string(pid) + "/" + name);
    }
    void make(pid_t pid, const Made& made) const {
        const std::string user = std::to_string(made.user);
        writeFile(at(pid, "status"), "Name:\t" + made.comm + "\nUid:\t" + user + "\t0\t0\t0\n");
        writeFile(at(pid, "stat"), std::to_string(pid) + " (" + made.comm + ") " + made.state +
                                       " 1 2 3 4 5 " + std::to_string(made.flags) +
                                       " 0 0 0 0 0 0 0 0 20 0 " + std::to_string(made.threads) +
                                       " 0 4711 0\n");
        if (!made.executable.empty()) fs::create_symlink(made.executable, at(pid, "exe"));
        writeFile(at(pid, "cgroup"), made.groups);
        writeFile(at(pid, "cmdline"), made.arguments);
        fs::create_directories(at(pid, "ns"));
        fs::create_symlink(made.mounts, at(pid, "ns/mnt"));
    }
    [[nodiscard]] std::optional<std::vector<RunningProgram>> list() const {
        return makeProgramListing(proc.path())->list();
    }
    [[nodiscard]] RunningProgram onlyOne() const {
        const auto programs = list();
        EXPECT_EQ(programs ? programs->size() : 0, 1U);
        return programs && programs->size() == 1 ? programs->front() : RunningProgram{};
    }
    [[nodiscard]] bool isEmpty() const {
        const auto programs = list();
        return programs && programs->empty();
    }

    TemporaryFolder proc;
};

constexpr pid_t other = 999'999'999;  // beyond every number that the system gives

TEST_F(MadeProcessFolderTest, WhatThereIsToKnowIsRead) {
    make(other, {.comm = "a) S (b"});
    const RunningProgram program = onlyOne();
    EXPECT_EQ(program.process, (ProcessIdentity{other, 4711}));
    EXPECT_EQ(program.parent, 1);
    EXPECT_EQ(program.comm, "a) S (b");
    EXPECT_EQ(program.executable, "/usr/lib/firefox/firefox");
}

TEST_F(MadeProcessFolderTest, WhatIsNoNumberIsNoProcess) {
    writeFile(proc / "meminfo");
    writeFile(proc / "12x/status", "nothing");
    EXPECT_TRUE(isEmpty());
}

TEST_F(MadeProcessFolderTest, ZombiesThreadsOfTheKernelAndOtherUsersDoNotCount) {
    make(other, {.state = 'Z'});
    make(other + 1, {.flags = 0x200040, .executable = {}});
    make(other + 2, {.user = getuid() + 1});
    make(other + 3, {.state = 'X'});
    make(other + 4, {.executable = {}});
    EXPECT_TRUE(isEmpty());
}

TEST_F(MadeProcessFolderTest, AProcessWithThreadsOutlivesItsFirstOne) {
    make(other, {.state = 'Z', .threads = 2, .executable = {}});
    EXPECT_EQ(onlyOne().comm, "firefox");
}

TEST_F(MadeProcessFolderTest, OneThatVanishesMeanwhileDoesNotSpoilTheList) {
    make(other, {});
    fs::create_directories(proc / "12345");
    make(other + 1, {});
    fs::remove(at(other + 1, "stat"));
    EXPECT_EQ(onlyOne().process.pid, other);
}

TEST_F(MadeProcessFolderTest, AControlGroupNamesTheSandbox) {
    make(other, {.groups = "0::/a/app-flatpak-org.mozilla.firefox-12.scope\n"});
    EXPECT_EQ(onlyOne().flatpak, "org.mozilla.firefox");
    fs::remove_all(proc / std::to_string(other));
    make(other, {.groups = "0::/a/snap.firefox.firefox-12.scope\n"});
    EXPECT_EQ(onlyOne().snap, "firefox");
    EXPECT_EQ(onlyOne().flatpak, "");
}

TEST_F(MadeProcessFolderTest, ASnapIsNamedByWhereItsProgramLies) {
    make(other, {.executable = "/snap/firefox/12/usr/lib/firefox/firefox (deleted)"});
    EXPECT_EQ(onlyOne().snap, "firefox");
    EXPECT_EQ(onlyOne().executable, "/snap/firefox/12/usr/lib/firefox/firefox");
}

TEST_F(MadeProcessFolderTest, TheFileInASandboxNamesIt) {
    make(other, {.mounts = "mnt:[2]"});
    writeFile(at(other, "root/.flatpak-info"), "[Application]\nname=org.mozilla.firefox\n");
    EXPECT_EQ(onlyOne().flatpak, "org.mozilla.firefox");
}

TEST_F(MadeProcessFolderTest, WhoeverSeesOurMountsIsInNoSandbox) {
    make(other, {});
    writeFile(at(other, "root/.flatpak-info"), "[Application]\nname=org.mozilla.firefox\n");
    EXPECT_EQ(onlyOne().flatpak, "");
}

TEST_F(MadeProcessFolderTest, ALinkInASandboxLeadsNowhere) {
    make(other, {.mounts = "mnt:[2]"});
    writeFile(proc / "elsewhere", "[Application]\nname=org.mozilla.firefox\n");
    fs::create_directories(at(other, "root"));
    fs::create_symlink(proc / "elsewhere", at(other, "root/.flatpak-info"));
    EXPECT_EQ(onlyOne().flatpak, "");
}

TEST_F(MadeProcessFolderTest, AScriptIsFoundFromTheFolderThatTheProcessStandsIn) {
    make(other,
         {.executable = "/usr/bin/python3.11", .arguments = words({"python3", "bin/qutebrowser"})});
    EXPECT_EQ(onlyOne().script, "");
    writeFile(at(other, "cwd/bin/qutebrowser"));
    EXPECT_EQ(onlyOne().script, "qutebrowser");
}

TEST_F(MadeProcessFolderTest, AFolderIsNoScript) {
    make(other, {.executable = "/usr/bin/python3.11",
                 .arguments = words({"python3", "/opt/qutebrowser"})});
    fs::create_directories(at(other, "root/opt/qutebrowser"));
    EXPECT_EQ(onlyOne().script, "");
}

TEST_F(MadeProcessFolderTest, AModuleIsNamedByItsLastPart) {
    make(other, {.executable = "/usr/bin/python3",
                 .arguments = words({"python3", "-m", "apps.qutebrowser"})});
    EXPECT_EQ(onlyOne().script, "qutebrowser");
}

TEST_F(MadeProcessFolderTest, OnlyPythonHasScripts) {
    make(other, {.executable = "/usr/bin/perl", .arguments = words({"perl", "-m", "qutebrowser"})});
    EXPECT_EQ(onlyOne().script, "");
}

TEST_F(MadeProcessFolderTest, WithoutTheCallerInItNothingIsKnown) {
    make(other, {});
    EXPECT_TRUE(list());
    fs::remove_all(proc / std::to_string(getpid()));
    EXPECT_FALSE(list());
}

TEST_F(MadeProcessFolderTest, WithoutTheFolderNothingIsKnown) {
    EXPECT_FALSE(makeProgramListing(proc / "none")->list());
    EXPECT_FALSE(makeProgramListing({})->list());
}

TEST_F(MadeProcessFolderTest, AProcessThatCannotBeReadThoughItIsThereMeansThatNothingIsKnown) {
    make(other, {});
    fs::remove(at(other, "status"));
    fs::create_directories(at(other, "status"));
    EXPECT_FALSE(list());
}

TEST_F(MadeProcessFolderTest, AProcessThatIsNotUnderstoodMeansThatNothingIsKnown) {
    make(other, {});
    writeFile(at(other, "stat"), "12 (firefox) S 1");
    EXPECT_FALSE(list());
    writeFile(at(other, "stat"), "");
    EXPECT_FALSE(list());
    fs::remove_all(proc / std::to_string(other));
    EXPECT_TRUE(isEmpty());
    make(other, {});
    writeFile(at(other, "status"), "Name:\tfirefox\n");
    EXPECT_FALSE(list());
}

TEST_F(MadeProcessFolderTest, ABrokenLinkToTheProgramIsNoVanishedProcess) {
    make(other, {});
    fs::remove(at(other, "exe"));
    writeFile(at(other, "exe"), "no link");
    EXPECT_FALSE(list());
}

}  // namespace
}  // namespace dorvanel::test
