// SPDX-License-Identifier: MIT

// Files that others hold, that cannot be opened, or that somebody swaps while they wait.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <iostream>

#include "support/Disk.h"
#include "support/EngineFixture.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class OddFilesTest : public EngineFixture {
  protected:
    TemporaryFolder outside;
};

/// Gives the lease up when the kernel asks for it.
int leased = -1;
void giveUp(int) {
    fcntl(leased, F_SETLEASE, F_UNLCK);
}

/// A process that holds a write lease on the file, and gives it up when it is asked to.
class Leaseholder {
  public:
    explicit Leaseholder(const std::string& path) {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0) return;
        child_ = fork();
        if (child_ == 0) {
            signal(SIGIO, giveUp);
            leased = open(path.c_str(), O_RDWR | O_CLOEXEC);
            const char held = fcntl(leased, F_SETLEASE, F_WRLCK) == 0 ? 'y' : 'n';
            if (write(ends[1], &held, 1) != 1) _exit(1);
            for (;;) pause();
        }
        ::close(ends[1]);
        char held = 'n';
        holds = read(ends[0], &held, 1) == 1 && held == 'y';
        ::close(ends[0]);
    }
    ~Leaseholder() {
        kill(child_, SIGKILL);
        waitpid(child_, nullptr, 0);
    }
    Leaseholder(const Leaseholder&) = delete;
    Leaseholder& operator=(const Leaseholder&) = delete;

    bool holds = false;

  private:
    pid_t child_ = -1;
};

TEST_F(OddFilesTest, AFileUnderALeaseIsOverwrittenOnceItIsGivenUp) {
    writeFile(folder / "item", recognisable(1000));
    hardLink(folder / "item", outside / "same");
    const Leaseholder holder(folder / "item");
    if (!holder.holds) {
        std::cout << "not run: no lease is granted here\n";
        return;
    }
    // The real waiting: the holder needs a moment.
    FileAccess engine({*real, clock, draws}, preferences, shreddingProgress, fileName);
    std::vector<std::string> items{folder / "item"};
    engine.shredDroppedFile(items);
    EXPECT_EQ(engine.outcome().filesOverwritten, 1U);
    EXPECT_THAT(engine.outcome().troubles, IsEmpty());
    EXPECT_EQ(readFile(outside / "same").find("Secret"), std::string::npos);
}

TEST_F(OddFilesTest, ALeaseIsWaitedForAsLongAsTheSystemTakes) {
    writeFile(folder / "item", "x");
    faulty.failAlways("openFile", EAGAIN);
    faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation == "pause" && faulty.pauses == 2000) faulty.reset();  // 40 seconds
    };
    const Outcome& outcome = shred({folder / "item"});
    EXPECT_EQ(outcome.filesOverwritten, 1U);
    EXPECT_EQ(faulty.pauses, 2000);
}

TEST_F(OddFilesTest, AFileThatNeverCanBeOpenedForALeaseStaysAndIsTold) {
    writeFile(folder / "item", "kept");
    hardLink(folder / "item", outside / "same");
    faulty.failAlways("openFile", EAGAIN);
    const Outcome& outcome = shred({folder / "item"});
    EXPECT_EQ(outcome.filesRemoved, 0U);
    EXPECT_GT(outcome.notRemoved, 0U);
    EXPECT_EQ(outcome.troubles.at(0).code, EAGAIN);
    EXPECT_EQ(readFile(outcome.troubles[0].path), "kept");
}

TEST_F(OddFilesTest, AStopEndsTheWaitForALease) {
    writeFile(folder / "item", "kept");
    faulty.failAlways("openFile", EAGAIN);
    faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation == "pause") access.requestStop();
    };
    const Outcome& outcome = shred({folder / "item"});
    EXPECT_EQ(faulty.pauses, 1);
    EXPECT_EQ(outcome.filesRemoved, 0U);
    EXPECT_THAT(outcome.left, SizeIs(1));
}

TEST_F(OddFilesTest, ADeviceNodeThatItsMountForbidsIsNotTakenInHand) {
    if (mknod((folder / "null").c_str(), S_IFCHR | 0666, makedev(1, 3)) != 0) {
        std::cout << "not run: device nodes cannot be made here\n";
        return;
    }
    faulty.devices = 0;
    const Outcome& outcome = shred({folder / "null"});
    EXPECT_THAT(log.lines(), IsEmpty());
    EXPECT_EQ(outcome.filesRemoved, 1U);
}

TEST_F(OddFilesTest, DeviceNodesKeepTheirBits) {
    if (mknod((folder / "null").c_str(), S_IFCHR | 0600, makedev(1, 3)) != 0) {
        std::cout << "not run: device nodes cannot be made here\n";
        return;
    }
    hardLink(folder / "null", outside / "same");
    shred({folder / "null"});
    EXPECT_EQ(modeOf(outside / "same"), 0600U);
}

TEST_F(OddFilesTest, NoRoomBehindTheOldEndIsNoFailure) {
    for (const int code : {ENOSPC, EFBIG, EDQUOT}) {
        writeFile(folder / "item", recognisable(1000));
        faulty.failOnce("writeAt", 2, code);
        const Outcome& outcome = shred({folder / "item"});
        EXPECT_EQ(outcome.filesOverwritten, 1U) << code;
        EXPECT_EQ(outcome.notOverwritten, 0U);
        EXPECT_THAT(outcome.troubles, IsEmpty());
    }
    writeFile(folder / "item", recognisable(1000));
    faulty.failOnce("writeAt", 2, EIO);
    EXPECT_EQ(shred({folder / "item"}).notOverwritten, 1U);
}

TEST_F(OddFilesTest, WhetherADeviceLivesInMemoryIsAskedInEachRequest) {
    writeFile(folder / "one", "x");
    shred({folder / "one"});
    EXPECT_THAT(system.callsOf("flushFile"), IsEmpty());
    faulty.inMemory = 0;  // another file system has got the number
    writeFile(folder / "two", "x");
    shred({folder / "two"});
    EXPECT_THAT(system.callsOf("flushFile"), SizeIs(1));
}

/// A file system on which a name that goes while its file is open, or only held, goes elsewhere in
/// the same folder instead, which stays busy.
class HidesOpenFiles final : public ForwardingSystemCalls {
  public:
    using ForwardingSystemCalls::ForwardingSystemCalls;
    int removeFile(int folder, const char* name) override {
        platform::FileStatus file;
        inner_.statusAt(folder, name, Links::stay, file);
        for (const std::string& number : namesIn("/proc/self/fd")) {
            platform::FileStatus open;
            if (inner_.status(std::stoi(number), open) < 0 || !open.isSameAs(file)) continue;
            ++hidden;
            return inner_.rename(folder, name, folder, (".hidden" + number).c_str());
        }
        return inner_.removeFile(folder, name);
    }
    int hidden = 0;
};

TEST_F(OddFilesTest, WhereAnOpenFileKeepsItsFolderBusyNothingIsLeft) {
    for (const int inMemory : {0, 1}) {
        faulty.inMemory = inMemory;
        HidesOpenFiles hiding(faulty);
        FileAccess engine({hiding, clock, draws}, preferences, shreddingProgress, fileName);
        std::vector<std::string> items;
        for (const char* name : {"single", "empty", "tree/file", "tree/sub/empty"}) {
            writeFile(folder / name, fs::path(name).filename() == "empty" ? "" : "contents");
        }
        fs::create_symlink(folder / "tree/file", folder / "tree/sub/link");
        fs::create_symlink(outside.path(), folder / "link");
        for (const char* name : {"single", "empty", "link", "tree"}) items.push_back(folder / name);
        engine.shredDroppedFile(items);
        EXPECT_EQ(hiding.hidden, 0);
        EXPECT_EQ(engine.outcome().filesRemoved, 6U);
        EXPECT_THAT(engine.outcome().troubles, IsEmpty());
        EXPECT_THAT(namesIn(folder.path()), IsEmpty());
    }
}

/// Files of a folder that others may write in, while they wait for their flush.
class SharedFolderTest : public OddFilesTest {
  protected:
    SharedFolderTest() {
        faulty.inMemory = 0;
        for (const char* name : {"a", "b", "c"}) {
            writeFile(folder.path() / "tree" / name, recognisable(1000));
        }
        setMode(folder / "tree", 0777);
    }
    /// Path of the file that has this random name by now.
    [[nodiscard]] fs::path find(const std::string& name) const {
        for (const auto& entry : fs::recursive_directory_iterator(folder.path())) {
            if (entry.path().filename() == name) return entry.path();
        }
        return {};
    }
};

TEST_F(SharedFolderTest, AFileThatComesInAnotherOnesPlaceIsNotRemoved) {
    faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation != "flushFile") return;
        faulty.before = {};
        fs::rename(find(log.lines()[0]), outside / "taken");
        writeFile(outside / "new", "never overwritten");
        fs::rename(outside / "new", find(log.lines()[1]).parent_path() / log.lines()[0]);
    };
    const Outcome& outcome = shred({folder / "tree"});
    EXPECT_EQ(readFile(find(log.lines()[0])), "never overwritten");
    EXPECT_EQ(outcome.filesRemoved, 2U);
    ASSERT_FALSE(outcome.troubles.empty());
    EXPECT_EQ(outcome.troubles[0].code, ESTALE);
}

TEST_F(SharedFolderTest, AFileThatIsTakenBeforeItsTurnIsToldEvenIfAnotherStandsInItsPlace) {
    faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation != "makeFolder") return;
        fs::rename(folder / "tree/a", outside / "taken");
        writeFile(folder / "tree/a", "decoy");
    };
    const Outcome& outcome = shred({folder / "tree"});
    EXPECT_EQ(outcome.vanished, 1U);
    ASSERT_FALSE(outcome.troubles.empty());
    EXPECT_EQ(outcome.troubles[0].path, folder / "tree");
}

}  // namespace
}  // namespace dorvanel::test
