// SPDX-License-Identifier: MIT
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <thread>

#include "support/ChildProcess.h"
#include "support/MountNamespace.h"
#include "targets/cleaning/CleaningTest.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using cleaning::Fault;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// What changes something on the disk, and can be cut off before it does.
const std::set<std::string> changing{"createFile", "changeGroup", "changeMode",
                                     "writeAt",    "truncate",    "flush",
                                     "rename",     "exchange",    "removeFile"};

class CommitTest : public CleaningTest {
  protected:
    static constexpr std::array<Left, 3> allLeft{Left::closed, Left::withLog, Left::withHotJournal};

    /// A history as it is left, copied for each use: making one takes longer.
    std::string model(Left left) {
        const std::string name = "model" + std::to_string(static_cast<int>(left));
        if (!fs::exists(models / name)) {
            fs::create_directory(models / name);
            makeHistory(models / name + "/places.sqlite", left, 60);
        }
        return models / name;
    }
    /// A place where the history lies alone; its path.
    std::string freshCopy(Left left) {
        const std::string place = folder / "copy";
        fs::remove_all(place);
        fs::copy(model(left), place);
        return place + "/places.sqlite";
    }
    /// Every file beside the history is one of its own, or found as a leftover, or in `aside`.
    static void expectAllKnown(const std::string& history, const std::vector<std::string>& aside,
                               const std::string& when) {
        const auto left = cleaning::Cleaner::leftovers(history);
        for (const auto& entry : fs::directory_iterator(fs::path(history).parent_path())) {
            const std::string name = entry.path().filename();
            const bool isOwn = name == "places.sqlite" || name == "places.sqlite-wal" ||
                               name == "places.sqlite-shm" || name == "places.sqlite-journal";
            EXPECT_TRUE(isOwn || std::ranges::count(left, entry.path().string()) == 1) << when;
        }
        for (const std::string& path : aside) EXPECT_THAT(left, Contains(path)) << when;
    }

    const TemporaryFolder models;
};

TEST_F(CommitTest, ADatabaseThatAnotherProgramUsesIsLockedInAnyMode) {
    const std::string open =
        "import sqlite3, sys, time\n"
        "d = sqlite3.connect(sys.argv[1], isolation_level=None)\n";
    const std::string wait = "\nprint('open', flush=True)\ntime.sleep(600)";
    const struct {
        Left left;
        std::string statements;
    } cases[] = {
        {Left::closed, "d.execute('BEGIN'); d.execute('SELECT * FROM moz_places').fetchone()"},
        {Left::closed, "d.execute('BEGIN IMMEDIATE')"},
        {Left::closed, "d.execute('BEGIN EXCLUSIVE')"},
        {Left::withLog, "d.execute('SELECT count(*) FROM moz_places').fetchall()"},
        {Left::withLog, "d.execute('BEGIN IMMEDIATE')"},
        {Left::withLog,
         "d.execute('PRAGMA locking_mode=EXCLUSIVE'); "
         "d.execute('SELECT count(*) FROM moz_places').fetchall()"},
    };
    for (const auto& [left, statements] : cases) {
        const std::string history = freshCopy(left);
        {
            ChildProcess other({"python3", "-c", open + statements + wait, history});
            ASSERT_EQ(other.readLine(), "open");
            const std::string before = printOf(fs::path(history).parent_path());
            auto prepared = cleaner.prepareDatabase(historyRequest(history), {});
            ASSERT_FALSE(prepared.ok()) << statements;
            EXPECT_EQ(prepared.trouble().fault, Fault::locked) << told(prepared);
            EXPECT_EQ(printOf(fs::path(history).parent_path()), before);
        }
        EXPECT_EQ(clean(historyRequest(history)), "") << statements;
        expectWholeHistory(history, statements);
    }
    EXPECT_EQ(clock.sleeps.size(), 20 * std::size(cases));
}

TEST_F(CommitTest, AMomentaryLockIsWaitedFor) {
    makeHistory(path);
    SampleDatabase other(path);
    other.run("BEGIN IMMEDIATE");
    int tries = 0;
    calls.before = [&](const std::string& operation) {
        if (operation == "lock" && ++tries == 5) other.run("COMMIT");
    };
    EXPECT_EQ(clean(historyRequest(path)), "");
    EXPECT_EQ(clock.sleeps.size(), 4U);
}

TEST_F(CommitTest, NobodyGetsAtTheDatabaseWhileItWaits) {
    for (const Left left : allLeft) {
        const std::string history = freshCopy(left);
        auto prepared = cleaner.prepareDatabase(historyRequest(history), {});
        ASSERT_TRUE(prepared.ok()) << told(prepared);
        EXPECT_ANY_THROW(SampleDatabase(history).run("SELECT count(*) FROM moz_places"));
        prepared.value().reset();
        EXPECT_EQ(SampleDatabase(history).text("SELECT count(*) FROM moz_keywords"), "1");
    }
}

TEST_F(CommitTest, ADatabaseThatIsWrittenWhileItIsCountedIsLocked) {
    makeHistory(path);
    int reads = 0;
    calls.before = [&](const std::string& operation) {
        if (operation == "readAt" && ++reads % 5 == 0)
            fs::last_write_time(path, fs::file_time_type::clock::now());
    };
    const auto counted = cleaner.countRows(historyRequest(path), {});
    ASSERT_FALSE(counted.ok());
    EXPECT_EQ(counted.trouble().fault, Fault::locked);
}

TEST_F(CommitTest, AnotherThreadCommits) {
    makeHistory(path, Left::withLog);
    auto prepared = cleaner.prepareDatabase(historyRequest(path), {});
    std::string trouble = "not run";
    std::thread([&] { trouble = commit(prepared); }).join();
    EXPECT_EQ(trouble, "");
    expectWholeHistory(path, "after another thread");
}

TEST_F(CommitTest, WithoutLeaveNothingIsReplaced) {
    for (const Left left : allLeft) {
        const std::string history = freshCopy(left);
        const std::string before = printOf(fs::path(history).parent_path());
        auto prepared = cleaner.prepareDatabase(historyRequest(history), {});
        ASSERT_TRUE(prepared.ok());
        std::vector<std::string> aside;
        const auto trouble = prepared.value()->commit([] { return false; }, aside);
        ASSERT_TRUE(trouble);
        EXPECT_EQ(trouble->fault, Fault::locked);
        EXPECT_THAT(aside, IsEmpty());
        prepared.value().reset();
        EXPECT_EQ(printOf(fs::path(history).parent_path()), before);
    }
}

TEST_F(CommitTest, NamesThatLeadElsewhereMeanwhileAreLeftAlone) {
    const std::function<void(const std::string&)> changes[] = {
        [](const std::string& history) {
            fs::rename(history, history + ".moved");
            fs::copy(history + ".moved", history);
        },
        [](const std::string& history) { fs::remove(history); },
        [](const std::string& history) { writeFile(history + "-journal", "new"); },
        [](const std::string& history) { fs::create_hard_link(history, history + ".other"); },
        [](const std::string& history) { fs::remove(cleaning::Cleaner::leftovers(history).at(0)); },
    };
    for (const auto& change : changes) {
        const std::string history = freshCopy(Left::closed);
        auto prepared = cleaner.prepareDatabase(historyRequest(history), {});
        ASSERT_TRUE(prepared.ok());
        change(history);
        const auto names = namesIn(fs::path(history).parent_path());
        std::vector<std::string> aside;
        EXPECT_TRUE(prepared.value()->commit([] { return true; }, aside));
        EXPECT_THAT(aside, IsEmpty());
        EXPECT_EQ(namesIn(fs::path(history).parent_path()), names);
    }
}

TEST_F(CommitTest, WhereNamesCannotBeExchangedTheDatabaseStays) {
    for (const Left left : allLeft) {
        const std::string history = freshCopy(left);
        calls.always = "exchange";
        calls.code = EINVAL;
        auto prepared = cleaner.prepareDatabase(historyRequest(history), {});
        ASSERT_TRUE(prepared.ok());
        std::vector<std::string> aside;
        const auto trouble = prepared.value()->commit([] { return true; }, aside);
        ASSERT_TRUE(trouble);
        EXPECT_EQ(trouble->fault, Fault::failed);
        EXPECT_THAT(trouble->error.message(), HasSubstr("exchange: Invalid argument"));
        prepared.value().reset();
        // The log has been brought home, and is handed over.
        EXPECT_EQ(aside.size(), left == Left::closed ? 0U : left == Left::withLog ? 2U : 1U);
        expectAllKnown(history, aside, "without exchange");
        shred(aside);
        expectWholeHistory(history, "without exchange");
        EXPECT_EQ(SampleDatabase(history).text("SELECT count(*) FROM moz_historyvisits"), "60");
        calls.always.clear();
    }
}

TEST_F(CommitTest, AnyCallThatFailsLeavesAWholeDatabaseAndNothingUnknown) {
    for (const Left left : allLeft) {
        std::vector<std::string> operations;
        calls.before = [&](const std::string& operation) { operations.push_back(operation); };
        EXPECT_EQ(clean(historyRequest(freshCopy(left))), "");
        calls.before = {};
        ASSERT_GT(operations.size(), 100U);
        std::set<std::string> failed;
        for (std::size_t i = 0; i < operations.size(); ++i) {
            // Of the many reads of pages some will do.
            if (operations[i] == "readAt" && i % 20 != 0) continue;
            const std::string when = operations[i] + " " + std::to_string(i + 1) + " fails, " +
                                     std::to_string(static_cast<int>(left));
            const std::string history = freshCopy(left);
            calls.made = 0;
            calls.failing = static_cast<int>(i) + 1;
            calls.code = operations[i] == "writeAt" ? ENOSPC : EIO;
            std::vector<std::string> aside;
            bool isTold = false;
            {
                auto prepared = cleaner.prepareDatabase(historyRequest(history), {});
                isTold = !prepared.ok();
                if (prepared.ok()) {
                    isTold = prepared.value()->commit([] { return true; }, aside).has_value();
                }
            }
            calls.failing = 0;
            EXPECT_TRUE(isTold) << when;
            expectAllKnown(history, aside, when);
            shred(cleaning::Cleaner::leftovers(history));
            expectWholeHistory(history, when);
            failed.insert(operations[i]);
        }
        for (const char* operation :
             {"openFolder", "openForReading", "openForChanging", "createFile", "status", "statusAt",
              "changeMode", "readAt", "writeAt", "flush", "lock", "exchange", "randomBytes"}) {
            if (left == Left::closed && operation == std::string("openForReading")) continue;
            EXPECT_THAT(failed, Contains(operation));
        }
    }
}

TEST_F(CommitTest, KilledAtAnyMomentTheNameLeadsToAWholeDatabase) {
    const char* wanted = std::getenv("DORVANEL_KILLS");
    const int kills = wanted == nullptr ? 60 : std::atoi(wanted);
    std::set<std::string> ends;
    for (const Left left : allLeft) {
        int steps = 0;
        calls.before = [&](const std::string& operation) {
            if (changing.contains(operation)) ++steps;
        };
        EXPECT_EQ(clean(historyRequest(freshCopy(left))), "");
        calls.before = {};
        ASSERT_GT(steps, 8);
        const int distance = std::max(1, 3 * steps / kills);
        for (int last = 1; last <= steps; last += distance) {
            const std::string history = freshCopy(left);
            const pid_t child = fork();
            if (child == 0) {
                int step = 0;
                calls.before = [&](const std::string& operation) {
                    if (changing.contains(operation) && ++step == last) kill(getpid(), SIGKILL);
                };
                clean(historyRequest(history));
                _exit(0);
            }
            int status = 0;
            ASSERT_EQ(waitpid(child, &status, 0), child);
            ASSERT_TRUE(WIFSIGNALED(status)) << last << " of " << steps;
            const std::string when = "killed at " + std::to_string(last) + " of " +
                                     std::to_string(steps) + ", " +
                                     std::to_string(static_cast<int>(left));
            expectAllKnown(history, {}, when);
            shred(cleaning::Cleaner::leftovers(history));
            expectWholeHistory(history, when);
            ends.insert(SampleDatabase(history).text("SELECT count(*) FROM moz_historyvisits"));
            // The next run carries it through.
            EXPECT_EQ(clean(historyRequest(history)), "") << when;
            EXPECT_THAT(holding(fs::path(history).parent_path(), trace), IsEmpty()) << when;
        }
    }
    EXPECT_THAT(ends, ElementsAre("0", "60"));
}

TEST_F(CommitTest, NothingIsWrittenThatHoldsWhatIsRemoved) {
    // What any file but the old ones has in it, at each step.
    for (const Left left : allLeft) {
        const std::string history = freshCopy(left);
        const std::string place = fs::path(history).parent_path();
        const auto old = holding(place, trace);
        bool isExchanged = false;
        calls.before = [&](const std::string& operation) {
            if (operation == "exchange") isExchanged = true;
            if (isExchanged || !changing.contains(operation)) return;
            for (const std::string& name : holding(place, trace)) {
                const std::string from = name.substr(0, name.find(".dorvanel-"));
                EXPECT_THAT(old, Contains(from)) << operation;
                if (from == "places.sqlite") {
                    EXPECT_EQ(name, from) << operation;
                }
            }
        };
        EXPECT_EQ(clean(historyRequest(history)), "");
        calls.before = {};
    }
}

TEST_F(CommitTest, BlocksThatAreGivenBackHoldZeros) {
    const std::string history = freshCopy(Left::withHotJournal);
    const auto longer = fs::file_size(history);
    const auto shorter = fs::file_size(model(Left::closed) + "/places.sqlite");
    ASSERT_LT(shorter, longer);
    int truncated = 0;
    std::string last;
    calls.before = [&](const std::string& operation) {
        if (operation == "truncate") {
            ++truncated;
            EXPECT_EQ(last, "flush");
            const std::string bytes = readFile(history);
            EXPECT_EQ(bytes.size(), longer);
            EXPECT_EQ(bytes.find_first_not_of('\0', shorter), std::string::npos);
        }
        last = operation;
    };
    EXPECT_EQ(clean(historyRequest(history)), "");
    EXPECT_EQ(truncated, 1);
}

TEST_F(CommitTest, ALogThatIsLongerThanTheDiskHasRoomForStays) {
    const std::string history = freshCopy(Left::withLog);
    auto prepared = cleaner.prepareDatabase(historyRequest(history), {});
    ASSERT_TRUE(prepared.ok());
    calls.room = 0;
    std::vector<std::string> aside;
    const auto trouble = prepared.value()->commit([] { return true; }, aside);
    ASSERT_TRUE(trouble);
    EXPECT_THAT(trouble->error.message(), HasSubstr("No space left"));
    EXPECT_THAT(aside, IsEmpty());
    calls.room = 1U << 30;
    prepared.value().reset();
    expectWholeHistory(history, "without room");
    EXPECT_EQ(SampleDatabase(history).text("SELECT count(*) FROM moz_bookmarks"), "8");
}

TEST_F(CommitTest, AFullFileSystemIsToldAndLeavesTheDatabase) {
    makeHistory(path, Left::closed, 2000);
    const auto answer = inMountNamespace([&]() -> std::string {
        const std::string small = folder / "small";
        fs::create_directory(small);
        // The copy would have almost the size of the old one.
        const std::string size = "size=" + std::to_string(fs::file_size(path) * 3 / 2);
        if (mount("none", small.c_str(), "tmpfs", 0, size.c_str()) != 0) return "not mounted";
        fs::copy(path, small + "/places.sqlite");
        auto prepared = cleaner.prepareDatabase(
            requestOf(small + "/places.sqlite", "DELETE FROM moz_inputhistory"), {});
        const auto names = namesIn(small);
        return told(prepared) + " " + std::to_string(names.size());
    });
    if (!answer || *answer == "not mounted") return sayNotRun("no file system can be mounted");
    EXPECT_THAT(*answer, HasSubstr("No space left on device"));
    EXPECT_THAT(*answer, testing::EndsWith(" 1"));
}

TEST_F(CommitTest, LeftoversAreThisUsersPlainFilesOfNamesThatAreMadeHere) {
    makeHistory(path);
    for (const char* name :
         {"places.sqlite.dorvanel-abc234", "places.sqlite-wal.dorvanel-zzzzzz",
          "places.sqlite-journal.dorvanel-222222", "places.sqlite-shm.dorvanel-abcdef",
          // Others' names.
          "places.sqlite.dorvanel-abc2345", "places.sqlite.dorvanel-ABC234",
          "other.sqlite.dorvanel-abc234", "places.sqlite.dorvanel-abc23", "places.sqlite-wal",
          "places.sqlite.dorvanel-abc/34"}) {
        writeFile(folder / name);
    }
    fs::create_directory(folder / "places.sqlite.dorvanel-folder");
    fs::create_symlink("places.sqlite", folder / "places.sqlite.dorvanel-linked");
    EXPECT_THAT(cleaning::Cleaner::leftovers(path),
                ElementsAre(folder / "places.sqlite-journal.dorvanel-222222",
                            folder / "places.sqlite-shm.dorvanel-abcdef",
                            folder / "places.sqlite-wal.dorvanel-zzzzzz",
                            folder / "places.sqlite.dorvanel-abc234"));
    EXPECT_THAT(cleaning::Cleaner::leftovers(folder / "gone/places.sqlite"), IsEmpty());
}

}  // namespace
}  // namespace dorvanel::test
