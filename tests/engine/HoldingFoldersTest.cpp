// SPDX-License-Identifier: MIT
#include "engine/HoldingFolders.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <iostream>

#include "support/Disk.h"
#include "support/EngineFixture.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* kName = "Dorvanel X Items (1000000000)";

/// The folder beside an item, in one second.
class HoldingFoldersTest : public EngineFixture {
  protected:
    HoldingFoldersTest() {
        clock.step = {};
        writeFile(folder / "item", "kept");
    }

    /// The item was not taken, and why is told.
    void expectItStays(const Outcome& outcome) const {
        EXPECT_EQ(readFile(folder / "item"), "kept");
        EXPECT_EQ(outcome.notRemoved, 1U);
        ASSERT_EQ(outcome.troubles.size(), 1U);
        EXPECT_EQ(outcome.troubles[0].path, folder / "item");
        EXPECT_THAT(outcome.troubles[0].reason, HasSubstr(kName));
    }
};

TEST_F(HoldingFoldersTest, ItIsItsOwnersOnly) {
    unsigned mode = 0;
    faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation == "rename" && mode == 0) mode = modeOf(folder / kName);
    };
    const mode_t mask = umask(0);
    shred({folder / "item"});
    umask(mask);
    EXPECT_EQ(mode, 0700U);
    EXPECT_THAT(namesIn(folder.path()), IsEmpty());
}

TEST_F(HoldingFoldersTest, OneThatTheUmaskMakesUnreadableServesAllTheSame) {
    setMode(folder.path(), 0777);
    EXPECT_EQ(asOrdinaryUser([&]() -> std::string {
                  writeFile(folder / "place/item", "x");
                  TestEngine engine;
                  umask(0777);
                  const Outcome& outcome = engine.shred({folder / "place/item"});
                  if (outcome.filesOverwritten != 1) return "not overwritten";
                  return namesIn(folder / "place").empty() ? "" : "something is left";
              }),
              "");
}

TEST_F(HoldingFoldersTest, AFolderOfItsNameThatOthersMayWriteInIsNotUsed) {
    for (const unsigned mode : {0777U, 0720U, 01777U}) {
        fs::create_directory(folder / kName);
        setMode(folder / kName, mode);
        expectItStays(shred({folder / "item"}));
        EXPECT_EQ(modeOf(folder / kName), mode) << "it is left as it was";
        fs::remove(folder / kName);
    }
}

TEST_F(HoldingFoldersTest, AFolderOfItsNameThatIsSomebodyElsesIsNotUsed) {
    if (!isRoot()) {
        std::cout << "not run: folders of somebody else can be made by root only\n";
        return;
    }
    fs::create_directory(folder / kName);
    setMode(folder / kName, 0700);
    ASSERT_EQ(chown((folder / kName).c_str(), 65534, 65534), 0);
    expectItStays(shred({folder / "item"}));
}

TEST_F(HoldingFoldersTest, ALinkOfItsNameIsNotFollowed) {
    fs::create_directory(folder / "elsewhere");
    fs::create_symlink("elsewhere", folder / kName);
    expectItStays(shred({folder / "item"}));
    EXPECT_THAT(namesIn(folder / "elsewhere"), IsEmpty());
}

TEST_F(HoldingFoldersTest, AFolderSwappedForItBeforeItIsOpenedIsNotUsed) {
    if (!isRoot()) {
        std::cout << "not run: folders of somebody else can be made by root only\n";
        return;
    }
    faulty.before = [&](const std::string& operation, const std::string& name) {
        if (operation != "openFolder" || name != kName) return;
        ASSERT_EQ(chown((folder / kName).c_str(), 65534, 65534), 0);  // as if it were another one
    };
    expectItStays(shred({folder / "item"}));
}

TEST_F(HoldingFoldersTest, WhatWaitsInOneDoesNotKeepAnItemOfTheSameNameOut) {
    faulty.inMemory = 0;
    fs::create_directories(folder / "sub");
    // The first file waits under the first random name of the sequence; the second item bears it.
    TestEngine other;
    other.shred({folder / "item"});
    const std::string taken = other.system.callsOf("removeFile")[0].name;
    writeFile(folder / "item", "first");
    writeFile(folder / taken, "second");
    const Outcome& outcome = shred({folder / "item", folder / taken, folder / "sub"});
    EXPECT_EQ(outcome.filesOverwritten, 2U);
    EXPECT_EQ(outcome.notRemoved, 0U);
    EXPECT_THAT(namesIn(folder.path()), IsEmpty());
}

TEST_F(HoldingFoldersTest, AnItemOfItsNameThatComesAfterOthersIsShreddedToo) {
    faulty.inMemory = 0;
    writeFile(folder.path() / "elsewhere/item", "x");
    writeFile(folder.path() / kName / "left", "x");
    const Outcome& outcome = shred({folder / "elsewhere/item", folder / kName, folder / "item"});
    EXPECT_EQ(outcome.filesOverwritten, 3U);
    EXPECT_EQ(outcome.notRemoved, 0U);
    EXPECT_THAT(namesIn(folder.path()), ::testing::ElementsAre("elsewhere"));
}

}  // namespace
}  // namespace dorvanel::test
