// SPDX-License-Identifier: MIT
#include "platform/LockProbe.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <csignal>
#include <filesystem>
#include <functional>
#include <iostream>
#include <stdexcept>

#include "platform/linux/LockLink.h"
#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

using namespace platform;
namespace fs = std::filesystem;

/// A process that holds a record lock on a file.
class LockHolder {
  public:
    LockHolder(const std::string& path, short type, off_t start = 0, off_t length = 0) {
        std::array<int, 2> ends{};
        if (pipe(ends.data()) != 0) throw std::runtime_error("pipe");
        pid_ = fork();
        if (pid_ == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            struct flock lock {};
            lock.l_type = type;
            lock.l_whence = SEEK_SET;
            lock.l_start = start;
            lock.l_len = length;
            const int file = open(path.c_str(), O_RDWR);
            if (fcntl(file, F_SETLK, &lock) != 0 || write(ends[1], "y", 1) != 1) _exit(1);
            while (true) pause();
        }
        close(ends[1]);
        char answer = 0;
        const bool holds = read(ends[0], &answer, 1) == 1;
        close(ends[0]);
        if (!holds) throw std::runtime_error("no lock on " + path);
    }
    ~LockHolder() {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
    LockHolder(const LockHolder&) = delete;
    LockHolder& operator=(const LockHolder&) = delete;

  private:
    pid_t pid_ = -1;
};

std::string thisHost() {
    std::array<char, HOST_NAME_MAX + 1> name{};
    EXPECT_EQ(gethostname(name.data(), name.size() - 1), 0);
    return name.data();
}

class LockProbeTest : public ::testing::Test {
  protected:
    LockState stateOfLink(const std::string& text) {
        fs::remove(lock);
        fs::create_symlink(text, lock);
        return probe->stateOf(lock);
    }
    /// The number of a process that has ended and was waited for.
    static pid_t numberOfTheDead() {
        ChildProcess ended({"true"});
        const pid_t pid = ended.pid();
        ended.waitForEnd();
        return pid;
    }

    TemporaryFolder folder;
    std::string lock = folder / "lock";
    std::unique_ptr<LockProbe> probe = makeLockProbe();
};

TEST_F(LockProbeTest, AFileThatAnotherProcessLocksIsHeldUntilItEnds) {
    writeFile(lock);
    {
        const LockHolder holder(lock, F_WRLCK);
        EXPECT_EQ(probe->stateOf(lock), LockState::held);
    }
    EXPECT_EQ(probe->stateOf(lock), LockState::free);
}

TEST_F(LockProbeTest, ALockThatIsSharedOrOnAPartIsHeldToo) {
    writeFile(lock, "contents");
    {
        const LockHolder holder(lock, F_RDLCK);
        EXPECT_EQ(probe->stateOf(lock), LockState::held);
    }
    const LockHolder holder(lock, F_WRLCK, 1'073'741'824, 1);
    EXPECT_EQ(probe->stateOf(lock), LockState::held);
}

TEST_F(LockProbeTest, LookingTakesNoLockAndWritesNothing) {
    writeFile(lock, "contents");
    const auto before = fs::last_write_time(lock);
    EXPECT_EQ(probe->stateOf(lock), LockState::free);
    const LockHolder holder(lock, F_WRLCK);
    EXPECT_EQ(readFile(lock), "contents");
    EXPECT_EQ(fs::last_write_time(lock), before);
}

TEST_F(LockProbeTest, APlainFileThatNobodyLocksIsLeftOver) {
    writeFile(lock, "12345");
    EXPECT_EQ(probe->stateOf(lock), LockState::free);
}

TEST_F(LockProbeTest, WhatIsNotThereIsNotHeld) {
    EXPECT_EQ(probe->stateOf(lock), LockState::free);
    EXPECT_EQ(probe->stateOf(folder / "none/lock"), LockState::free);
    writeFile(lock);
    EXPECT_EQ(probe->stateOf(lock + "/lock"), LockState::free);
}

TEST_F(LockProbeTest, WhatIsNoFileIsNeverOpened) {
    ASSERT_EQ(mkfifo(lock.c_str(), 0600), 0);
    EXPECT_EQ(probe->stateOf(lock), LockState::free);
    EXPECT_EQ(probe->stateOf(folder.path()), LockState::free);
    const std::string socketName = folder / "socket";
    const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(socketName.size(), sizeof address.sun_path);
    socketName.copy(address.sun_path, socketName.size());
    ASSERT_EQ(bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(probe->stateOf(socketName), LockState::free);
    close(descriptor);
}

TEST_F(LockProbeTest, ALinkThatNamesALivingProcessOfThisMachineIsHeld) {
    const ChildProcess other({"sleep", "300"});
    const std::string number = std::to_string(other.pid());
    EXPECT_EQ(stateOfLink(thisHost() + "-" + number), LockState::held);
    EXPECT_EQ(stateOfLink("127.0.1.1:+" + number), LockState::held);
    EXPECT_EQ(stateOfLink("127.0.1.1:" + number), LockState::held);
}

TEST_F(LockProbeTest, ALinkThatNamesAProcessThatHasGoneIsLeftOver) {
    const std::string number = std::to_string(numberOfTheDead());
    EXPECT_EQ(stateOfLink(thisHost() + "-" + number), LockState::free);
    EXPECT_EQ(stateOfLink("127.0.1.1:+" + number), LockState::free);
}

TEST_F(LockProbeTest, OneThatHasEndedButWasNotWaitedForHoldsNothing) {
    ChildProcess other({"sleep", "300"});
    other.killWithoutWaiting();
    EXPECT_EQ(stateOfLink(thisHost() + "-" + std::to_string(other.pid())), LockState::free);
}

TEST_F(LockProbeTest, AnAddressIsNotComparedWithThisMachines) {
    EXPECT_EQ(stateOfLink("203.0.113.7:+" + std::to_string(numberOfTheDead())), LockState::free);
}

TEST_F(LockProbeTest, OfAnotherMachinesProcessesNothingIsKnown) {
    const std::string number = std::to_string(numberOfTheDead());
    EXPECT_EQ(stateOfLink(thisHost() + "x-" + number), LockState::unknown);
    EXPECT_EQ(stateOfLink("other-" + thisHost() + "-" + number), LockState::unknown);
}

TEST_F(LockProbeTest, ALinkThatSaysSomethingElseIsNotUnderstood) {
    for (const char* text : {"elsewhere", "host-", "host-12x", "host-0", "-12", "host--1x",
                             "host-99999999999999999999", "10.0.0.1:+", "10.0.0.1:+-3", "/a-b/1"}) {
        EXPECT_EQ(stateOfLink(text), LockState::unknown) << text;
    }
}

TEST_F(LockProbeTest, AHostMayHaveDashesInItsName) {
    const auto link = readLockLink("my-own-host-42");
    ASSERT_TRUE(link);
    EXPECT_EQ(link->host, "my-own-host");
    EXPECT_EQ(link->process, 42);
}

TEST_F(LockProbeTest, ALinkIsNotFollowedToWhatIsLocked) {
    const std::string file = folder / "file";
    writeFile(file);
    const LockHolder holder(file, F_WRLCK);
    EXPECT_EQ(stateOfLink(thisHost() + "-" + std::to_string(numberOfTheDead())), LockState::free);
}

TEST_F(LockProbeTest, OfALockThatCannotBeExaminedNothingIsKnown) {
    writeFile(lock);
    fs::permissions(lock, fs::perms::none);
    const std::string inner = folder / "inner/lock";
    writeFile(inner);
    fs::permissions(folder.path(), fs::perms(0755));
    fs::permissions(folder / "inner", fs::perms::none);
    const auto look = [&] {
        if (probe->stateOf(lock) != LockState::unknown) return 2;
        return probe->stateOf(inner) == LockState::unknown ? 0 : 3;
    };
    const pid_t child = fork();
    if (child == 0) _exit(geteuid() == 0 && setuid(65534) != 0 ? 4 : look());
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    fs::permissions(folder / "inner", fs::perms::owner_all);
}

}  // namespace
}  // namespace dorvanel::test
