// SPDX-License-Identifier: MIT
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <functional>

#include "prefs/DefaultsFixture.h"
#include "prefs/FaultyCalls.h"

namespace dorvanel::test {
namespace {

using Fault = FaultyCalls::Fault;
using Strings = std::vector<std::string>;

class DefaultsFaultsTest : public DefaultsFixture {
  protected:
    DefaultsFaultsTest() { store("{'NumberOfWrites': 3, 'Other': 'kept'}"); }
    ~DefaultsFaultsTest() override { faultyCalls.stop(); }

    std::string oldList = "{'NumberOfWrites': 3, 'Other': 'kept'}";
    std::string newList = "{'Other': 'kept', 'NumberOfWrites': 4}";

    /// Runs `body` in a process of its own, which may be killed meanwhile; how it ended.
    static int inChild(const std::function<void()>& body) {
        const pid_t child = fork();
        if (child == 0) {
            body();
            _exit(0);
        }
        int status = -1;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        return status;
    }
    [[nodiscard]] bool isOldOrNew() {
        const std::string list = stored("dict(sorted(d.items()))");
        return list == oldList || list == "{'NumberOfWrites': 4, 'Other': 'kept'}";
    }
};

TEST_F(DefaultsFaultsTest, TheNewFileIsFlushedBeforeItIsRenamedAndTheFolderAfterwards) {
    const auto defaults = open();
    defaults->setInteger(4, "NumberOfWrites");
    faultyCalls.start();
    ASSERT_TRUE(defaults->synchronize());
    faultyCalls.stop();
    EXPECT_EQ(faultyCalls.calls,
              (Strings{"open folder", "lock", "open", "create", "change mode", "write", "flush",
                       "rename", "open folder", "flush folder"}));
}

TEST_F(DefaultsFaultsTest, ACallThatFailsLeavesTheOldFileWholeAndTheChangesInMemory) {
    constexpr int callsBeforeTheFolderIsFlushed = 8;
    for (const int error : {EIO, ENOSPC, EACCES, EROFS}) {
        for (int at = 1; at <= callsBeforeTheFolderIsFlushed; ++at) {
            SCOPED_TRACE("call " + std::to_string(at) + ", error " + std::to_string(error));
            store(oldList);
            const auto defaults = open();
            defaults->setInteger(4, "NumberOfWrites");
            faultyCalls.start(Fault::fail, at, error);
            const auto saved = defaults->synchronize();
            faultyCalls.stop();
            ASSERT_FALSE(saved);
            EXPECT_EQ(saved.error().code, error);
            EXPECT_FALSE(saved.error().path.empty());
            EXPECT_EQ(stored(), oldList);
            EXPECT_EQ(names(), Strings{name});
            EXPECT_EQ(defaults->integerForKey("NumberOfWrites"), 4);

            ASSERT_TRUE(defaults->synchronize());
            EXPECT_EQ(stored("d['NumberOfWrites']"), "4");
        }
    }
    EXPECT_EQ(reports, Strings{});
}

TEST_F(DefaultsFaultsTest, AFolderThatCannotBeFlushedIsReportedWithTheNewFileInPlace) {
    for (int at = 9; at <= 10; ++at) {
        store(oldList);
        const auto defaults = open();
        defaults->setInteger(4, "NumberOfWrites");
        faultyCalls.start(Fault::fail, at, EIO);
        EXPECT_FALSE(defaults->synchronize());
        faultyCalls.stop();
        EXPECT_EQ(stored("d['NumberOfWrites']"), "4");
        EXPECT_TRUE(defaults->synchronize());
    }
}

TEST_F(DefaultsFaultsTest, AnInterruptedCallIsRepeated) {
    for (const int at : {2, 6}) {
        store(oldList);
        const auto defaults = open();
        defaults->setInteger(4, "NumberOfWrites");
        faultyCalls.start(Fault::fail, at, EINTR);
        EXPECT_TRUE(defaults->synchronize());
        faultyCalls.stop();
        EXPECT_EQ(stored("d['NumberOfWrites']"), "4");
    }
}

TEST_F(DefaultsFaultsTest, AShortWriteIsContinued) {
    const auto defaults = open();
    defaults->setInteger(4, "NumberOfWrites");
    faultyCalls.start(Fault::shortWrite, 6);
    ASSERT_TRUE(defaults->synchronize());
    faultyCalls.stop();
    EXPECT_EQ(std::count(faultyCalls.calls.begin(), faultyCalls.calls.end(), "write"), 2);
    EXPECT_EQ(stored("d['NumberOfWrites']"), "4");
}

TEST_F(DefaultsFaultsTest, AFileSystemWithoutLocksIsNoReasonNotToSave) {
    for (const int error : {EBADF, ENOLCK, EOPNOTSUPP}) {
        store(oldList);
        const auto defaults = open();
        defaults->setInteger(4, "NumberOfWrites");
        faultyCalls.start(Fault::fail, 2, error);
        EXPECT_TRUE(defaults->synchronize());
        faultyCalls.stop();
        EXPECT_EQ(stored("d['NumberOfWrites']"), "4");
        EXPECT_EQ(names(), Strings{name});
    }
}

TEST_F(DefaultsFaultsTest, AFullDiskLeavesTheOldFileWhole) {
    const int status = inChild([this] {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{100, 100};  // bytes: less than any property list
        const auto defaults = open();
        defaults->setInteger(4, "NumberOfWrites");
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0) _exit(2);
        const auto saved = defaults->synchronize();
        if (saved.ok()) _exit(3);
        if (saved.error().operation != "write") _exit(4);
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(stored(), oldList);
    EXPECT_EQ(names(), Strings{name});
}

TEST_F(DefaultsFaultsTest, AKillAtAnyCallLeavesTheOldOrTheNewFileWhole) {
    int at = 1;
    for (; at <= 100; ++at) {
        SCOPED_TRACE("call " + std::to_string(at));
        store(oldList);
        const int status = inChild([this, at] {
            const auto defaults = open();
            defaults->setInteger(4, "NumberOfWrites");
            faultyCalls.start(Fault::kill, at);
            if (!defaults->synchronize()) _exit(2);
        });
        EXPECT_TRUE(isOldOrNew());
        if (status == 0) break;  // no call is left to be killed at
        ASSERT_TRUE(WIFSIGNALED(status));
        EXPECT_EQ(WTERMSIG(status), SIGKILL);

        // The lock is free, and what the killed process left behind goes with the next save.
        const auto defaults = open();
        EXPECT_EQ(reports, Strings{});
        EXPECT_TRUE(defaults->hasObjectForKey("NumberOfWrites"));
        defaults->setInteger(5, "NumberOfWrites");
        ASSERT_TRUE(defaults->synchronize());
        EXPECT_EQ(stored("d['NumberOfWrites']"), "5");
        EXPECT_EQ(names(), Strings{name});
    }
    EXPECT_EQ(at, 11) << "every call was the last one once";
}

TEST_F(DefaultsFaultsTest, AKillWhileSavingAgainAndAgainLeavesAWholeFile) {
    for (int round = 0; round < 40; ++round) {
        const pid_t child = fork();
        if (child == 0) {
            const auto defaults = open();
            for (int i = 0;; ++i) {
                defaults->setInteger(i, "NumberOfWrites");
                if (!defaults->synchronize()) _exit(2);
            }
        }
        // Any number of saves later: as many as this process needs to read the file so often.
        for (int i = 0; i < round * 50; ++i) {
            ASSERT_TRUE(readFile(path()).ends_with("</plist>\n"));
        }
        kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status));
        EXPECT_TRUE(open()->hasObjectForKey("Other"));
        EXPECT_EQ(reports, Strings{});
    }
    EXPECT_EQ(stored("d['Other']"), "'kept'");
}

TEST_F(DefaultsFaultsTest, ProcessesThatSaveAtTheSameTimeLoseNothing) {
    constexpr int processes = 4;
    constexpr int keys = 20;
    std::vector<pid_t> children;
    for (int process = 0; process < processes; ++process) {
        const pid_t child = fork();
        if (child == 0) {
            const auto defaults = open();
            for (int key = 0; key < keys; ++key) {
                defaults->setInteger(key, std::to_string(process) + "-" + std::to_string(key));
                if (!defaults->synchronize()) _exit(2);
            }
            _exit(0);
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        int status = -1;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(stored("len(d)"), std::to_string(processes * keys + 2));
    EXPECT_EQ(names(), Strings{name});
}

}  // namespace
}  // namespace dorvanel::test
