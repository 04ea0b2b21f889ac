// SPDX-License-Identifier: MIT

// What is told of each item of a request: what was done to it, and what is left of it, where, and
// under which name it was known.
#include <fmt/format.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <new>
#include <set>

#include "support/Disk.h"
#include "support/EngineFixture.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAre;

class PerItemOutcomeTest : public EngineFixture {
  protected:
    PerItemOutcomeTest() { faulty.inMemory = 0; }

    void makeTree() {
        writeFile(tree + "/a", recognisable(1000));
        writeFile(tree + "/sub/b", recognisable(2000));
        writeFile(tree + "/sub/inner/c", recognisable(3000));
    }
    static std::vector<std::string> formerPaths(const std::vector<ItemOutcome::Trouble>& troubles) {
        std::vector<std::string> paths;
        for (const auto& trouble : troubles) paths.push_back(trouble.was);
        return paths;
    }

    TemporaryFolder quick{quickPlace()};
    std::string tree = quick / "tree";
};

TEST_F(PerItemOutcomeTest, EachItemCountsForItselfThoughTheNamesGoInOneBatch) {
    makeTree();
    writeFile(quick / "file", recognisable(70));
    writeFile(quick / "target", recognisable(80));
    fs::create_symlink(quick / "target", quick / "link");
    const Outcome& outcome = shred({tree, quick / "file", quick / "missing", quick / "link"});
    ASSERT_THAT(outcome.perItem, SizeIs(3));
    const ItemOutcome& first = outcome.perItem[0];
    EXPECT_EQ(first.path, tree);
    EXPECT_EQ(first.overwritten, 3U);
    EXPECT_EQ(first.bytes, 6000U);
    EXPECT_EQ(first.removed, 6U);
    EXPECT_EQ(outcome.perItem[1].path, quick / "file");
    EXPECT_EQ(outcome.perItem[1].bytes, 70U);
    EXPECT_EQ(outcome.perItem[1].removed, 1U);
    EXPECT_EQ(outcome.perItem[2].path, quick / "link");
    EXPECT_EQ(outcome.perItem[2].bytes, 80U) << "the file that the link leads to";
    EXPECT_EQ(outcome.perItem[2].removed, 1U);
    for (const ItemOutcome& item : outcome.perItem) {
        EXPECT_THAT(item.left, IsEmpty());
        EXPECT_THAT(item.unwritten, IsEmpty());
        EXPECT_THAT(item.unverified, IsEmpty());
    }
}

TEST_F(PerItemOutcomeTest, ALaterRequestTellsOfItsOwnItemsOnly) {
    makeTree();
    shred({tree});
    writeFile(quick / "file", "x");
    EXPECT_THAT(shred({quick / "file"}).perItem, SizeIs(1));
    writeFile(quick / "alone", "x");
    access.shredOneFile(quick / "alone");
    EXPECT_EQ(access.outcome().perItem[0].overwritten, 1U);
}

TEST_F(PerItemOutcomeTest, AnItemThatWentWithAnEarlierOneHasALineOfItsOwn) {
    makeTree();
    const Outcome& outcome = shred({tree, tree + "/a"});
    ASSERT_THAT(outcome.perItem, SizeIs(2));
    EXPECT_EQ(outcome.perItem[1].path, tree + "/a");
    EXPECT_EQ(outcome.perItem[1].removed, 0U);
}

TEST_F(PerItemOutcomeTest, WhatCannotBeRemovedIsToldWithTheNameThatItHad) {
    makeTree();
    writeFile(quick / "file", "x");
    faulty.failAlways("removeFile", EACCES);
    const Outcome& outcome = shred({tree, quick / "file"});
    const auto& left = outcome.perItem[0].left;
    // The folders stay only for what is in them.
    EXPECT_THAT(formerPaths(left),
                UnorderedElementsAre(tree + "/a", tree + "/sub/b", tree + "/sub/inner/c"));
    for (const auto& trouble : left) {
        EXPECT_TRUE(fs::is_regular_file(trouble.path)) << trouble.path;
        EXPECT_EQ(trouble.operation, "remove");
        EXPECT_EQ(trouble.code, EACCES);
    }
    EXPECT_EQ(outcome.perItem[0].removed, 0U);
    EXPECT_THAT(formerPaths(outcome.perItem[1].left), ElementsAre(quick / "file"));
    EXPECT_TRUE(fs::is_regular_file(outcome.perItem[1].left[0].path));
}

TEST_F(PerItemOutcomeTest, EveryNameOfAFileIsAsGoodAsTheOthers) {
    writeFile(tree + "/one", "x");
    hardLink(tree + "/one", tree + "/two");
    faulty.failAlways("removeFile", EACCES);
    for (const std::string& was : formerPaths(shred({tree}).perItem[0].left)) {
        EXPECT_TRUE(was == tree + "/one" || was == tree + "/two") << was;
    }
}

TEST_F(PerItemOutcomeTest, AFolderThatCannotBeRemovedIsToldWithTheNameThatItHad) {
    makeTree();
    faulty.failAlways("removeFolder", EACCES);
    const Outcome& outcome = shred({tree});
    const auto was = formerPaths(outcome.perItem[0].left);
    EXPECT_THAT(was, ::testing::IsSupersetOf({tree, tree + "/sub", tree + "/sub/inner"}));
    EXPECT_EQ(outcome.perItem[0].removed, 3U);
}

TEST_F(PerItemOutcomeTest, AFolderThatCannotBeListedIsToldAndNotThoseAboveIt) {
    makeTree();
    int listings = 0;
    faulty.before = [&](const std::string& operation, const std::string&) {
        // Measured and renamed forward, three folders each, and backward, without the one that
        // holds nothing but a file. Then the second one.
        if (operation == "readFolder" && ++listings == 10) faulty.failOnce("readFolder", 1, EIO);
    };
    const Outcome& outcome = shred({tree});
    ASSERT_EQ(faulty.failed, 1);
    EXPECT_THAT(formerPaths(outcome.perItem[0].left), ElementsAre(tree + "/sub"));
    EXPECT_TRUE(fs::is_directory(outcome.perItem[0].left.at(0).path));
}

TEST_F(PerItemOutcomeTest, WhatWentWithoutBeingOverwrittenIsToldWithTheNameThatItHad) {
    makeTree();
    faulty.failAlways("writeAt", EIO);
    const Outcome& outcome = shred({tree});
    EXPECT_THAT(formerPaths(outcome.perItem[0].unwritten),
                UnorderedElementsAre(tree + "/a", tree + "/sub/b", tree + "/sub/inner/c"));
    EXPECT_EQ(outcome.perItem[0].unwritten[0].operation, "write");
    EXPECT_THAT(outcome.perItem[0].left, IsEmpty());
    EXPECT_EQ(outcome.perItem[0].overwritten, 0U);
    EXPECT_EQ(outcome.perItem[0].removed, 6U);
}

TEST_F(PerItemOutcomeTest, WhatIsNeitherOverwrittenNorRemovedIsLeftAndNotSaidToHaveGone) {
    makeTree();
    faulty.failAlways("openFile", EIO);
    faulty.failAlways("removeFile", EIO);
    const Outcome& outcome = shred({tree});
    EXPECT_THAT(outcome.perItem[0].unwritten, IsEmpty());
    EXPECT_THAT(outcome.perItem[0].left, SizeIs(3));
}

TEST_F(PerItemOutcomeTest, AFileWhoseFlushFailedIsLeft) {
    makeTree();
    faulty.failOnce("flushFile", 1, EIO);
    const Outcome& outcome = shred({tree});
    ASSERT_THAT(outcome.perItem[0].left, SizeIs(1));
    EXPECT_EQ(outcome.perItem[0].left[0].operation, "flush");
    EXPECT_THAT(outcome.perItem[0].left[0].was, StartsWith(tree + "/"));
    EXPECT_TRUE(fs::is_regular_file(outcome.perItem[0].left[0].path));
}

TEST_F(PerItemOutcomeTest, AnItemThatIsRefusedOrCannotBeMovedIsLeftInItsPlace) {
    makeTree();
    platform::FileStatus status;
    real->statusAt(platform::SystemCalls::workingFolder, tree.c_str(),
                   platform::SystemCalls::Links::stay, status);
    access.protect({Identity::of(status)});
    writeFile(quick / "file", "x");
    faulty.failAlways("makeFolder", EROFS);
    const Outcome& outcome = shred({tree, quick / "file"});
    ASSERT_THAT(outcome.perItem[0].left, SizeIs(1));
    EXPECT_EQ(outcome.perItem[0].left[0].path, tree);
    EXPECT_EQ(outcome.perItem[0].left[0].was, "") << "it was not moved";
    EXPECT_NE(outcome.perItem[0].left[0].reason, "");
    ASSERT_THAT(outcome.perItem[1].left, SizeIs(1));
    EXPECT_EQ(outcome.perItem[1].left[0].path, quick / "file");
    EXPECT_EQ(outcome.perItem[1].left[0].code, EROFS);
}

TEST_F(PerItemOutcomeTest, AnItemThatVanishedIsToldAsGoneUnwritten) {
    writeFile(quick / "file", "x");
    faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation == "makeFolder") fs::remove(quick / "file");
    };
    const Outcome& outcome = shred({quick / "file"});
    ASSERT_THAT(outcome.perItem, SizeIs(1));
    ASSERT_THAT(outcome.perItem[0].unwritten, SizeIs(1));
    EXPECT_EQ(outcome.perItem[0].unwritten[0].operation, "find");
    EXPECT_EQ(outcome.perItem[0].unwritten[0].path, quick / "file");
}

TEST_F(PerItemOutcomeTest, AfterAStopEveryItemThatIsNotDoneIsLeft) {
    makeTree();
    writeFile(quick / "first", "x");
    writeFile(quick / "last", "x");
    faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation == "writeAt" && faulty.made["writeAt"] == 3) access.requestStop();
    };
    const Outcome& outcome = shred({quick / "first", tree, quick / "last"});
    ASSERT_THAT(outcome.perItem, SizeIs(3));
    EXPECT_THAT(outcome.perItem[0].left, IsEmpty());
    EXPECT_EQ(outcome.perItem[0].removed, 1U);
    ASSERT_THAT(outcome.perItem[1].left, SizeIs(1));
    EXPECT_EQ(outcome.perItem[1].left[0].was, tree);
    EXPECT_TRUE(fs::is_directory(outcome.perItem[1].left[0].path));
    ASSERT_THAT(outcome.perItem[2].left, SizeIs(1));
    EXPECT_EQ(outcome.perItem[2].left[0].path, quick / "last");
    EXPECT_EQ(outcome.perItem[2].left[0].code, ECANCELED);
}

TEST_F(PerItemOutcomeTest, TheListsAreBoundedAndTheCountsAreTrue) {
    constexpr int files = Outcome::keptTroubles / 2 + 100;
    for (int i = 0; i < files; ++i) {
        writeFile(quick / ("one/" + std::to_string(i)), "x");
        writeFile(quick / ("two/" + std::to_string(i)), "x");
    }
    faulty.failAlways("removeFile", EACCES);
    const Outcome& outcome = shred({quick / "one", quick / "two"});
    EXPECT_EQ(outcome.perItem[0].left.size() + outcome.perItem[1].left.size(),
              Outcome::keptTroubles);
    EXPECT_EQ(outcome.perItem[1].overwritten, static_cast<std::uint64_t>(files));
}

TEST_F(PerItemOutcomeTest, WhereNumbersChangeWithTheNameTheFormerOneIsNotKnown) {
    class NumbersOfNow final : public ForwardingSystemCalls {
      public:
        using ForwardingSystemCalls::ForwardingSystemCalls;
        int readFolder(int folder, platform::FolderListing& listing) override {
            platform::FolderListing told;
            const int result = ForwardingSystemCalls::readFolder(folder, told);
            listing.clear();
            for (std::size_t i = 0; i < told.size(); ++i) {
                listing.add(told.name(i), told.kind(i), 0xFFFFFFFF);
            }
            return result;
        }
    };
    makeTree();
    faulty.failAlways("removeFile", EACCES);
    NumbersOfNow numbers(faulty);
    FileAccess engine({numbers, clock, draws}, preferences, shreddingProgress, fileName);
    std::vector<std::string> paths{tree};
    engine.shredDroppedFile(paths);
    EXPECT_THAT(formerPaths(engine.outcome().perItem[0].left), ElementsAre("", "", ""));
}

/// All that is still in the folder is named, or lies in what is named, and all that is named is
/// there.
void expectToldAndThere(const Outcome& outcome, const TemporaryFolder& place) {
    std::vector<std::string> told;
    for (const ItemOutcome& item : outcome.perItem) {
        for (const auto& trouble : item.left) {
            told.push_back(trouble.path);
            EXPECT_TRUE(fs::exists(fs::symlink_status(trouble.path)))
                << trouble.path << " (" << trouble.operation << ")";
        }
        for (const auto& trouble : item.unwritten) {
            EXPECT_EQ(std::ranges::count(told, trouble.path), 0) << trouble.path;
        }
    }
    for (const std::string& name : namesIn(place.path())) {
        const std::string path = place / name;
        EXPECT_TRUE(std::ranges::any_of(told, [&](const std::string& one) {
            return one == path || one.starts_with(path + "/");
        })) << path;
    }
}

class PerItemFaultsTest : public ::testing::TestWithParam<std::string> {
  protected:
    static std::vector<std::string> makeItems(const TemporaryFolder& place) {
        for (const char* name : {"tree/a", "tree/sub/b", "tree/sub/inner/c", "two"}) {
            writeFile(place / name, recognisable(300));
        }
        fs::create_symlink("nowhere", place / "tree/link");
        return {place / "tree", place / "two"};
    }
};

TEST_P(PerItemFaultsTest, WhateverStaysAfterAFailedCallIsTold) {
    const std::string operation = GetParam();
    const TemporaryHome home;
    bool failed = true;
    for (int n = 1; failed; ++n) {
        SCOPED_TRACE(fmt::format("{} number {}", operation, n));
        const TemporaryFolder place(quickPlace());
        TestEngine engine;
        engine.faulty.inMemory = 0;
        engine.faulty.failOnce(operation, n, EIO);
        const Outcome& outcome = engine.shred(makeItems(place));
        failed = engine.faulty.failed > 0;
        // A call that is never told of: what could not be looked at is not known to be there.
        expectToldAndThere(outcome, place);
        if (HasFailure()) return;
    }
}

TEST_P(PerItemFaultsTest, WhateverStaysWhenMemoryRunsOutIsTold) {
    const std::string operation = GetParam();
    if (operation == "close") return;  // it needs no memory
    const TemporaryHome home;
    bool failed = true;
    for (int n = 1; failed; ++n) {
        SCOPED_TRACE(fmt::format("{} number {}", operation, n));
        const TemporaryFolder place(quickPlace());
        TestEngine engine;
        engine.faulty.inMemory = 0;
        failed = false;
        int calls = 0;
        engine.faulty.before = [&](const std::string& call, const std::string&) {
            if (call != operation || ++calls != n) return;
            failed = true;
            throw std::bad_alloc();
        };
        const Outcome& outcome = engine.shred(makeItems(place));
        if (failed) expectToldAndThere(outcome, place);
        if (HasFailure()) return;
    }
}

INSTANTIATE_TEST_SUITE_P(Of, PerItemFaultsTest,
                         ::testing::ValuesIn(FaultySystemCalls::operations()),
                         [](const auto& test) { return test.param; });

}  // namespace
}  // namespace dorvanel::test
