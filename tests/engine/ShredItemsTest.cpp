// SPDX-License-Identifier: MIT
#include <fmt/format.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>

#include "support/Disk.h"
#include "support/EngineFixture.h"
#include "support/PlainOverwrite.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class ShredItemsTest : public EngineFixture {
  protected:
    /// A tree of three folders and four files, each file with a second name outside of it.
    void makeTree(const std::string& root) {
        int number = 0;
        for (const char* name : {"a", "sub/b", "sub/inner/c", "sub/inner/d"}) {
            const std::string path = root + "/" + name;
            writeFile(path, recognisable(1000, static_cast<unsigned>(++number)));
            hardLink(path, outside / std::to_string(number));
        }
    }
    /// Whether the file, seen by its second name, holds nothing of what `makeTree` wrote.
    static bool isOverwritten(const std::string& path) {
        const std::string contents = readFile(path);
        return contents.size() >= 2000 && contents.find("Secret") == std::string::npos;
    }

    TemporaryFolder outside;
};

TEST_F(ShredItemsTest, AnEmptyListShowsZeroAndClearsTheName) {
    const Outcome& outcome = shred({});
    EXPECT_THAT(shreddingProgress.values, ElementsAre(0, 0));
    EXPECT_THAT(fileName.texts, ElementsAre(""));
    EXPECT_EQ(shreddingProgress.displays, 2);
    EXPECT_EQ(fileName.displays, 1);
    EXPECT_THAT(system.calls, IsEmpty());
    EXPECT_EQ(outcome.items, 0U);
    EXPECT_EQ(draws.next(), FeedbackSequence().next());
}

TEST_F(ShredItemsTest, ASingleEmptyFileIsRenamedAndRemovedAtZeroPercent) {
    writeFile(folder / "empty");
    const Outcome& outcome = shred({folder / "empty"});
    EXPECT_THAT(shreddingProgress.values, ElementsAre(0, 0, 0));
    EXPECT_THAT(namesIn(folder.path()), IsEmpty());
    const std::string randomName = linesOf(plainOverwrite({}, {"n1"})[0], "name")[0];
    EXPECT_THAT(log.lines(), ElementsAre(randomName));
    EXPECT_EQ(system.callsOf("removeFile")[0].name, randomName);
    EXPECT_EQ(outcome.filesRemoved, 1U);
    EXPECT_EQ(outcome.filesOverwritten, 1U);
}

TEST_F(ShredItemsTest, AFolderTreeIsOverwrittenRenamedAndRemovedWithItsHoldingFolder) {
    makeTree(folder / "tree");
    writeFile(folder / "stays", "untouched");
    std::vector<std::string> present;
    faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation != "writeAt" || !present.empty()) return;
        for (const auto& entry : fs::recursive_directory_iterator(folder.path())) {
            present.push_back(entry.path().filename());
        }
    };
    const Outcome& outcome = shred({folder / "tree"});

    for (const char* name : {"tree", "a", "sub", "b", "inner", "c", "d"}) {
        EXPECT_THAT(present, ::testing::Not(::testing::Contains(name)));
    }
    EXPECT_THAT(present, SizeIs(9));
    for (const char* name : {"1", "2", "3", "4"}) EXPECT_TRUE(isOverwritten(outside / name));
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("stays"));
    EXPECT_EQ(readFile(folder / "stays"), "untouched");
    EXPECT_EQ(outcome.items, 1U);
    EXPECT_EQ(outcome.filesOverwritten, 4U);
    EXPECT_EQ(outcome.bytesOverwritten, 4000U);
    EXPECT_EQ(outcome.filesRemoved, 4U);
    EXPECT_EQ(outcome.foldersRemoved, 3U);
    EXPECT_EQ(outcome.notOverwritten + outcome.notRemoved + outcome.notFlushed, 0U);
    EXPECT_THAT(outcome.troubles, IsEmpty());
    EXPECT_THAT(shreddingProgress.values, ElementsAre(0, 25, 50, 75, 100, 0));
}

TEST_F(ShredItemsTest, TheHoldingFolderIsNamedAfterTheTimeAndLiesBesideTheItem) {
    clock.step = {};
    makeTree(folder / "a/tree");
    shred({folder / "a/tree"});
    const auto made = system.callsOf("makeFolder");
    ASSERT_THAT(made, SizeIs(1));
    EXPECT_EQ(made[0].name, "Dorvanel X Items (1000000000)");
    EXPECT_EQ(system.callsOf("rename")[0].to, "tree") << "the item keeps its name in the move";
    EXPECT_THAT(namesIn(folder / "a"), IsEmpty());
}

TEST_F(ShredItemsTest, ANameIsDrawnForEveryEntryInBothPasses) {
    makeTree(folder / "tree");
    shred({folder / "tree"});
    // Seven entries: the first pass names four files, the second one three folders, the deepest
    // first; every entry costs a name in either pass.
    std::vector<std::string> given;
    for (const auto& call : system.callsOf("rename")) given.push_back(call.to);
    const auto plain = linesOf(plainOverwrite({}, {"n14"})[0], "name");
    ASSERT_THAT(given, SizeIs(1 + 4 + 3));
    auto last = plain.begin();
    for (auto name = given.begin() + 1; name != given.end(); ++name) {
        const auto found = std::find(last, plain.end(), *name);
        ASSERT_NE(found, plain.end()) << *name;
        EXPECT_EQ(found < plain.begin() + 7, name < given.begin() + 5);
        last = found + 1;
    }
    // All draws together: the names, then the files in turn, of which the first is known.
    const auto whole = plainOverwrite({}, {"n14+1000+1000+1000+1000"})[0];
    std::vector<std::string> writes;
    for (const auto& call : system.callsOf("writeAt")) {
        writes.push_back(fmt::format("{} {} {:016x}", call.offset, call.length, call.hash));
    }
    EXPECT_EQ(writes, linesOf(whole, "write"));
}

TEST_F(ShredItemsTest, TheLogHoldsTheRandomNamesAndNotTheFormerOnes) {
    makeTree(folder / "tree");
    shred({folder / "tree"});
    std::vector<std::string> names;
    for (const auto& call : system.callsOf("rename")) names.push_back(call.to);
    const auto lines = log.lines();
    EXPECT_THAT(lines, SizeIs(4));
    for (const std::string& line : lines) {
        EXPECT_GE(line.size(), 9U);
        EXPECT_LE(line.size(), 32U);
        EXPECT_THAT(names, ::testing::Contains(line));
    }
    const std::vector<std::string> shown(fileName.texts.begin(), fileName.texts.end() - 1);
    EXPECT_EQ(shown, lines);
}

TEST_F(ShredItemsTest, TwoItemsOfOneFolderInOneSecondShareAHoldingFolder) {
    clock.step = {};
    makeTree(folder / "one");
    writeFile(folder / "two", "second");
    const Outcome& outcome = shred({folder / "one", folder / "two"});
    EXPECT_THAT(namesIn(folder.path()), IsEmpty());
    const auto made = system.callsOf("makeFolder");
    ASSERT_THAT(made, SizeIs(1));
    EXPECT_EQ(outcome.filesOverwritten, 5U);
    EXPECT_EQ(outcome.notRemoved, 0U);
}

TEST_F(ShredItemsTest, EachItemIsDoneBeforeTheNextIsTouched) {
    writeFile(folder / "one", "first");
    writeFile(folder / "two", "second");
    int made = 0;
    faulty.before = [&](const std::string& operation, const std::string& name) {
        if (operation != "makeFolder" || ++made != 2) return;
        EXPECT_THAT(namesIn(folder.path()), ElementsAre("two")) << name;
    };
    shred({folder / "one", folder / "two"});
    EXPECT_EQ(made, 2);
    EXPECT_THAT(namesIn(folder.path()), IsEmpty());
}

TEST_F(ShredItemsTest, AHoldingFolderThatIsThereAlreadyIsUsedAndShreddedWithAllItHolds) {
    clock.step = {};
    makeTree(folder / "Dorvanel X Items (1000000000)");
    writeFile(folder / "item", "item");
    const Outcome& outcome = shred({folder / "item"});
    EXPECT_THAT(namesIn(folder.path()), IsEmpty());
    for (const char* name : {"1", "2", "3", "4"}) EXPECT_TRUE(isOverwritten(outside / name));
    EXPECT_EQ(outcome.filesOverwritten, 5U);
}

TEST_F(ShredItemsTest, AHoldingFolderOfThisVerySecondIsShreddedWhereItStands) {
    clock.step = {};
    makeTree(folder / "Dorvanel X Items (1000000000)");
    const Outcome& outcome = shred({folder / "Dorvanel X Items (1000000000)"});
    EXPECT_THAT(namesIn(folder.path()), IsEmpty());
    for (const char* name : {"1", "2", "3", "4"}) EXPECT_TRUE(isOverwritten(outside / name));
    EXPECT_EQ(outcome.notRemoved, 0U);
}

TEST_F(ShredItemsTest, AnItemWhoseNameIsTakenInTheHoldingFolderStaysAndIsCounted) {
    clock.step = {};
    writeFile(folder / "Dorvanel X Items (1000000000)/item", "former");
    writeFile(folder / "item", "kept");
    const Outcome& outcome = shred({folder / "item"});
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("item"));
    EXPECT_EQ(readFile(folder / "item"), "kept");
    EXPECT_EQ(outcome.notRemoved, 1U);
    ASSERT_THAT(outcome.troubles, SizeIs(1));
    EXPECT_EQ(outcome.troubles[0].path, folder / "item");
    EXPECT_EQ(outcome.troubles[0].operation, "move");
}

TEST_F(ShredItemsTest, AFileOfTheHoldingFoldersNameStaysAsItIsAndSoDoesTheItem) {
    clock.step = {};
    writeFile(folder / "Dorvanel X Items (1000000000)", "not ours");
    writeFile(folder / "item", "kept");
    const Outcome& outcome = shred({folder / "item"});
    EXPECT_EQ(readFile(folder / "Dorvanel X Items (1000000000)"), "not ours");
    EXPECT_EQ(readFile(folder / "item"), "kept");
    EXPECT_EQ(outcome.notRemoved, 1U);
    ASSERT_THAT(outcome.troubles, SizeIs(1));
    EXPECT_EQ(outcome.troubles[0].path, folder / "item");
    EXPECT_THAT(outcome.troubles[0].reason, ::testing::HasSubstr("is in the way"));
}

TEST_F(ShredItemsTest, ALeftoverIsOverwrittenWhollyWhenTheRandomNamesRepeat) {
    // A run that was cut short leaves files with the first names of the sequence. A second process
    // draws the same names, in whatever order it meets the files: none may replace another.
    const auto names = linesOf(plainOverwrite({}, {"n40"})[0], "name");
    for (int i = 39; i >= 0; --i) {
        const std::string number = std::to_string(i);
        const std::string path = folder / ("left/" + names[static_cast<std::size_t>(i)]);
        writeFile(path, recognisable(1000, static_cast<unsigned>(i)));
        hardLink(path, outside / number);
    }
    const Outcome& outcome = shred({folder / "left"});
    for (int i = 0; i < 40; ++i) EXPECT_TRUE(isOverwritten(outside / std::to_string(i))) << i;
    EXPECT_EQ(outcome.filesOverwritten, 40U);
    EXPECT_EQ(outcome.filesRemoved, 40U);
    EXPECT_THAT(namesIn(folder.path()), IsEmpty());
}

TEST_F(ShredItemsTest, ItemsThatDoNotExistArePassedOverInSilence) {
    writeFile(folder / "there", "x");
    const Outcome& outcome =
        shred({folder / "nothing", folder / "there", folder / "there/below", ""});
    EXPECT_EQ(outcome.items, 1U);
    EXPECT_EQ(outcome.notRemoved, 0U);
    EXPECT_THAT(outcome.troubles, IsEmpty());
    EXPECT_THAT(namesIn(folder.path()), IsEmpty());
}

TEST_F(ShredItemsTest, AnItemNamedTwiceIsShreddedOnce) {
    writeFile(folder / "item", "x");
    const Outcome& outcome = shred({folder / "item", folder / "item"});
    EXPECT_EQ(outcome.items, 1U);
    EXPECT_EQ(outcome.notRemoved, 0U);
}

TEST_F(ShredItemsTest, AnItemThatVanishesBeforeTheMoveIsNamed) {
    writeFile(folder / "item", "x");
    faulty.before = [&](const std::string& operation, const std::string& name) {
        if (operation == "rename" && name == "item") fs::remove(folder / "item");
    };
    const Outcome& outcome = shred({folder / "item"});
    EXPECT_EQ(outcome.vanished, 1U);
    ASSERT_THAT(outcome.troubles, SizeIs(1));
    EXPECT_EQ(outcome.troubles[0].path, folder / "item");
    EXPECT_EQ(outcome.troubles[0].operation, "find");
    EXPECT_EQ(outcome.notRemoved, 0U);
    EXPECT_THAT(namesIn(folder.path()), IsEmpty());
}

TEST_F(ShredItemsTest, AnEntryThatVanishesBeforeTheRenamingIsNamedAsItWasCalled) {
    makeTree(folder / "tree");
    faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation == "makeFolder") fs::remove(folder / "tree/sub/inner/d");
    };
    const Outcome& outcome = shred({folder / "tree"});
    EXPECT_EQ(outcome.vanished, 1U);
    ASSERT_THAT(outcome.troubles, SizeIs(1));
    EXPECT_EQ(outcome.troubles[0].path, folder / "tree/sub/inner/d");
    EXPECT_EQ(outcome.filesOverwritten, 3U);
}

TEST_F(ShredItemsTest, AFolderThatVanishesBeforeTheRenamingIsNamedOnce) {
    makeTree(folder / "tree");
    faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation == "makeFolder") fs::remove_all(folder / "tree/sub");
    };
    const Outcome& outcome = shred({folder / "tree"});
    EXPECT_EQ(outcome.vanished, 1U);
    ASSERT_THAT(outcome.troubles, SizeIs(1));
    EXPECT_EQ(outcome.troubles[0].path, folder / "tree/sub");
}

TEST_F(ShredItemsTest, EntriesThatVanishAfterTheRenamingAreCounted) {
    makeTree(folder / "tree");
    bool done = false;
    faulty.before = [&](const std::string& operation, const std::string& name) {
        // The last listing of all: of the item, whose random name is in the log of no file.
        if (operation != "openFolder" || done || faulty.made["rename"] < 8 || name == ".") return;
        done = true;
        for (const auto& entry : fs::recursive_directory_iterator(folder.path())) {
            if (entry.is_regular_file()) {
                fs::remove(entry.path());
                break;
            }
        }
    };
    const Outcome& outcome = shred({folder / "tree"});
    EXPECT_TRUE(done);
    EXPECT_EQ(outcome.vanished, 1U);
    EXPECT_EQ(outcome.filesOverwritten, 3U);
    EXPECT_FALSE(outcome.troubles.empty());
}

TEST_F(ShredItemsTest, AnItemInsideAnEarlierOneGoesWithItAndIsNotMissed) {
    makeTree(folder / "tree");
    const Outcome& outcome = shred({folder / "tree", folder / "tree/sub", folder / "tree/a"});
    EXPECT_EQ(outcome.items, 1U);
    EXPECT_EQ(outcome.vanished + outcome.notRemoved, 0U);
    EXPECT_THAT(outcome.troubles, IsEmpty());
    EXPECT_THAT(namesIn(folder.path()), IsEmpty());
}

TEST_F(ShredItemsTest, AnItemInsideALaterOneGoesFirstAndIsNotMissedThere) {
    for (const int inMemory : {0, 1}) {
        faulty.inMemory = inMemory;
        for (const char* name : {"tree/a", "tree/b", "tree/sub/c"}) writeFile(folder / name, "x");
        const Outcome& outcome = shred({folder / "tree/a", folder / "tree"});
        EXPECT_EQ(outcome.items, 2U);
        EXPECT_EQ(outcome.vanished + outcome.notRemoved + outcome.notOverwritten, 0U);
        EXPECT_THAT(outcome.troubles, IsEmpty());
        EXPECT_EQ(outcome.filesOverwritten, 3U) << "each once";
        EXPECT_EQ(outcome.filesRemoved, 3U);
        EXPECT_EQ(outcome.foldersRemoved, 2U);
        EXPECT_THAT(namesIn(folder.path()), IsEmpty());
    }
}

TEST_F(ShredItemsTest, EntriesThatVanishDuringTheRunAreNamedAndNothingIsLeft) {
    makeTree(folder / "tree");
    bool done = false;
    faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation != "openFile" || done) return;
        done = true;
        for (const auto& entry : fs::directory_iterator(folder.path())) {
            for (const auto& inner : fs::directory_iterator(entry.path())) {
                fs::remove_all(inner.path());
            }
        }
    };
    const Outcome& outcome = shred({folder / "tree"});
    EXPECT_TRUE(done);
    EXPECT_GT(outcome.vanished, 0U);
    EXPECT_EQ(outcome.notRemoved, 0U);
    EXPECT_THAT(namesIn(folder.path()), IsEmpty());
}

TEST_F(ShredItemsTest, TheFolderOfAFormerRunThatServesAnItemIsNotMissedWhenItsTurnComes) {
    const std::string former =
        folder / fmt::format("Dorvanel X Items ({})", static_cast<long long>(clock.time()));
    writeFile(folder / "item", "x");
    writeFile(folder / "other", "x");
    writeFile(former + "/left", recognisable(1000));
    setMode(former, 0700);
    const Outcome& outcome = shred({folder / "item", folder / "other", former, former + "/left"});
    EXPECT_EQ(outcome.vanished + outcome.notRemoved, 0U);
    EXPECT_THAT(outcome.troubles, IsEmpty());
    EXPECT_EQ(outcome.filesOverwritten, 3U);
    EXPECT_THAT(namesIn(folder.path()), IsEmpty());
}

TEST_F(ShredItemsTest, TrailingSlashesAndDotsDoNotMatter) {
    makeTree(folder / "tree");
    shred({(folder / "tree") + "//./"});
    EXPECT_THAT(namesIn(folder.path()), IsEmpty());
    EXPECT_THAT(namesIn(outside.path()), SizeIs(4));
}

TEST_F(ShredItemsTest, ASecondRequestStartsItsCountsAnew) {
    writeFile(folder / "one", recognisable(1000));
    shred({folder / "one"});
    writeFile(folder / "two", recognisable(500));
    const Outcome& outcome = shred({folder / "two"});
    EXPECT_EQ(outcome.items, 1U);
    EXPECT_EQ(outcome.bytesOverwritten, 500U);
    EXPECT_THAT(shreddingProgress.values, ElementsAre(0, 100, 0, 0, 100, 0));
}

TEST(ShredItemsSequenceTest, AnItemThatCannotBeMovedTakesNothingFromTheSequence) {
    const auto contentsAfter = [](bool withOneThatStays) {
        TemporaryFolder folder;
        writeFile(folder / "stays", "x");
        writeFile(folder / "goes", std::string(5000, 'x'));
        hardLink(folder / "goes", folder / "witness");
        TestEngine engine;
        if (withOneThatStays) engine.faulty.failOnce("rename", 1, EPERM);
        std::vector<std::string> items = {folder / "goes"};
        if (withOneThatStays) items.insert(items.begin(), folder / "stays");
        const std::uint64_t left = engine.shred(items).notRemoved;
        EXPECT_EQ(left, withOneThatStays ? 1U : 0U);
        return readFile(folder / "witness");
    };
    const std::string alone = contentsAfter(false);
    EXPECT_NE(alone.substr(0, 10), "xxxxxxxxxx");
    EXPECT_EQ(contentsAfter(true), alone);
}

TEST(ShredItemsSequenceTest, AnItemWhoseRandomNameIsTakenIsMovedUnderItsOwnAndDrawsNoOther) {
    const auto contentsAfter = [](bool taken) {
        TemporaryFolder folder;
        writeFile(folder / "goes", std::string(5000, 'x'));
        hardLink(folder / "goes", folder / "witness");
        TestEngine engine;
        if (taken) engine.faulty.failOnce("rename", 1, EEXIST);
        EXPECT_EQ(engine.shred({folder / "goes"}).notRemoved, 0U);
        EXPECT_THAT(namesIn(folder.path()), ElementsAre("witness"));
        return readFile(folder / "witness");
    };
    EXPECT_EQ(contentsAfter(true), contentsAfter(false));
}

}  // namespace
}  // namespace dorvanel::test
