// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "support/Disk.h"
#include "support/EngineFixture.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

class StopTest : public EngineFixture {
  protected:
    /// Asks for the stop just before this write.
    void stopAtWrite(int number) {
        faulty.before = [this, number](const std::string& operation, const std::string&) {
            if (operation == "writeAt" && faulty.made["writeAt"] + 1 == number) {
                access.requestStop();
            }
        };
    }
};

TEST_F(StopTest, InMidFileTheBlockIsFinishedAndTheRestStaysInTheHoldingFolder) {
    const std::string original = recognisable(3 * 131072);
    writeFile(folder / "one/file", original);
    writeFile(folder / "two", "untouched");
    hardLink(folder / "one/file", folder / "same");
    preferences.set("NumberOfWrites", 4);  // 3 passes
    stopAtWrite(5);                        // the second pass of the second block
    const Outcome& outcome = shred({folder / "one", folder / "two"});

    EXPECT_THAT(system.callsOf("writeAt"), SizeIs(6));
    EXPECT_EQ(readFile(folder / "same").substr(2 * 131072), original.substr(2 * 131072));
    EXPECT_TRUE(outcome.stopped);
    EXPECT_THAT(outcome.left,
                ElementsAre(StartsWith(folder / "Dorvanel X Items ("), folder / "two"));
    EXPECT_TRUE(fs::is_directory(outcome.left[0]));
    EXPECT_EQ(readFile(folder / "two"), "untouched");
    EXPECT_FALSE(fs::exists(folder / "one"));
    EXPECT_EQ(outcome.filesOverwritten, 0U);
    EXPECT_EQ(outcome.filesRemoved, 0U);
    EXPECT_THAT(fileName.texts.back(), "");
}

TEST_F(StopTest, FilesDoneBeforeTheStopAreGone) {
    for (const char* name : {"a", "b", "c", "d"})
        writeFile(folder / ("tree/" + std::string(name)), "x");
    stopAtWrite(5);  // two writes a file: in the third file
    const Outcome& outcome = shred({folder / "tree"});
    EXPECT_EQ(outcome.filesRemoved, 2U);
    ASSERT_THAT(outcome.left, SizeIs(1));
    EXPECT_EQ(access.sizeInBytes(outcome.left[0]), 0U) << "a stopped engine walks no more";
    TestEngine another;
    EXPECT_EQ(another.shred({outcome.left[0]}).filesRemoved, 2U);
    EXPECT_THAT(namesIn(folder.path()), IsEmpty());
}

TEST_F(StopTest, BeforeTheRequestNothingIsTouched) {
    writeFile(folder / "item", "kept");
    access.requestStop();
    const Outcome& outcome = shred({folder / "item"});
    EXPECT_EQ(readFile(folder / "item"), "kept");
    EXPECT_THAT(outcome.left, ElementsAre(folder / "item"));
    EXPECT_TRUE(outcome.stopped);
}

TEST_F(StopTest, DuringTheRenamingLeavesAHoldingFolderThatASecondRunFinishes) {
    for (int i = 0; i < 10; ++i) writeFile(folder / ("tree/" + std::to_string(i)), "x");
    faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation == "rename" && faulty.made["rename"] == 5) access.requestStop();
    };
    const Outcome& outcome = shred({folder / "tree"});
    ASSERT_THAT(outcome.left, SizeIs(1));
    EXPECT_THAT(system.callsOf("writeAt"), IsEmpty());
    TestEngine another;
    EXPECT_EQ(another.shred({outcome.left[0]}).filesOverwritten, 10U);
    EXPECT_THAT(namesIn(folder.path()), IsEmpty());
}

TEST_F(StopTest, WithTheLastFileNothingIsLeft) {
    writeFile(folder / "one", "x");
    faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation == "removeFolder") access.requestStop();
    };
    const Outcome& outcome = shred({folder / "one"});
    EXPECT_THAT(outcome.left, IsEmpty());
    EXPECT_THAT(namesIn(folder.path()), IsEmpty());
}

TEST_F(StopTest, WhatAPauseHasLeftIsFinishedByTheSameEngine) {
    const std::string original = recognisable(3 * 131072);
    writeFile(folder / "one/file", original);
    writeFile(folder / "two", "untouched");
    hardLink(folder / "one/file", folder / "same");
    faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation == "writeAt") access.requestPause();
    };
    EXPECT_TRUE(shred({folder / "one", folder / "two"}).stopped);
    EXPECT_EQ(readFile(folder / "two"), "untouched");
    faulty.before = {};
    std::vector<HeldItem> left = access.takeLeft();
    ASSERT_THAT(left, SizeIs(2));
    for (const HeldItem& item : left) {
        EXPECT_EQ(item.parent, nullptr) << "nothing is held open";
        EXPECT_EQ(item.item, nullptr);
    }
    EXPECT_EQ(left[1].path, folder / "two");
    EXPECT_THAT(access.takeLeft(), SizeIs(1)) << "items that were not begun are told once";

    access.clearStop();
    access.shredItems(left);
    EXPECT_FALSE(access.outcome().stopped);
    EXPECT_THAT(access.outcome().left, IsEmpty());
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("same"));
    EXPECT_EQ(readFile(folder / "same").find(original.substr(0, 32)), std::string::npos);
}

TEST_F(StopTest, WhatHasComeInThePlaceOfAnItemThatWasNotBegunStays) {
    writeFile(folder / "one", "x");
    writeFile(folder / "two", "old");
    access.requestPause();
    shred({folder / "one", folder / "two"});
    std::vector<HeldItem> left = access.takeLeft();
    fs::rename(folder / "two", folder / "moved");
    writeFile(folder / "two", "new");
    access.clearStop();
    access.shredItems(left);
    EXPECT_EQ(readFile(folder / "two"), "new");
    EXPECT_EQ(readFile(folder / "moved"), "old");
    EXPECT_FALSE(fs::exists(folder / "one"));
}

TEST_F(StopTest, AStopForGoodIsNotCleared) {
    writeFile(folder / "item", "kept");
    access.requestPause();
    access.requestStop();
    access.clearStop();
    shred({folder / "item"});
    EXPECT_EQ(readFile(folder / "item"), "kept");
}

TEST_F(StopTest, WhatWasOverwrittenSoFarIsFlushed) {
    faulty.inMemory = 0;
    for (int i = 0; i < 3; ++i) writeFile(folder / ("tree/" + std::to_string(i)), "x");
    stopAtWrite(3);
    shred({folder / "tree"});
    EXPECT_THAT(system.callsOf("flushFile"), SizeIs(2));
}

/// Runs an engine over the two items in a child that kills itself at this call of the system;
/// whether it came so far.
bool runAndKillAt(const std::vector<std::string>& items, int call) {
    const pid_t child = fork();
    if (child == 0) {
        TestEngine engine;
        int calls = 0;
        engine.faulty.before = [&](const std::string&, const std::string&) {
            if (++calls == call) kill(getpid(), SIGKILL);
        };
        engine.shred(items);
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFSIGNALED(status);
}

TEST(KillTest, AtAnyCallLeavesOnlyHoldingFoldersAndUntouchedItemsThatASecondRunFinishes) {
    int call = 1;
    for (bool killed = true; killed; call += isSanitized() ? 5 : 1) {
        const TemporaryFolder folder;
        for (const char* name : {"one/a", "one/sub/b", "one/sub/c"}) {
            writeFile(folder / name, recognisable(1000));
        }
        writeFile(folder / "two", "untouched");
        killed = runAndKillAt({folder / "one", folder / "two"}, call);

        std::vector<std::string> items;
        for (const std::string& name : namesIn(folder.path())) {
            items.push_back(folder / name);
            if (name.starts_with("Dorvanel X Items (")) continue;
            ASSERT_TRUE(name == "one" || name == "two") << name << " at call " << call;
            if (name == "two") {
                ASSERT_EQ(readFile(folder / "two"), "untouched");
                continue;
            }
            ASSERT_EQ(readFile(folder / "one/sub/b"), recognisable(1000));
            ASSERT_THAT(namesIn(folder / "one"), ElementsAre("a", "sub"));
        }
        TestEngine second;
        const Outcome& outcome = second.shred(items);
        ASSERT_THAT(namesIn(folder.path()), IsEmpty()) << "at call " << call;
        ASSERT_EQ(outcome.notRemoved + outcome.notOverwritten, 0U);
    }
    EXPECT_GT(call, 60);
}

}  // namespace
}  // namespace dorvanel::test
