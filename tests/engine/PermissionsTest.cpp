// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <iostream>

#include "support/Disk.h"
#include "support/EngineFixture.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;

/// Makes a tree whose entries forbid much, each file with a second name in `outside`; shreds it;
/// says what is wrong then.
std::string shredForbiddingTree(const fs::path& place) {
    const fs::path outside = place / "outside";
    const fs::path tree = place / "tree";
    fs::create_directories(outside);
    const char* files[] = {"read only", "unreadable", "sub/plain", "sub/none/deep",
                           "sub/no write/f"};
    for (int i = 0; i < 5; ++i) {
        writeFile(tree / files[i], recognisable(1000));
        hardLink(tree / files[i], outside / std::to_string(i));
    }
    setMode(tree / "read only", 0444);
    setMode(tree / "unreadable", 0000);
    setMode(tree / "sub/none", 0000);
    setMode(tree / "sub/no write", 0555);
    setMode(tree / "sub", 0500);

    TestEngine engine;
    const Outcome& outcome = engine.shred({tree});
    if (fs::exists(tree)) return "the tree is there";
    if (namesIn(place) != std::vector<std::string>{"outside"}) return "something is left";
    for (int i = 0; i < 5; ++i) {
        const std::string path = outside / std::to_string(i);
        if (modeOf(path) != 0777) return std::string("the bits of ") + files[i];
        if (readFile(path).find("Secret") != std::string::npos) return files[i];
    }
    if (outcome.filesOverwritten != 5 || outcome.notOverwritten != 0) return "the outcome";
    if (outcome.notRemoved != 0 || !outcome.troubles.empty()) return "the outcome of the removal";
    return {};
}

class PermissionsTest : public ::testing::Test {
  protected:
    PermissionsTest() { setMode(folder.path(), 0777); }

    TemporaryFolder folder;
};

TEST_F(PermissionsTest, ReadOnlyAndUnreadableEntriesOfOnesOwnAreMadeWritableAndShredded) {
    EXPECT_EQ(asOrdinaryUser([&] { return shredForbiddingTree(folder / "place"); }), "");
}

TEST_F(PermissionsTest, ReadOnlyAndUnreadableEntriesAreShreddedByThisUser) {
    EXPECT_EQ(inChild([&] { return shredForbiddingTree(folder / "place"); }), "");
}

TEST_F(PermissionsTest, AFolderThatItsOwnerMayNotWriteIsMovedAndShredded) {
    EXPECT_EQ(asOrdinaryUser([&]() -> std::string {
                  writeFile(folder / "place/item/file", recognisable(100));
                  setMode(folder / "place/item", 0555);
                  TestEngine engine;
                  const Outcome& outcome = engine.shred({folder / "place/item"});
                  if (!namesIn(folder / "place").empty()) return "it is there";
                  if (engine.system.callsOf("changeMode").front().name != "755") {
                      return "not only its owner's bits were added";
                  }
                  return outcome.notRemoved == 0 && outcome.troubles.empty() ? "" : "the outcome";
              }),
              "");
}

/// The permission bits of every folder and file below, all together.
unsigned bitsBelow(const fs::path& place) {
    unsigned bits = 0;
    std::error_code ignored;
    for (fs::recursive_directory_iterator entry(place, ignored), end; entry != end;
         entry.increment(ignored)) {
        if (!entry->is_symlink()) bits |= modeOf(entry->path());
    }
    return bits;
}

TEST_F(PermissionsTest, NobodyElseIsLetInAtAnyMoment) {
    writeFile(folder / "place/item/sub/file", recognisable(100));
    writeFile(folder / "place/single", recognisable(100));
    for (const char* name : {"item", "item/sub"}) setMode(folder.path() / "place" / name, 0500);
    for (const char* name : {"item/sub/file", "single"}) {
        setMode(folder.path() / "place" / name, 0400);
    }
    TestEngine engine;
    unsigned seen = 0;
    engine.faulty.before = [&](const std::string&, const std::string&) {
        seen |= bitsBelow(folder / "place");
    };
    EXPECT_EQ(engine.shred({folder / "place/item", folder / "place/single"}).filesRemoved, 2U);
    EXPECT_EQ(seen & 0700U, 0700U);
    EXPECT_EQ(seen & 0077U, 0U);
}

TEST_F(PermissionsTest, AFolderKeepsTheBitsThatItHad) {
    writeFile(folder / "place/item/file", "x");
    setMode(folder / "place/item", 01754);
    TestEngine engine;
    unsigned seen = 0;
    engine.faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation == "writeAt") seen = bitsBelow(folder / "place");
    };
    setMode(folder / "place/item/file", 0600);
    engine.shred({folder / "place/item"});
    EXPECT_EQ(seen, 01754U | 0700U);
}

TEST_F(PermissionsTest, WhatOthersCanSeeIsOpenedToAllOnlyOnceItIsOverwrittenAndFlushed) {
    writeFile(folder / "place/item/file", recognisable(100));
    hardLink(folder / "place/item/file", folder / "other name");
    writeFile(folder / "target", recognisable(100));
    fs::create_symlink(folder / "target", folder / "place/item/link");
    for (const char* name : {"other name", "target"}) setMode(folder / name, 0640);
    TestEngine engine;
    engine.faulty.inMemory = 0;
    int looks = 0;
    engine.faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation != "writeAt" && operation != "flushFile") return;
        ++looks;
        EXPECT_EQ(modeOf(folder / "other name"), 0640U);
        EXPECT_EQ(modeOf(folder / "target"), 0640U);
    };
    engine.shred({folder / "place/item"});
    EXPECT_EQ(looks, 6);
    EXPECT_EQ(modeOf(folder / "other name"), 0777U);
    EXPECT_EQ(modeOf(folder / "target"), 0777U);
}

TEST_F(PermissionsTest, WhatCouldNotBeOverwrittenOrFlushedIsNotOpenedToAll) {
    for (const char* operation : {"writeAt", "flushFile"}) {
        writeFile(folder / "item", recognisable(100));
        fs::remove(folder / "other name");
        hardLink(folder / "item", folder / "other name");
        setMode(folder / "item", 0640);
        TestEngine engine;
        engine.faulty.inMemory = 0;
        engine.faulty.failAlways(operation, EIO);
        engine.shred({folder / "item"});
        EXPECT_EQ(modeOf(folder / "other name"), 0640U) << operation;
        fs::remove(folder / "item");
    }
}

TEST_F(PermissionsTest, WhatStaysKeepsItsBits) {
    writeFile(folder / "item/file", "x");
    hardLink(folder / "item/file", folder / "other name");
    setMode(folder / "other name", 0444);
    TestEngine engine;
    engine.faulty.failAlways("openFile", EACCES);
    engine.faulty.failAlways("removeFile", EPERM);
    const Outcome& outcome = engine.shred({folder / "item"});
    EXPECT_EQ(outcome.notOverwritten, 1U);
    EXPECT_EQ(modeOf(folder / "other name"), 0444U);
    EXPECT_EQ(readFile(folder / "other name"), "x");
}

TEST_F(PermissionsTest, WhatCannotBeOpenedForAnotherReasonIsNotMadeWritable) {
    writeFile(folder / "item", "x");
    hardLink(folder / "item", folder / "other name");
    setMode(folder / "item", 0444);
    TestEngine engine;
    engine.faulty.failAlways("openFile", ETXTBSY);
    EXPECT_EQ(engine.shred({folder / "item"}).notOverwritten, 1U);
    EXPECT_EQ(modeOf(folder / "other name"), 0444U);
}

TEST_F(PermissionsTest, ReadOnlyFilesAreOverwrittenWhereNoReferenceCanBeChanged) {
    // As without /proc on older kernels.
    EXPECT_EQ(asOrdinaryUser([&]() -> std::string {
                  writeFile(folder / "place/item", recognisable(100));
                  hardLink(folder / "place/item", folder / "same");
                  setMode(folder / "place/item", 0444);
                  TestEngine engine;
                  engine.faulty.failAlways("changeMode", ENOENT);
                  const Outcome& outcome = engine.shred({folder / "place/item"});
                  if (outcome.filesOverwritten != 1) return "not overwritten";
                  if (readFile(folder / "same").find("Secret") != std::string::npos) return "left";
                  return outcome.filesRemoved == 1 ? "" : "not removed";
              }),
              "");
}

TEST_F(PermissionsTest, WhereThatIsNotSafeTheyAreToldNotToBeOverwritten) {
    EXPECT_EQ(asOrdinaryUser([&]() -> std::string {
                  writeFile(folder / "place/item/file", recognisable(100));
                  setMode(folder / "place/item/file", 0444);
                  setMode(folder / "place/item", 0777);
                  TestEngine engine;
                  engine.faulty.failAlways("changeMode", ENOENT);
                  const Outcome& outcome = engine.shred({folder / "place/item"});
                  return outcome.notOverwritten == 1 && !outcome.troubles.empty() ? "" : "silence";
              }),
              "");
}

TEST_F(PermissionsTest, AnItemInAFolderThatMayNotBeWrittenStaysAndIsCounted) {
    EXPECT_EQ(asOrdinaryUser([&]() -> std::string {
                  writeFile(folder / "place/item", "kept");
                  setMode(folder / "place", 0555);
                  TestEngine engine;
                  const Outcome outcome = engine.shred({folder / "place/item"});
                  setMode(folder / "place", 0755);
                  if (readFile(folder / "place/item") != "kept") return "it was touched";
                  if (outcome.notRemoved != 1 || outcome.troubles.size() != 1) return "the outcome";
                  return outcome.troubles[0].code == EACCES ? "" : "the reason";
              }),
              "");
}

TEST_F(PermissionsTest, AFileOfSomebodyElseInOnesOwnFolderIsRemovedUnshreddedAndCounted) {
    if (!isRoot()) {
        std::cout << "not run: files of somebody else can be made by root only\n";
        return;
    }
    constexpr unsigned nobody = 65534;
    writeFile(folder / "mine/theirs", recognisable(100));
    setMode(folder / "mine/theirs", 0644);
    hardLink(folder / "mine/theirs", folder / "same");
    ASSERT_EQ(chown((folder / "mine").c_str(), nobody, nobody), 0);
    EXPECT_EQ(asOrdinaryUser([&]() -> std::string {
                  TestEngine engine;
                  const Outcome& outcome = engine.shred({folder / "mine"});
                  if (outcome.notOverwritten != 1) return "not counted";
                  if (outcome.filesOverwritten != 0) return "said to be overwritten";
                  return outcome.notRemoved == 0 && outcome.filesRemoved == 1 ? "" : "not removed";
              }),
              "");
    EXPECT_FALSE(fs::exists(folder / "mine"));
    EXPECT_EQ(readFile(folder / "same"), recognisable(100));
}

TEST_F(PermissionsTest, AFolderOfSomebodyElseThatIsNotEmptyStaysAndIsCounted) {
    if (!isRoot()) {
        std::cout << "not run: folders of somebody else can be made by root only\n";
        return;
    }
    constexpr unsigned nobody = 65534;
    writeFile(folder / "mine/theirs/file", "kept");
    ASSERT_EQ(chown((folder / "mine").c_str(), nobody, nobody), 0);
    EXPECT_EQ(asOrdinaryUser([&]() -> std::string {
                  TestEngine engine;
                  const Outcome& outcome = engine.shred({folder / "mine"});
                  // The file, the folder that holds it, the item and the holding folder.
                  return outcome.notRemoved == 4 && !outcome.troubles.empty()
                             ? ""
                             : "counted " + std::to_string(outcome.notRemoved);
              }),
              "");
}

}  // namespace
}  // namespace dorvanel::test
