// SPDX-License-Identifier: MIT
#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include <algorithm>
#include <map>
#include <utility>

#include "engine/FlushBatch.h"
#include "support/Disk.h"
#include "support/EngineFixture.h"

namespace dorvanel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// The order in which contents reach the medium. The files lie where they are quick to flush; the
/// engine is told that they do not live in memory.
class DurabilityTest : public EngineFixture {
  protected:
    DurabilityTest() { faulty.inMemory = 0; }

    const Outcome& shredFiles(int count, std::size_t size = 100) {
        for (int i = 0; i < count; ++i) {
            writeFile(quick / ("tree/" + std::to_string(i)), recognisable(size));
        }
        return shred({quick / "tree"});
    }

    /// First writes, flushes, closes of written files and removals, a letter each.
    [[nodiscard]] std::string order() const {
        std::string text;
        std::map<int, bool> written;
        for (const auto& call : system.calls) {
            if (call.what == "writeAt" && call.offset == 0) text += 'w';
            if (call.what == "writeAt") written[call.descriptor] = true;
            if (call.what == "flushFileSystem") text += 'F';
            if (call.what == "flushFile") text += 'f';
            if (call.what == "close" && std::exchange(written[call.descriptor], false)) text += 'c';
            if (call.what == "removeFile") text += 'r';
            if (call.what == "removeFolder") text += 'd';
        }
        return text;
    }
    /// Names of files as they were logged: in the order of their overwriting.
    [[nodiscard]] std::vector<std::string> overwritten() const { return log.lines(); }
    [[nodiscard]] std::vector<std::string> removed() const {
        std::vector<std::string> names;
        for (const auto& call : system.callsOf("removeFile")) names.push_back(call.name);
        return names;
    }

    /// Closes of written files that no flush came before. The last write decides.
    [[nodiscard]] int closedUnflushed() const {
        std::map<int, bool> dirty;
        int found = 0;
        for (const auto& call : system.calls) {
            if (call.what == "writeAt") dirty[call.descriptor] = true;
            if (call.what == "flushFile") dirty[call.descriptor] = false;
            if (call.what == "flushFileSystem") dirty.clear();
            if (call.what == "close") {
                found += dirty[call.descriptor] ? 1 : 0;
                dirty[call.descriptor] = false;
            }
        }
        return found;
    }

    TemporaryFolder quick{quickPlace()};
};

TEST_F(DurabilityTest, NoOverwrittenFileIsClosedBeforeAFlushHasFollowedItsLastWrite) {
    for (const int count : {1, 4, 5, 100, 600}) {
        system.calls.clear();
        shredFiles(count);
        EXPECT_EQ(closedUnflushed(), 0) << count;
        EXPECT_THAT(system.callsOf("writeAt"), SizeIs(2 * count));
    }
}

TEST_F(DurabilityTest, NamesGoOnceTheFilesAreFlushedAndClosedAndInTheirOrder) {
    shredFiles(6);
    EXPECT_EQ(order(), "wwwwwwFccccccrrrrrrdd") << system.lines();
    EXPECT_EQ(removed(), overwritten());
}

TEST_F(DurabilityTest, TheOrderReachesOverManyItems) {
    std::vector<std::string> items;
    for (int i = 0; i < 6; ++i) {
        items.push_back(quick / std::to_string(i));
        writeFile(items.back() + "/file", "x");
    }
    EXPECT_EQ(shred(items).filesRemoved, 6U);
    EXPECT_EQ(order().substr(0, 13), "wwwwwwFcccccc") << system.lines();
    EXPECT_EQ(removed(), overwritten());
    EXPECT_THAT(namesIn(quick.path()), IsEmpty());
}

TEST_F(DurabilityTest, SingleFilesOfOneFolderAndOneSecondShareAHoldingFolder) {
    clock.step = {};
    std::vector<std::string> items;
    for (int i = 0; i < 6; ++i) {
        items.push_back(quick / std::to_string(i));
        writeFile(items.back(), "x");
    }
    EXPECT_EQ(shred(items).filesRemoved, 6U);
    EXPECT_EQ(order(), "wwwwwwFccccccrrrrrrd") << system.lines();
    EXPECT_EQ(removed(), overwritten());
    EXPECT_THAT(system.callsOf("makeFolder"), SizeIs(1));
    EXPECT_THAT(namesIn(quick.path()), IsEmpty());
}

TEST_F(DurabilityTest, AFileThatNeedsNoFlushStillGoesAfterThoseBeforeIt) {
    writeFile(quick / "a", "x");
    writeFile(quick / "empty", "");
    shred({quick / "a", quick / "empty"});
    EXPECT_THAT(removed(), SizeIs(2));
    EXPECT_EQ(removed(), log.lines());
}

TEST_F(DurabilityTest, WithoutAMediumEachFileIsClosedBeforeItsNameGoes) {
    faulty.inMemory = 1;
    shredFiles(3);
    EXPECT_EQ(order(), "wcrwcrwcrdd") << system.lines();
}

TEST_F(DurabilityTest, AFileWhoseFlushFailedKeepsItsNameAndTheOthersGo) {
    faulty.failOnce("flushFile", 2, EIO);
    const Outcome& outcome = shredFiles(3);
    EXPECT_EQ(outcome.notFlushed, 1U);
    EXPECT_EQ(outcome.filesRemoved, 2U);
    // The file, the item and the holding folder.
    EXPECT_EQ(outcome.notRemoved, 3U);
    ASSERT_FALSE(outcome.troubles.empty());
    EXPECT_EQ(outcome.troubles[0].operation, "flush");
    EXPECT_EQ(outcome.troubles[0].code, EIO);
    EXPECT_EQ(readFile(outcome.troubles[0].path).size(), 200U) << "it is where it is said to be";
    EXPECT_EQ(readFile(outcome.troubles[0].path).find("Secret"), std::string::npos);
}

TEST_F(DurabilityTest, FewFilesAreFlushedOneByOne) {
    shredFiles(4);
    EXPECT_THAT(system.callsOf("flushFile"), SizeIs(4));
    EXPECT_THAT(system.callsOf("flushFileSystem"), IsEmpty());
}

TEST_F(DurabilityTest, ABatchIsBoundedInFiles) {
    std::size_t most = 0;
    faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation == "flushFileSystem") most = std::max(most, openDescriptors());
    };
    shredFiles(1100);
    EXPECT_THAT(system.callsOf("flushFileSystem"), SizeIs(3));
    EXPECT_GE(most, FlushBatch::maxFiles);
    EXPECT_LT(most, FlushBatch::maxFiles + 30);
}

TEST_F(DurabilityTest, SeveralItemsShareOneFlush) {
    std::vector<std::string> items;
    for (int i = 0; i < 50; ++i) {
        items.push_back(quick / std::to_string(i));
        writeFile(items.back(), "x");
    }
    shred(items);
    EXPECT_THAT(system.callsOf("flushFileSystem"), SizeIs(1));
    EXPECT_EQ(closedUnflushed(), 0);
}

TEST_F(DurabilityTest, WhatLivesInMemoryIsNotFlushedAndClosedAtOnce) {
    faulty.inMemory = 1;
    shredFiles(600);
    EXPECT_THAT(system.callsOf("flushFile"), IsEmpty());
    EXPECT_THAT(system.callsOf("flushFileSystem"), IsEmpty());
    EXPECT_EQ(faulty.made["livesInMemory"], 1) << "asked once for a device";
}

TEST_F(DurabilityTest, EmptyFilesNeedNoFlush) {
    shredFiles(10, 0);
    EXPECT_THAT(system.callsOf("flushFileSystem"), IsEmpty());
}

TEST_F(DurabilityTest, AFileOverwrittenByItselfIsOnTheMediumWhenTheCallReturns) {
    writeFile(quick / "file", recognisable(1000));
    access.shredOneFile(quick / "file");
    EXPECT_THAT(system.callsOf("flushFile"), SizeIs(1));
    EXPECT_EQ(closedUnflushed(), 0);
    EXPECT_EQ(system.calls.back().what, "close");
}

TEST_F(DurabilityTest, WhatAFullDiskShortenedIsFlushedAllTheSame) {
    faulty.failOnce("writeAt", 2, ENOSPC);
    shredFiles(1);
    EXPECT_THAT(system.callsOf("flushFile"), SizeIs(1));
}

TEST_F(DurabilityTest, FailedFlushesAreCounted) {
    faulty.failAlways("flushFileSystem", EIO);
    faulty.failAlways("flushFile", EIO);
    const Outcome& outcome = shredFiles(10);
    EXPECT_EQ(outcome.notFlushed, 10U);
    EXPECT_EQ(outcome.filesRemoved, 0U);
    EXPECT_EQ(outcome.notRemoved, 12U);  // the files, the item and the holding folder
    ASSERT_THAT(outcome.troubles, SizeIs(10));
    EXPECT_EQ(outcome.troubles[0].operation, "flush");
    EXPECT_EQ(outcome.troubles[0].code, EIO);
    faulty.reset();
    EXPECT_EQ(shredFiles(10).notFlushed, 0U) << "a later request counts for itself";
}

TEST_F(DurabilityTest, OneFileOfAFewWhoseFlushFailsIsCounted) {
    faulty.failOnce("flushFile", 2, EIO);
    EXPECT_EQ(shredFiles(3).notFlushed, 1U);
    EXPECT_THAT(system.callsOf("flushFile"), SizeIs(3));
}

TEST_F(DurabilityTest, WhereTheFileSystemCannotBeFlushedEachFileIs) {
    faulty.failAlways("flushFileSystem", ENOSYS);
    EXPECT_EQ(shredFiles(10).notFlushed, 0U);
    EXPECT_THAT(system.callsOf("flushFile"), SizeIs(10));
}

TEST_F(DurabilityTest, TheLastProgressIsShownBeforeTheLongFlush) {
    clock.step = {};  // so that only the first value is shown at once
    std::vector<double> shown;
    faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation == "flushFileSystem") shown = shreddingProgress.values;
    };
    shredFiles(10);
    ASSERT_THAT(shown, ::testing::Not(IsEmpty()));
    EXPECT_EQ(shown.back(), 100.0);
}

/// A batch by itself, over files of devices that the test invents.
class FlushBatchTest : public ::testing::Test {
  protected:
    int add(FlushBatch& to, std::uint64_t device, std::uint64_t bytes = 1) {
        const int file = open((folder / "file").c_str(), O_CREAT | O_RDWR | O_CLOEXEC, 0600);
        platform::FileStatus status;
        status.device = device;
        to.keep({file, status, bytes});
        return file;
    }

    TemporaryFolder folder{quickPlace()};
    std::unique_ptr<platform::SystemCalls> real = platform::makeSystemCalls();
    FaultySystemCalls faulty{*real};
    RecordingSystemCalls system{faulty};
    int waits = 0;
    Outcome outcome;
    ItemOutcomes items{system, outcome};
    NameRemover remover{system, outcome, items};
    FlushBatch batch{system, remover, [this](ui::WorkPhase) { ++waits; }};
};

TEST_F(FlushBatchTest, AnEmptyBatchIsNotFlushed) {
    batch.flush();
    EXPECT_THAT(system.calls, IsEmpty());
    EXPECT_EQ(waits, 0);
}

TEST_F(FlushBatchTest, IsBoundedInBytes) {
    faulty.inMemory = 0;
    add(batch, 1, FlushBatch::maxBytes - 1);
    EXPECT_THAT(system.calls, IsEmpty());
    add(batch, 1, 1);
    EXPECT_THAT(system.callsOf("flushFile"), SizeIs(2));
    EXPECT_THAT(system.callsOf("close"), SizeIs(2));
    EXPECT_EQ(waits, 1);
    add(batch, 1, FlushBatch::maxBytes);
    EXPECT_THAT(system.callsOf("close"), SizeIs(3)) << "the count begins anew";
}

TEST_F(FlushBatchTest, EachDeviceIsFlushedByOneOfItsFiles) {
    faulty.inMemory = 0;
    std::vector<int> first, second;
    for (int i = 0; i < 6; ++i) first.push_back(add(batch, 1));
    for (int i = 0; i < 2; ++i) second.push_back(add(batch, 2));
    for (int i = 0; i < 5; ++i) add(batch, 3);
    batch.flush();
    const auto whole = system.callsOf("flushFileSystem");
    ASSERT_THAT(whole, SizeIs(2));
    EXPECT_THAT(first, ::testing::Contains(whole[0].descriptor));
    std::vector<int> single;
    for (const auto& call : system.callsOf("flushFile")) single.push_back(call.descriptor);
    EXPECT_EQ(single, second);
    EXPECT_THAT(system.callsOf("close"), SizeIs(13));
}

TEST_F(FlushBatchTest, AsksEachDeviceWhetherItLivesInMemory) {
    faulty.inMemory = 1;
    add(batch, 1);
    EXPECT_THAT(system.callsOf("close"), SizeIs(1));
    faulty.inMemory = 0;
    add(batch, 2);
    EXPECT_THAT(system.callsOf("close"), SizeIs(1));
    batch.flush();
    EXPECT_THAT(system.callsOf("flushFile"), SizeIs(1));
}

TEST_F(FlushBatchTest, AFileSystemThatDoesNotTellIsFlushed) {
    faulty.failAlways("livesInMemory", EIO);
    add(batch, 1);
    batch.flush();
    EXPECT_THAT(system.callsOf("flushFile"), SizeIs(1));
}

TEST_F(FlushBatchTest, IsFlushedAtItsEnd) {
    faulty.inMemory = 0;
    {
        FlushBatch ending(system, remover, [](ui::WorkPhase) {});
        add(ending, 1);
    }
    EXPECT_THAT(system.callsOf("flushFile"), SizeIs(1));
    EXPECT_THAT(system.callsOf("close"), SizeIs(1));
}

}  // namespace
}  // namespace dorvanel::test
