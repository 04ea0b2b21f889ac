// SPDX-License-Identifier: MIT
#include <fmt/format.h>
#include <gmock/gmock.h>

#include <algorithm>

#include "support/Disk.h"
#include "support/EngineFixture.h"
#include "support/PlainOverwrite.h"

namespace dorvanel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::size_t block = 131072;

/// The overwriting of one file by path.
class OverwriteTest : public EngineFixture {
  protected:
    /// Makes a file and overwrites it.
    std::string overwrite(std::size_t size) {
        const std::string path = folder / "file";
        writeFile(path, recognisable(size));
        system.calls.clear();
        access.shredOneFile(path);
        return path;
    }
    void standards(bool doD, bool nsa) {
        preferences.set("DoDSanitize", doD);
        preferences.set("NSA", nsa);
    }
    /// "offset+length" of every write.
    [[nodiscard]] std::vector<std::string> ranges() const {
        std::vector<std::string> found;
        for (const auto& call : system.callsOf("writeAt")) {
            found.push_back(std::to_string(call.offset) + "+" + std::to_string(call.length));
        }
        return found;
    }
    /// What every write at the offset wrote: a fixed byte by its name, else "random".
    [[nodiscard]] std::vector<std::string> patternsAt(std::uint64_t offset) const {
        std::vector<std::string> found;
        for (const auto& call : system.callsOf("writeAt")) {
            if (call.offset == offset) found.push_back(patternOf(call));
        }
        return found;
    }

  private:
    static std::string patternOf(const RecordingSystemCalls::Call& call) {
        const std::pair<char, const char*> bytes[] = {
            {'\0', "00"}, {'\xFF', "FF"}, {'\x55', "55"}, {'\xAA', "AA"}};
        for (const auto& [byte, name] : bytes) {
            const std::string contents(call.length, byte);
            if (call.hash == contentHash(contents.data(), contents.size())) return name;
        }
        return "random";
    }
};

TEST_F(OverwriteTest, AnEmptyFileIsNotWrittenButLoggedAndItsProgressShownOnce) {
    const std::string path = overwrite(0);
    EXPECT_THAT(ranges(), IsEmpty());
    EXPECT_EQ(std::filesystem::file_size(path), 0U);
    EXPECT_THAT(log.lines(), ElementsAre("file"));
    EXPECT_THAT(shreddingProgress.values, ElementsAre(0.0));
    EXPECT_EQ(system.callsOf("openFile").size(), 1U);
}

TEST_F(OverwriteTest, AFileOfOneBlockIsTwiceAsLongWhenClosed) {
    const std::string path = overwrite(block);
    EXPECT_THAT(ranges(), ElementsAre("0+131072", "131072+131072"));
    EXPECT_EQ(std::filesystem::file_size(path), 2 * block);
}

TEST_F(OverwriteTest, AFileOneByteLongerThanABlockIsTwoBlocksAndOneByteBehindTheEnd) {
    const std::string path = overwrite(block + 1);
    EXPECT_THAT(ranges(), ElementsAre("0+131072", "131072+1", "131073+1"));
    EXPECT_EQ(std::filesystem::file_size(path), block + 2);
}

TEST_F(OverwriteTest, EveryPassOfABlockIsWrittenBeforeTheNextBlock) {
    preferences.set("NumberOfWrites", 3);
    overwrite(block + 5);
    EXPECT_THAT(ranges(), ElementsAre("0+131072", "0+131072", "131072+5", "131072+5", "131077+5",
                                      "131077+5"));
}

TEST_F(OverwriteTest, IndexZeroGivesEachBlockItsOwnRandomCount) {
    preferences.set("NumberOfWrites", 0);
    overwrite(40 * block);
    std::vector<std::size_t> counts;
    for (std::uint64_t at = 0; at < 40; ++at) counts.push_back(patternsAt(at * block).size());
    for (std::size_t passes = 1; passes <= 4; ++passes) {
        EXPECT_GT(std::count(counts.begin(), counts.end(), passes), 0) << passes;
    }
    EXPECT_EQ(std::count_if(counts.begin(), counts.end(), [](auto n) { return n < 1 || n > 4; }),
              0);
}

TEST_F(OverwriteTest, IndexTwelveWithDoDIsFifteenPasses) {
    preferences.set("NumberOfWrites", 12);
    preferences.set("OverwritePattern", 3);
    standards(true, false);
    overwrite(100);
    std::vector<std::string> expected(12, "00");
    expected.insert(expected.end(), {"55", "AA", "random"});
    EXPECT_EQ(patternsAt(0), expected);
    EXPECT_EQ(patternsAt(100), expected);
}

TEST_F(OverwriteTest, OnePassWithDoDIsThreeFivesTensAndRandom) {
    standards(true, false);
    overwrite(100);
    EXPECT_THAT(patternsAt(0), ElementsAre("55", "AA", "random"));
    EXPECT_THAT(patternsAt(100), ElementsAre("55", "AA", "random"));
}

TEST_F(OverwriteTest, OnePassWithNSAIsThreeRandomRandomAndZeros) {
    standards(false, true);
    overwrite(100);
    EXPECT_THAT(patternsAt(0), ElementsAre("random", "random", "00"));
    EXPECT_THAT(patternsAt(100), ElementsAre("random", "random", "00"));
}

TEST_F(OverwriteTest, OnePassWithBothIsFiveTheFirstTwoWithTheUsersPattern) {
    preferences.set("OverwritePattern", 4);
    standards(true, true);
    overwrite(100);
    EXPECT_THAT(patternsAt(0), ElementsAre("FF", "FF", "random", "random", "00"));
    EXPECT_THAT(patternsAt(100), ElementsAre("FF", "FF", "random", "random", "00"));
}

TEST_F(OverwriteTest, EveryRandomPassWritesNewData) {
    preferences.set("NumberOfWrites", 5);
    overwrite(4096);
    std::vector<std::uint64_t> hashes;
    for (const auto& call : system.callsOf("writeAt")) hashes.push_back(call.hash);
    std::sort(hashes.begin(), hashes.end());
    EXPECT_EQ(hashes.size(), 8U);
    EXPECT_EQ(std::unique(hashes.begin(), hashes.end()), hashes.end());
}

TEST_F(OverwriteTest, PatternOneWritesZerosInANewEngine) {
    preferences.set("OverwritePattern", 1);
    const std::string path = overwrite(5000);
    EXPECT_EQ(readFile(path), std::string(10000, '\0'));
}

TEST_F(OverwriteTest, PatternOneWritesWhatTheBufferLastHeld) {
    preferences.set("OverwritePattern", 5);
    overwrite(10);
    preferences.set("OverwritePattern", 1);
    const std::string path = overwrite(block);
    EXPECT_EQ(readFile(path), std::string(2 * block, '\x55'));
}

TEST_F(OverwriteTest, IndexOneIsSixtyFiveThousandFiveHundredAndThirtySixPasses) {
    preferences.set("NumberOfWrites", 1);
    preferences.set("OverwritePattern", 6);
    overwrite(1);
    EXPECT_EQ(patternsAt(0).size(), 65536U);
    EXPECT_EQ(patternsAt(1).size(), 65536U);
}

TEST_F(OverwriteTest, ASymbolicLinkHasItsTargetOpenedMeasuredAndOverwritten) {
    writeFile(folder / "target", recognisable(300));
    std::filesystem::create_symlink("target", folder / "link");
    access.shredOneFile(folder / "link");
    EXPECT_THAT(ranges(), ElementsAre("0+300", "300+300"));
    EXPECT_EQ(std::filesystem::file_size(folder / "target"), 600U);
    EXPECT_THAT(log.lines(), ElementsAre("link"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
}

TEST_F(OverwriteTest, APathThatLeadsNowhereDoesNothing) {
    access.shredOneFile(folder / "nothing");
    access.shredOneFile(folder / "no folder/nothing");
    EXPECT_THAT(ranges(), IsEmpty());
    EXPECT_THAT(log.lines(), IsEmpty());
    EXPECT_THAT(fileName.texts, IsEmpty());
    EXPECT_EQ(draws.next(), FeedbackSequence().next()) << "nothing was drawn";
}

TEST_F(OverwriteTest, AFolderIsNotTouched) {
    access.shredOneFile(folder.path());
    EXPECT_THAT(log.lines(), IsEmpty());
    EXPECT_EQ(draws.next(), FeedbackSequence().next());
}

TEST_F(OverwriteTest, AFileThatCannotBeOpenedIsNotLogged) {
    writeFile(folder / "file", "kept");
    faulty.failAlways("openFile", EACCES);
    faulty.failAlways("reopenFile", EACCES);
    access.shredOneFile(folder / "file");
    EXPECT_EQ(readFile(folder / "file"), "kept");
    EXPECT_THAT(log.lines(), IsEmpty());
    EXPECT_EQ(draws.next(), FeedbackSequence().next());
    EXPECT_EQ(access.outcome().notOverwritten, 1U);
}

TEST_F(OverwriteTest, TheOldBlocksAreKeptSinceTheFileIsNeverTruncated) {
    writeFile(folder / "file", recognisable(3 * block));
    std::vector<std::uintmax_t> sizes;
    faulty.before = [&](const std::string&, const std::string&) {
        sizes.push_back(std::filesystem::file_size(folder / "file"));
    };
    access.shredOneFile(folder / "file");
    EXPECT_TRUE(std::is_sorted(sizes.begin(), sizes.end()));
    EXPECT_EQ(sizes.front(), 3 * block);
}

TEST_F(OverwriteTest, ThePatternIsReadAgainForEveryRandomPass) {
    preferences.set("NumberOfWrites", 5);  // 4 passes
    preferences.set("OverwritePattern", 0);
    faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation == "writeAt" && faulty.made["writeAt"] == 1) {
            preferences.set("OverwritePattern", 4);
        }
    };
    overwrite(100);
    // The file began as a random one, so the buffer is filled anew after each pass: by what the
    // preference says then.
    EXPECT_THAT(patternsAt(0), ElementsAre("random", "random", "FF", "FF"));
    EXPECT_THAT(patternsAt(100), ElementsAre("FF", "FF", "FF", "FF"));
}

TEST_F(OverwriteTest, APatternThatBeganFixedIsReadAgainOnlyForTheSlack) {
    preferences.set("NumberOfWrites", 4);
    preferences.set("OverwritePattern", 5);
    faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation == "writeAt" && faulty.made["writeAt"] == 0) {
            preferences.set("OverwritePattern", 6);
        }
    };
    overwrite(100);
    EXPECT_THAT(patternsAt(0), ElementsAre("55", "55", "55"));
    EXPECT_THAT(patternsAt(100), ElementsAre("AA", "AA", "AA"));
}

TEST_F(OverwriteTest, TheNumberOfWritesIsKeptForTheWholeFileAndTheStandardsAreNot) {
    preferences.set("OverwritePattern", 3);
    faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation == "writeAt" && faulty.made["writeAt"] == 0) {
            preferences.set("NumberOfWrites", 11);
            preferences.set("DoDSanitize", true);
        }
    };
    overwrite(block + 100);
    EXPECT_THAT(patternsAt(0), ElementsAre("00"));
    EXPECT_THAT(patternsAt(block), ElementsAre("55", "AA", "random"));
    EXPECT_THAT(patternsAt(block + 100), ElementsAre("55", "AA", "random"));
}

TEST_F(OverwriteTest, AWholeItemEqualsThePlainProgramInNamesProgressAndContents) {
    preferences.set("NumberOfWrites", 0);
    const std::string path = folder / "secret";
    writeFile(path, recognisable(300001));
    setMode(path, 0600);
    hardLink(path, folder / "other name");
    shred({path});

    // A name in the pass over the files, one in the pass over the folders, then the file.
    const auto plain = plainOverwrite({.numberOfWrites = 0}, {"n1+n1+300001"})[0];
    const std::string randomName = linesOf(plain, "name")[0];
    EXPECT_EQ(fileName.texts, (std::vector<std::string>{randomName, ""}));
    EXPECT_THAT(log.lines(), ElementsAre(randomName));
    std::vector<double> expected{0.0};
    for (const std::string& percent : linesOf(plain, "progress")) {
        expected.push_back(std::stod(percent));
    }
    expected.push_back(0.0);
    EXPECT_EQ(shreddingProgress.values, expected);

    const std::string contents = readFile(folder / "other name");
    EXPECT_THAT(linesOf(plain, "file"),
                ElementsAre(fmt::format("{} {:016x}", contents.size(),
                                        contentHash(contents.data(), contents.size()))));
    EXPECT_EQ(modeOf(folder / "other name"), 0777U);
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("other name"));
}

TEST_F(OverwriteTest, ProgressIsCutToWholePercentAndCountsABlockBeforeItIsWritten) {
    std::vector<std::size_t> shownBeforeWrite;
    faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation == "writeAt") shownBeforeWrite.push_back(shreddingProgress.values.size());
    };
    writeFile(folder / "a", recognisable(2 * block));
    writeFile(folder / "b", recognisable(block));
    shred({folder / "a", folder / "b"});
    EXPECT_THAT(shreddingProgress.values, ElementsAre(0, 33, 66, 100, 0));
    EXPECT_THAT(shownBeforeWrite, ElementsAre(2, 3, 3, 4, 4));
    EXPECT_EQ(shreddingProgress.displays, 5);
}

}  // namespace
}  // namespace dorvanel::test
