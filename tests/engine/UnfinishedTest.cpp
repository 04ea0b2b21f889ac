// SPDX-License-Identifier: MIT

// What the engine writes down of its holding folders, and what is read of it after a kill.
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <iostream>

#include "engine/HoldingFolderName.h"
#include "engine/ListedFolders.h"
#include "engine/UnfinishedEntry.h"
#include "engine/UnfinishedFiles.h"
#include "support/Disk.h"
#include "support/EngineFixture.h"
#include "support/FaultyCleaningCalls.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using platform::FileStatus;
using platform::SystemCalls;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Reason = PlanSkip::Reason;

constexpr const char* kName = "Dorvanel X Items (1000000000)";

class UnfinishedTest : public EngineFixture {
  protected:
    UnfinishedTest() { clock.step = {}; }

    const Outcome& shredRecorded(std::vector<std::string> paths) {
        recorded.shredDroppedFile(paths);
        return recorded.outcome();
    }

    FileStatus statusOf(const std::string& path) {
        FileStatus status;
        EXPECT_GE(real->statusAt(SystemCalls::workingFolder, path.c_str(),
                                 SystemCalls::Links::follow, status),
                  0);
        return status;
    }

    /// A holding folder with a file, written down by a run that ended before it was done.
    std::string leave(const std::string& parent, const std::string& name = kName) {
        writeFile(fs::path(parent) / name / "file", "old");
        fs::permissions(fs::path(parent) / name, fs::perms(0700));
        record.begins(parent, name, statusOf(parent));
        record.requestEnds();
        return fs::path(parent) / name;
    }

    LeftFolders listed() {
        LeftFolders found;
        EXPECT_TRUE(findListedFolders(list, *real, files, found).ok());
        return found;
    }
    /// What was passed over, and nothing was found.
    PlanSkip theOnePassedOver() {
        const LeftFolders found = listed();
        EXPECT_THAT(found.folders, IsEmpty());
        EXPECT_THAT(found.skipped, SizeIs(1));
        return found.skipped.empty() ? PlanSkip{} : found.skipped[0];
    }
    [[nodiscard]] std::string theFile() const {
        const std::vector<std::string> names = namesIn(state);
        EXPECT_THAT(names, SizeIs(1));
        return names.empty() ? std::string() : state + "/" + names[0];
    }
    /// Puts an entry there as a program could that knows what is written.
    void plant(const UnfinishedEntry& entry, const std::string& name = "planted") {
        fs::create_directories(state);
        fs::permissions(state, fs::perms(0700));
        writeFile(state + "/" + name, textOf(entry));
        setMode(state + "/" + name, 0600);
    }
    UnfinishedEntry entryOf(const std::string& parent, const std::string& name = kName) {
        const FileStatus status = statusOf(parent);
        return {parent, name, status.device, status.inode, status.born};
    }

    std::string state = home / ".local/state/dorvanel/unfinished";
    FaultyCleaningCalls files;
    UnfinishedFiles record{*real, files, state};
    UnfinishedFolder list{*real, files, state};
    FileAccess recorded{{system, clock, draws, &record}, preferences, shreddingProgress, fileName};
};

TEST_F(UnfinishedTest, AHoldingFolderIsWrittenDownBeforeItIsMadeAndForgottenWhenItIsGone) {
    writeFile(folder / "item", "old");
    std::vector<std::string> whenMade;
    bool wasMade = false;
    std::vector<std::string> running;
    faulty.before = [&](const std::string& operation, const std::string& name) {
        if (operation == "makeFolder" && name == kName) {
            wasMade = true;
            whenMade = namesIn(state);
            EXPECT_FALSE(fs::exists(folder / kName));
        }
        if (operation == "removeFolder") {
            const LeftFolders found = listed();
            EXPECT_THAT(found.folders, IsEmpty()) << "who works on it is there";
            for (const PlanSkip& skip : found.skipped) {
                EXPECT_EQ(skip.reason, Reason::running);
                running.push_back(skip.path);
            }
        }
    };
    EXPECT_EQ(shredRecorded({folder / "item"}).filesOverwritten, 1U);
    EXPECT_TRUE(wasMade);
    ASSERT_THAT(whenMade, SizeIs(1));
    EXPECT_FALSE(whenMade[0].starts_with('.')) << "it is in force";
    EXPECT_THAT(running, ElementsAre(folder / kName));
    EXPECT_THAT(namesIn(state), IsEmpty());
    EXPECT_THAT(namesIn(folder.path()), IsEmpty());
    EXPECT_EQ(modeOf(state), 0700U);
}

TEST_F(UnfinishedTest, ItIsOnTheMediumBeforeTheFolderIsMade) {
    writeFile(folder / "item", "old");
    if (real->livesInMemory(real->openFolder(SystemCalls::workingFolder, home.path().c_str()))) {
        std::cout << "not run: what lies in memory is never flushed\n";
        return;
    }
    std::vector<std::string> calls;
    files.before = [&](const std::string& operation) { calls.push_back(operation); };
    bool isSafe = false;
    faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation != "makeFolder") return;
        const auto renamed = std::ranges::find(calls, "rename");
        isSafe = std::count(calls.begin(), renamed, "flush") == 1 &&
                 std::count(renamed, calls.end(), "flush") == 1;
    };
    shredRecorded({folder / "item"});
    EXPECT_TRUE(isSafe) << "the text, then its name";
}

TEST_F(UnfinishedTest, WhateverFailsInItTheItemIsShredded) {
    int failures = 0;
    for (int failing = 1; failing < 100; ++failing) {
        writeFile(folder / "item", "old");
        files.made = 0;
        files.failing = failing;
        files.code = failing % 2 == 0 ? EIO : ENOSPC;
        files.operation.clear();
        const Outcome& outcome = shredRecorded({folder / "item"});
        EXPECT_EQ(outcome.filesOverwritten, 1U) << failing << ' ' << files.operation;
        EXPECT_EQ(outcome.allTroubles, 0U) << failing << ' ' << files.operation;
        EXPECT_THAT(namesIn(folder.path()), IsEmpty());
        for (const std::string& name : namesIn(state)) {
            EXPECT_TRUE(name.starts_with('.')) << files.operation << " leaves one in force";
        }
        if (files.operation.empty()) break;
        ++failures;
    }
    EXPECT_GT(failures, 8);
}

TEST_F(UnfinishedTest, ThatNothingCanBeWrittenIsToldOnce) {
    writeFile(home / ".local/state/dorvanel", "in the way");
    writeFile(folder.path() / "one/item", "old");
    writeFile(folder.path() / "two/item", "old");
    int told = 0;
    record.onTrouble = [&](const Error& error) {
        ++told;
        EXPECT_FALSE(error.message().empty());
    };
    const Outcome& outcome = shredRecorded({folder / "one/item", folder / "two/item"});
    EXPECT_EQ(outcome.filesOverwritten, 2U);
    EXPECT_EQ(outcome.allTroubles, 0U);
    EXPECT_EQ(told, 1);
}

TEST_F(UnfinishedTest, OfManyHoldingFoldersOnlySomeAreHeldAtATime) {
    std::vector<std::string> items;
    for (int i = 0; i < 150; ++i) {
        items.push_back(folder / ("folder " + std::to_string(i) + "/item"));
        writeFile(items.back(), "old");
    }
    std::size_t most = 0;
    faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation == "makeFolder") most = std::max(most, namesIn(state).size());
    };
    EXPECT_EQ(shredRecorded(items).filesOverwritten, 150U);
    EXPECT_GT(most, 20U);
    EXPECT_LE(most, 100U);
    EXPECT_THAT(namesIn(state), IsEmpty());
}

TEST_F(UnfinishedTest, WhatARequestLeavesIsNobodysWorkAfterIt) {
    writeFile(folder / "item", "old");
    faulty.failAlways("removeFolder", EBUSY, kName);
    faulty.failAlways("removeFile", EBUSY, kName);
    shredRecorded({folder / "item"});
    const LeftFolders found = listed();
    ASSERT_THAT(found.folders, SizeIs(1));
    EXPECT_EQ(found.folders[0].item.path, folder / kName);
}

TEST_F(UnfinishedTest, AnEntryIsReadAsItWasWritten) {
    for (const std::string& path : {std::string("/"), std::string("/a b/caf\xE9/x\ny/100%"),
                                    std::string(200, '/').replace(1, 199, 199, '\xFF')}) {
        const UnfinishedEntry entry{path, kName, 1, ~std::uint64_t{0}, -7};
        const auto read = unfinishedEntryOf(textOf(entry));
        ASSERT_TRUE(read) << textOf(entry);
        EXPECT_EQ(read->folder, path);
        EXPECT_EQ(read->inode, ~std::uint64_t{0});
        EXPECT_EQ(read->born, -7);
    }
}

TEST_F(UnfinishedTest, NoPartOfAnEntryIsOne) {
    const std::string text = textOf({"/folder", kName, 1, 2, 3});
    for (std::size_t size = 0; size < text.size(); ++size) {
        EXPECT_FALSE(unfinishedEntryOf(text.substr(0, size))) << size;
        std::string changed = text;
        changed[size] = '\0';
        EXPECT_FALSE(unfinishedEntryOf(changed)) << size;
    }
    EXPECT_FALSE(unfinishedEntryOf(text + "\n"));
}

TEST_F(UnfinishedTest, AnEntryOfAnotherNameOrPathIsNone) {
    for (const std::string& name :
         {std::string("Documents"), std::string("Dorvanel X Items ()"),
          std::string("Dorvanel X Items (1"), std::string(""), std::string("Dorvanel X Items (01)"),
          std::string("../Dorvanel X Items (1)"), std::string("Dorvanel X Items (1)/..")}) {
        EXPECT_FALSE(isHoldingFolderName(name)) << name;
        EXPECT_FALSE(unfinishedEntryOf(textOf({"/folder", name, 1, 2, 3}))) << name;
    }
    for (const std::string path : {"", "folder", "/a/../b", "/a/./b", "/a//b", "/a/", "//"}) {
        EXPECT_FALSE(unfinishedEntryOf(textOf({path, kName, 1, 2, 3}))) << path;
    }
    EXPECT_TRUE(isHoldingFolderName(holdingFolderName(0)));
    EXPECT_TRUE(isHoldingFolderName(holdingFolderName(-1)));
}

TEST_F(UnfinishedTest, AFolderThatWasLeftIsFound) {
    const std::string path = leave(folder.path());
    const LeftFolders found = listed();
    ASSERT_THAT(found.folders, SizeIs(1));
    EXPECT_EQ(found.folders[0].item.path, path);
    EXPECT_EQ(found.folders[0].item.links, SystemCalls::Links::stay);
    EXPECT_THAT(found.folders[0].files, SizeIs(1));
    EXPECT_THAT(found.skipped, IsEmpty());
}

TEST_F(UnfinishedTest, WhatOneHasTakenAnotherLeaves) {
    leave(folder.path());
    const LeftFolders first = listed();
    EXPECT_EQ(theOnePassedOver().reason, Reason::running);
}

TEST_F(UnfinishedTest, OneThatIsGoneIsOnlyForgotten) {
    fs::remove_all(leave(folder.path()));
    LeftFolders found = listed();
    EXPECT_THAT(found.folders, IsEmpty());
    EXPECT_THAT(found.skipped, IsEmpty());
    EXPECT_THAT(found.spent, SizeIs(1));
    const std::string witness = home / "witness";
    hardLink(theFile(), witness);
    list.shred(found.spent);
    EXPECT_THAT(namesIn(state), IsEmpty());
    EXPECT_EQ(readFile(witness).find(folder.path().native()), std::string::npos)
        << "it was overwritten";
}

TEST_F(UnfinishedTest, OneWhoseDiskIsNotThereIsKept) {
    fs::create_directories(folder / "disk");
    leave(folder / "disk");
    fs::rename(folder / "disk", folder / "elsewhere");
    const LeftFolders found = listed();
    EXPECT_THAT(found.folders, IsEmpty());
    EXPECT_THAT(found.spent, IsEmpty());
    EXPECT_THAT(found.absent, ElementsAre(folder / "disk/" + kName));
}

TEST_F(UnfinishedTest, AFileThatIsDamagedIsNamed) {
    leave(folder.path());
    const std::string file = theFile();
    const std::string whole = readFile(file);
    for (const std::string& damaged :
         {std::string(), whole.substr(0, whole.size() / 2), std::string(1 << 20, 'x'),
          std::string("\xFF\0\n", 3), whole + whole}) {
        writeFile(file, damaged);
        const PlanSkip skip = theOnePassedOver();
        EXPECT_EQ(skip.reason, Reason::corrupt);
        EXPECT_EQ(skip.path, file);
    }
    fs::resize_file(file, std::uintmax_t{1} << 40);
    EXPECT_EQ(theOnePassedOver().reason, Reason::corrupt) << "of a huge one nothing is read";
}

TEST_F(UnfinishedTest, AFileThatAnybodyMayHavePutThereIsNotBelieved) {
    leave(folder.path());
    const std::string file = theFile();
    for (const unsigned mode : {0620U, 0602U}) {
        setMode(file, mode);
        EXPECT_EQ(theOnePassedOver().reason, Reason::insecure) << mode;
    }
    setMode(file, 0600);
    hardLink(file, home / "other name");
    EXPECT_EQ(theOnePassedOver().reason, Reason::insecure);
    fs::remove(home / "other name");
    fs::rename(file, home / "file");
    fs::create_symlink(home / "file", file);
    EXPECT_EQ(theOnePassedOver().reason, Reason::insecure) << "a link";
    fs::remove(file);
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    EXPECT_EQ(theOnePassedOver().reason, Reason::insecure) << "a FIFO";
    fs::remove(file);
    fs::create_directory(file);
    EXPECT_EQ(theOnePassedOver().reason, Reason::insecure) << "a folder";
    if (!isRoot()) return;
    fs::remove(file);
    fs::rename(home / "file", file);
    ASSERT_EQ(chown(file.c_str(), 65534, 65534), 0);
    EXPECT_EQ(theOnePassedOver().reason, Reason::insecure) << "somebody else's";
}

TEST_F(UnfinishedTest, AListInWhichOthersMayWriteIsNoList) {
    leave(folder.path());
    setMode(state, 0770);
    LeftFolders found;
    EXPECT_FALSE(findListedFolders(list, *real, files, found).ok());
    EXPECT_THAT(found.folders, IsEmpty());
}

TEST_F(UnfinishedTest, AnEntryThatLeadsElsewhereIsNotFollowed) {
    fs::create_directories(folder / ("victim/" + std::string(kName)));
    setMode(folder / ("victim/" + std::string(kName)), 0700);
    // Another folder than the one that is written down.
    UnfinishedEntry other = entryOf(folder / "victim");
    ++other.inode;
    plant(other);
    EXPECT_EQ(theOnePassedOver().reason, Reason::insecure);
    // A link in its place.
    fs::create_directory_symlink("victim", folder / "link");
    plant(entryOf(folder / "link"));
    EXPECT_EQ(theOnePassedOver().reason, Reason::insecure);
    // A link in place of the holding folder.
    fs::create_directory(folder / "parent");
    fs::create_directory_symlink(folder / "victim", folder / ("parent/" + std::string(kName)));
    plant(entryOf(folder / "parent"));
    EXPECT_EQ(theOnePassedOver().reason, Reason::insecure);
    // A file in its place.
    fs::remove(folder / ("parent/" + std::string(kName)));
    writeFile(folder / ("parent/" + std::string(kName)), "kept");
    EXPECT_EQ(theOnePassedOver().reason, Reason::insecure);
    // One in which others may write.
    plant(entryOf(folder / "victim"));
    setMode(folder / ("victim/" + std::string(kName)), 0770);
    EXPECT_EQ(theOnePassedOver().reason, Reason::insecure);
    if (!isRoot()) return;
    setMode(folder / ("victim/" + std::string(kName)), 0700);
    ASSERT_EQ(chown((folder / ("victim/" + std::string(kName))).c_str(), 65534, 65534), 0);
    EXPECT_EQ(theOnePassedOver().reason, Reason::insecure);
}

TEST_F(UnfinishedTest, ADiskIsKnownAgainByWhenItsFoldersWereMade) {
    UnfinishedEntry entry = entryOf(folder.path());
    FileStatus status = statusOf(folder.path());
    entry.born = status.born = 5;
    ++status.device;
    EXPECT_TRUE(entry.wasIn(status)) << "disks are numbered anew";
    status.born = 6;
    EXPECT_FALSE(entry.wasIn(status));
    status.born = 0;
    EXPECT_FALSE(entry.wasIn(status)) << "then only the number tells";
}

class LeftFoldersTest : public UnfinishedTest {
  protected:
    std::vector<std::string> find() {
        found = {};
        EXPECT_TRUE(findLeftFolders(*real, folder.path(), found));
        std::vector<std::string> paths;
        for (const LeftFolder& left : found.folders) paths.push_back(left.item.path);
        std::ranges::sort(paths);
        return paths;
    }
    std::string make(const std::string& path) {
        writeFile(folder / (path + "/file"), "old");
        setMode(folder / path, 0700);
        return folder / path;
    }
    LeftFolders found;
};

TEST_F(LeftFoldersTest, TheyAreFoundAtAnyDepthAndWhatLiesInOneIsPartOfIt) {
    const std::string deep = make("a/b/c/d/e/Dorvanel X Items (2)");
    const std::string shallow = make("Dorvanel X Items (1)");
    make("Dorvanel X Items (1)/Dorvanel X Items (3)");
    writeFile(folder / "Dorvanel X Items (4)", "a file");
    fs::create_directory(folder / "Dorvanel X Items (of mine)");
    EXPECT_THAT(find(), ElementsAre(shallow, deep));
    EXPECT_THAT(found.skipped, IsEmpty());
}

TEST_F(LeftFoldersTest, NoLinkIsFollowed) {
    TemporaryFolder outside;
    writeFile(outside.path() / kName / "file", "kept");
    fs::create_directory_symlink(outside.path(), folder / "link");
    fs::create_directory_symlink(outside.path() / kName, folder / kName);
    EXPECT_THAT(find(), IsEmpty());
}

TEST_F(LeftFoldersTest, OneInWhichOthersMayWriteIsPassedOver) {
    const std::string path = make(kName);
    setMode(path, 0777);
    EXPECT_THAT(find(), IsEmpty());
    ASSERT_THAT(found.skipped, SizeIs(1));
    EXPECT_EQ(found.skipped[0].reason, Reason::insecure);
    EXPECT_EQ(found.skipped[0].path, path);
}

}  // namespace
}  // namespace dorvanel::test
