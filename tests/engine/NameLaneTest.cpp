// SPDX-License-Identifier: MIT
#include "engine/NameLane.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <thread>

#include "engine/LanedRun.h"
#include "support/Disk.h"

namespace dorvanel::test {
namespace {

using platform::EntryKind;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

std::size_t threads() {
    return namesIn("/proc/self/task").size();
}

/// Those before any of ours. A sanitizer starts one of its own with the first that is begun: it is
/// counted.
std::size_t threadsAtRest() {
    pid_t first = 0;
    std::thread([&first] { first = gettid(); }).join();
    while (std::filesystem::exists("/proc/self/task/" + std::to_string(first))) {
        std::this_thread::yield();
    }
    return threads();
}

/// Whether there are so many, soon: one that has ended is listed for a moment yet.
bool threadsBecome(std::size_t count) {
    for (int i = 0; i < 10'000 && threads() != count; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return threads() == count;
}

class NameLaneTest : public ::testing::Test {
  protected:
    explicit NameLaneTest(bool isForTwo = true) : system(*real, isForTwo) {
        folderDescriptor =
            system.openFolder(platform::SystemCalls::workingFolder, folder.path().c_str());
    }
    void SetUp() override {
        if (std::thread::hardware_concurrency() < 2) GTEST_SKIP() << "one processor alone";
        items.begin(item);
    }

    /// Makes a file and hands its name over, open.
    void remove(const std::string& name, bool exists = true) {
        if (exists) writeFile(folder / name, "secret");
        const int file =
            system.openFile(folderDescriptor, name.c_str(), platform::SystemCalls::Links::stay);
        lane.remove(
            {folderDescriptor, name.c_str(), EntryKind::regular, true, false, items.current()},
            {file, 6, false}, [this] { return std::string(folder.path()); });
    }

    TemporaryFolder folder{quickPlace()};
    std::unique_ptr<platform::SystemCalls> real = platform::makeSystemCalls();
    LanedSystemCalls system;
    Outcome outcome;
    ItemOutcomes items{system, outcome};
    HeldItem item;
    NameRemover remover{system, outcome, items};
    NameLane lane{system, remover, system.descriptorLimit()};
    int folderDescriptor = -1;
};

TEST_F(NameLaneTest, StartsItsThreadWithTheNameThatMakesItWorthwhile) {
    const std::size_t before = threadsAtRest();
    for (std::size_t i = 1; i < NameLane::worthwhile; ++i) EXPECT_FALSE(lane.isFor());
    EXPECT_EQ(threads(), before);
    EXPECT_TRUE(lane.isFor());
    EXPECT_EQ(threads(), before + 1);
    lane.end();
    EXPECT_TRUE(threadsBecome(before));
    EXPECT_FALSE(lane.isFor()) << "the next request has to be large too";
}

TEST_F(NameLaneTest, CountsAndTellsInTheOrderOfTheNames) {
    ASSERT_TRUE(lane.isFor(NameLane::worthwhile));
    for (int i = 0; i < 200; ++i) {
        const bool exists = i != 50 && i != 120;
        if (exists) {
            remove(std::to_string(i));
        } else {  // what cannot be removed: a folder that is not empty
            writeFile(folder / (std::to_string(i) + "/inside"), "x");
            remove(std::to_string(i), false);
        }
    }
    lane.settle();
    EXPECT_TRUE(lane.isEmpty());
    EXPECT_EQ(outcome.filesRemoved, 198U);
    EXPECT_EQ(outcome.notRemoved, 2U);
    ASSERT_THAT(outcome.troubles, SizeIs(2));
    EXPECT_EQ(outcome.troubles[0].path, folder / "50");
    EXPECT_EQ(outcome.troubles[1].path, folder / "120");
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("120", "50"));
    system.close(folderDescriptor);
}

TEST_F(NameLaneTest, ClosesAFolderThatItTookOverOnceNothingWaitsInIt) {
    ASSERT_TRUE(lane.isFor(NameLane::worthwhile));
    EXPECT_FALSE(lane.takesOver(folderDescriptor)) << "nothing waits in it";
    remove("a");
    EXPECT_TRUE(lane.takesOver(folderDescriptor));
    EXPECT_NE(fcntl(folderDescriptor, F_GETFD), -1);
    lane.settle();
    EXPECT_EQ(fcntl(folderDescriptor, F_GETFD), -1);
    EXPECT_FALSE(lane.takesOver(folderDescriptor));
    EXPECT_THAT(namesIn(folder.path()), IsEmpty());
}

TEST_F(NameLaneTest, WritesWhatItHoldsBeforeTheNameGoesAndCountsTheFile) {
    ASSERT_TRUE(lane.isFor(NameLane::worthwhile));
    writeFile(folder / "a", "secret");
    hardLink(folder / "a", folder / "same");
    const int file = system.openFile(folderDescriptor, "a", platform::SystemCalls::Links::stay);
    WriteHolder* holder = lane.holderFor(file);
    ASSERT_NE(holder, nullptr);
    EXPECT_TRUE(holder->hold("new", 3, 0, false));
    EXPECT_TRUE(holder->hold("er", 2, 3, true));
    EXPECT_FALSE(holder->hold("too many", 8, 5, true));
    EXPECT_EQ(readFile(folder / "same"), "secret");
    lane.remove({folderDescriptor, "a", EntryKind::regular, true, false, items.current()},
                {file, 6, true}, [this] { return std::string(folder.path()); });
    lane.settle();
    EXPECT_EQ(readFile(folder / "same"), "newert");
    EXPECT_EQ(outcome.filesOverwritten, 1U);
    EXPECT_EQ(outcome.bytesOverwritten, 6U);
    EXPECT_EQ(outcome.filesRemoved, 1U);
    system.close(folderDescriptor);
}

TEST_F(NameLaneTest, HoldsNothingWhileItHasEnoughToDo) {
    ASSERT_TRUE(lane.isFor(NameLane::worthwhile));
    system.secondIsSlowBy = std::chrono::milliseconds(5);
    for (std::size_t i = 0; i < LaneCalls::manyCalls; ++i) remove(std::to_string(i));
    EXPECT_EQ(lane.holderFor(-1), nullptr);
    lane.settle();
    EXPECT_NE(lane.holderFor(-1), nullptr);
    system.close(folderDescriptor);
}

TEST_F(NameLaneTest, ANameThatIsTakenLeavesTheOldOne) {
    ASSERT_TRUE(lane.isFor(NameLane::worthwhile));
    for (const char* name : {"a", "b", "c"}) writeFile(folder / name, name);
    lane.rename(folderDescriptor, "a", "new");
    lane.rename(folderDescriptor, "b", "c");
    lane.settle();
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("b", "c", "new"));
    EXPECT_EQ(readFile(folder / "c"), "c");
    system.close(folderDescriptor);
}

class NameLaneOfOneThreadTest : public NameLaneTest {
  protected:
    NameLaneOfOneThreadTest() : NameLaneTest(false) {}
};

TEST_F(NameLaneOfOneThreadTest, IsForNoNamesAtAll) {
    const std::size_t before = threadsAtRest();
    EXPECT_FALSE(lane.isFor(10 * NameLane::worthwhile));
    EXPECT_EQ(lane.holderFor(-1), nullptr);
    EXPECT_EQ(threads(), before);
    system.close(folderDescriptor);
}

/// Threads that a request has besides those before, at the most.
std::size_t threadsFor(bool hasTwoThreads, int files) {
    LanedRun run(hasTwoThreads);
    for (int i = 0; i < files; ++i) {
        writeFile(run.folder / ("tree/" + std::to_string(i)), recognisable(100));
    }
    const std::size_t before = threadsAtRest();
    std::size_t most = before;
    run.system.before = [&](const LanedSystemCalls::Call&) { most = std::max(most, threads()); };
    EXPECT_EQ(run.shred("tree").filesRemoved, static_cast<std::uint64_t>(files));
    EXPECT_TRUE(threadsBecome(before)) << "the thread ends with the request";
    EXPECT_EQ(hadSecondThread(run.system), most > before);
    return most - before;
}

TEST(NameLaneThreadsTest, ARequestOfFewNamesOrOfOneThreadStartsNone) {
    if (!hasLane()) GTEST_SKIP() << "no folder in memory, or one processor alone";
    // Each file's name is changed and then removed.
    EXPECT_EQ(threadsFor(true, 45), 0U);
    EXPECT_EQ(threadsFor(true, 200), 1U);
    EXPECT_EQ(threadsFor(false, 200), 0U);
}

}  // namespace
}  // namespace dorvanel::test
