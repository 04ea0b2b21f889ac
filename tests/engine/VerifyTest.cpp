// SPDX-License-Identifier: MIT

// What was overwritten is read back before its name goes.
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <random>

#include "support/Disk.h"
#include "support/EngineFixture.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

class VerifyTest : public EngineFixture {
  protected:
    VerifyTest() {
        faulty.inMemory = 0;
        access.setVerifies(true);
    }

    /// So many files in a folder, and it shredded.
    const Outcome& shredFiles(int count, std::size_t size = 100) {
        for (int i = 0; i < count; ++i) {
            writeFile(tree + "/" + std::to_string(i), recognisable(size));
        }
        return shred({tree});
    }
    /// From now on the `nth` read brings another bit.
    void lieAtRead(int nth) {
        faulty.lie = [this, nth](int, char* bytes, std::size_t size, std::uint64_t) {
            if (faulty.made["readAt"] == nth) bytes[0] ^= 1;
            return static_cast<std::ptrdiff_t>(size);
        };
    }
    void expectOneIsLeft(const Outcome& outcome, int code, const std::string& reason) {
        EXPECT_EQ(outcome.notVerified, 1U);
        EXPECT_EQ(outcome.perItem.at(0).verified, outcome.filesVerified);
        ASSERT_THAT(outcome.perItem[0].unverified, SizeIs(1));
        const ItemOutcome::Trouble& trouble = outcome.perItem[0].unverified[0];
        EXPECT_EQ(trouble.operation, "verify");
        EXPECT_EQ(trouble.code, code);
        EXPECT_EQ(trouble.reason, reason);
        EXPECT_THAT(trouble.was, StartsWith(tree + "/"));
        EXPECT_TRUE(fs::is_regular_file(trouble.path));
        ASSERT_THAT(outcome.perItem[0].left, SizeIs(1));
        EXPECT_EQ(outcome.perItem[0].left[0].path, trouble.path);
        EXPECT_EQ(outcome.troubles.at(0).operation, "verify");
        EXPECT_GT(outcome.notRemoved, 0U);
    }

    TemporaryFolder quick{quickPlace()};
    std::string tree = quick / "tree";
};

TEST_F(VerifyTest, EveryFileOfRandomTreesOnADiskReadsBackAsItWasWritten) {
    std::mt19937 random(7);
    for (const int writes : {1, 2, 4}) {
        preferences.set("NumberOfWrites", writes);
        preferences.set("DoDSanitize", writes == 1);
        const std::string top = folder / "random";
        std::string inside = top;
        for (int i = 0; i < 40; ++i) {
            const std::size_t size = i == 20 ? 3'000'000 + random() % 5000 : random() % 20'000;
            writeFile(inside + "/" + std::to_string(i), recognisable(i % 10 == 0 ? 0 : size));
            if (random() % 5 == 0) inside += "/deeper";
        }
        const Outcome& outcome = shred({top});
        EXPECT_EQ(outcome.filesOverwritten, 40U);
        EXPECT_EQ(outcome.filesVerified, 40U);
        EXPECT_EQ(outcome.perItem.at(0).verified, 40U);
        EXPECT_EQ(outcome.notVerified, 0U);
        EXPECT_THAT(outcome.troubles, IsEmpty());
        EXPECT_THAT(namesIn(folder.path()), IsEmpty());
    }
}

TEST_F(VerifyTest, WhatLivesInMemoryIsReadBackTooAndNothingIsAskedToBeForgotten) {
    faulty.inMemory = 1;
    const Outcome& outcome = shredFiles(3);
    EXPECT_EQ(outcome.filesVerified, 3U);
    EXPECT_THAT(system.callsOf("readAt"), SizeIs(3));
    EXPECT_THAT(system.callsOf("forgetCached"), IsEmpty());
}

TEST_F(VerifyTest, FilesOfManyBatchesAreReadAfterTheirFlush) {
    const Outcome& outcome = shredFiles(1100);
    EXPECT_EQ(outcome.filesVerified, 1100U);
    bool isFlushed = false;
    for (const auto& call : system.calls) {
        if (call.what == "writeAt") isFlushed = false;
        if (call.what == "flushFileSystem") isFlushed = true;
        if (call.what == "readAt" || call.what == "forgetCached") {
            ASSERT_TRUE(isFlushed);
        }
    }
}

TEST_F(VerifyTest, TheOtherCallsAreTheSameAndWithoutTheSwitchThereAreNone) {
    for (const int inMemory : {0, 1}) {
        std::vector<std::string> calls;
        const TemporaryFolder place(quickPlace());
        for (const bool verifies : {false, true}) {
            writeFile(place / "tree/empty");
            for (const char* name : {"tree/a", "tree/sub/b", "two"}) {
                writeFile(place / name, recognisable(5000));
            }
            TestEngine engine;
            engine.faulty.inMemory = inMemory;
            engine.access.setVerifies(true);
            engine.access.setVerifies(verifies);
            engine.shred({place / "tree", place / "two"});
            EXPECT_EQ(engine.system.callsOf("readAt").empty(), !verifies);
            std::erase_if(engine.system.calls, [](const auto& call) {
                return call.what == "readAt" || call.what == "forgetCached";
            });
            calls.push_back(engine.system.lines());
        }
        EXPECT_EQ(calls[0], calls[1]);
    }
}

TEST_F(VerifyTest, AFileThatReadsBackOtherwiseKeepsItsNameAndTheOthersGo) {
    for (const int inMemory : {0, 1}) {
        faulty.reset();
        faulty.inMemory = inMemory;
        lieAtRead(2);
        const Outcome& outcome = shredFiles(5);
        expectOneIsLeft(outcome, 0, "read back otherwise");
        EXPECT_EQ(outcome.filesVerified, 4U);
        EXPECT_EQ(outcome.perItem[0].removed, 4U);
        faulty.reset();
        shred({quick / namesIn(quick.path()).at(0)});
    }
}

TEST_F(VerifyTest, AFileThatCannotBeReadKeepsItsNameAndTheOthersGo) {
    for (const char* operation : {"readAt", "forgetCached"}) {
        for (int n = 1; n <= 3; ++n) {
            faulty.reset();
            faulty.failOnce(operation, n, EIO);
            const Outcome& outcome = shredFiles(3);
            expectOneIsLeft(outcome, EIO, "");
            EXPECT_EQ(outcome.filesVerified, 2U);
            shred({quick / namesIn(quick.path()).at(0)});
        }
    }
}

TEST_F(VerifyTest, ALieBehindTheOldEndIsNoConcern) {
    faulty.lie = [](int, char* bytes, std::size_t size, std::uint64_t) {
        if (size > 100) bytes[100] ^= 1;
        return static_cast<std::ptrdiff_t>(size);
    };
    EXPECT_EQ(shredFiles(3, 100).filesVerified, 3U);
    faulty.lie = [](int, char* bytes, std::size_t, std::uint64_t) {
        bytes[99] ^= 1;
        return std::ptrdiff_t{100};
    };
    EXPECT_EQ(shredFiles(3, 100).notVerified, 3U);
}

TEST_F(VerifyTest, AFileThatHasShrunkMeanwhileReadsBackOtherwise) {
    writeFile(quick / "file", recognisable(5000));
    hardLink(quick / "file", quick / "other");
    faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation == "flushFile") fs::resize_file(quick / "other", 4000);
    };
    const Outcome& outcome = shred({quick / "file"});
    EXPECT_EQ(outcome.notVerified, 1U);
    EXPECT_THAT(outcome.perItem.at(0).unverified, SizeIs(1));
}

TEST_F(VerifyTest, ShortReadsAreContinued) {
    faulty.longestRead = 777;  // at such offsets nothing can be read past memory
    const std::string file = folder / "file";
    writeFile(file, recognisable(10'000));
    EXPECT_EQ(shred({file}).filesVerified, 1U);
    EXPECT_GT(system.callsOf("readAt").size(), 10U);
}

TEST_F(VerifyTest, AFileOfSeveralNamesOrLinksHoldsWhatWasWrittenLast) {
    for (const int inMemory : {0, 1}) {
        faulty.inMemory = inMemory;
        writeFile(quick / "target", recognisable(2000));
        writeFile(tree + "/one", recognisable(3000));
        hardLink(tree + "/one", tree + "/two");
        fs::create_symlink(quick / "target", tree + "/link");
        fs::create_symlink(quick / "target", tree + "/another");
        const Outcome& outcome = shred({tree, quick / "target"});
        EXPECT_EQ(outcome.filesOverwritten, 5U);
        EXPECT_EQ(outcome.filesVerified, 5U);
        EXPECT_EQ(outcome.notVerified, 0U);
        EXPECT_THAT(namesIn(quick.path()), IsEmpty());
    }
}

TEST_F(VerifyTest, ALieOnAFileOfTwoNamesKeepsBoth) {
    writeFile(tree + "/one", recognisable(3000));
    hardLink(tree + "/one", tree + "/two");
    lieAtRead(1);
    const Outcome& outcome = shred({tree});
    EXPECT_EQ(outcome.notVerified, 2U);
    EXPECT_THAT(outcome.perItem.at(0).left, SizeIs(2));
}

TEST_F(VerifyTest, AFileThatWasNotWhollyOverwrittenIsNotReadBack) {
    faulty.failOnce("writeAt", 1, EIO);
    const Outcome& outcome = shredFiles(3);
    EXPECT_EQ(outcome.filesVerified, 2U);
    EXPECT_EQ(outcome.notVerified, 0U);
    EXPECT_THAT(system.callsOf("readAt"), SizeIs(2));
}

TEST_F(VerifyTest, AFileWhoseFlushFailedIsNotReadBack) {
    faulty.failOnce("flushFile", 2, EIO);
    const Outcome& outcome = shredFiles(3);
    EXPECT_EQ(outcome.filesVerified, 2U);
    EXPECT_EQ(outcome.notVerified, 0U);
    EXPECT_EQ(outcome.notFlushed, 1U);
}

TEST_F(VerifyTest, AStopEndsTheReadingAndWhatWasNotReadIsLeftAndTold) {
    faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation == "readAt") access.requestStop();
    };
    const Outcome& outcome = shredFiles(10);
    EXPECT_THAT(system.callsOf("readAt"), SizeIs(1));
    EXPECT_EQ(outcome.filesVerified, 1U);
    EXPECT_EQ(outcome.notVerified, 0U);
    EXPECT_TRUE(outcome.stopped);
    EXPECT_THAT(outcome.left, SizeIs(1)) << "the holding folder";
    ASSERT_THAT(outcome.perItem.at(0).left, SizeIs(9));
    EXPECT_EQ(outcome.perItem[0].left[0].code, ECANCELED);
    EXPECT_TRUE(fs::is_regular_file(outcome.perItem[0].left[0].path));
}

TEST_F(VerifyTest, AStopEndsTheReadingOfALargeFileToo) {
    writeFile(tree + "/large", std::string(5U << 20, 'x'));
    faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation == "readAt" && faulty.made["readAt"] == 1) access.requestStop();
    };
    EXPECT_EQ(shred({tree}).filesVerified, 0U);
    EXPECT_THAT(system.callsOf("readAt"), SizeIs(2));
}

TEST_F(VerifyTest, AFileThatKeepsItsNameIsReadBackToo) {
    for (const int inMemory : {0, 1}) {
        faulty.reset();
        faulty.inMemory = inMemory;
        shred({});
        writeFile(quick / "file", recognisable(1000));
        access.shredOneFile(quick / "file");
        EXPECT_EQ(access.outcome().filesVerified, 1U);
        lieAtRead(2);
        access.shredOneFile(quick / "file");
        EXPECT_EQ(access.outcome().filesVerified, 1U);
        EXPECT_EQ(access.outcome().notVerified, 1U);
        ASSERT_THAT(access.outcome().troubles, SizeIs(1));
        EXPECT_EQ(access.outcome().troubles[0].path, quick / "file");
        EXPECT_EQ(access.outcome().notRemoved, 0U) << "it was to stay";
    }
}

TEST_F(VerifyTest, WhatOtherPeopleMaySeeIsOpenedToThemOnlyOnceItReadBackRight) {
    for (const bool lies : {true, false}) {
        faulty.reset();
        writeFile(quick / "target", recognisable(1000));
        fs::permissions(quick / "target", fs::perms(0600));
        fs::create_symlink(quick / "target", tree);
        if (lies) lieAtRead(1);
        shred({tree});
        const auto bits = fs::status(quick / "target").permissions();
        EXPECT_EQ(bits, fs::perms(lies ? 0600 : 0777));
        faulty.reset();
        shred({quick / namesIn(quick.path()).at(0), quick / "target"});
    }
}

}  // namespace
}  // namespace dorvanel::test
