// SPDX-License-Identifier: MIT
#include "engine/TreeWalk.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "support/Disk.h"
#include "support/FaultySystemCalls.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

using platform::EntryKind;
using platform::SystemCalls;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

/// Walks into every folder and remembers what it was told.
class Visitor final : public TreeVisitor {
  public:
    Visitor(SystemCalls& system, const TreeWalk& walk) : system_(system), walk_(walk) {}

    int enter(const TreeEntry& entry) override {
        entered.push_back(walk_.relativePath(entry));
        if (stopAfter > 0 && --stopAfter == 0) stopped_ = true;
        return entry.kind == EntryKind::folder ? system_.openFolder(entry.folder, entry.name) : -1;
    }
    bool walksInto(const TreeEntry&, int, const platform::FileStatus&) override { return true; }
    void leave(const TreeEntry& entry) override { left.push_back(walk_.relativePath(entry)); }
    void missed(const std::string& relativePath, int code) override {
        misses.emplace_back(relativePath, code);
    }
    bool stops() override { return stopped_; }

    std::vector<std::string> entered, left;
    std::vector<std::pair<std::string, int>> misses;
    int stopAfter = 0;  ///< entries; 0: never

  private:
    SystemCalls& system_;
    const TreeWalk& walk_;
    bool stopped_ = false;
};

class TreeWalkTest : public ::testing::Test {
  protected:
    void walkAll(TreeWalk::Order order = TreeWalk::Order::forward) {
        const int top = real->openFolder(SystemCalls::workingFolder, folder.path().c_str());
        ASSERT_GE(top, 0);
        const std::size_t open = openDescriptors();
        walk.walk(top, order, visitor);
        EXPECT_EQ(openDescriptors(), open - 1) << "the walk closes what it took over";
    }
    void makeDeep(int levels) {
        std::string path = folder.path();
        for (int i = 0; i < levels; ++i) path += "/" + std::to_string(i);
        writeFile(path + "/file");
    }

    TemporaryFolder folder;
    std::unique_ptr<SystemCalls> real = platform::makeSystemCalls();
    FaultySystemCalls system{*real};
    TreeWalk walk{system};
    Visitor visitor{system, walk};
};

TEST_F(TreeWalkTest, AnEmptyFolderHasNothingToEnter) {
    walkAll();
    EXPECT_THAT(visitor.entered, IsEmpty());
    EXPECT_THAT(visitor.left, IsEmpty());
}

TEST_F(TreeWalkTest, AFolderIsEnteredBeforeAndLeftAfterWhatIsInIt) {
    writeFile(folder / "a/b/c");
    walkAll();
    EXPECT_THAT(visitor.entered, ElementsAre("a", "a/b", "a/b/c"));
    EXPECT_THAT(visitor.left, ElementsAre("a/b/c", "a/b", "a"));
}

TEST_F(TreeWalkTest, SiblingsComeAsTheFileSystemListsThem) {
    for (int i = 0; i < 50; ++i) writeFile(folder / std::to_string(i * 7919));
    walkAll();
    std::vector<std::string> listed;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
        listed.push_back(entry.path().filename());
    }
    EXPECT_EQ(visitor.entered, listed);
}

TEST_F(TreeWalkTest, BackwardItLeavesInTheReverseOfTheForwardEntering) {
    for (const char* name : {"a/1", "a/2/x", "a/2/y", "b", "c/d/e/f", "c/g"})
        writeFile(folder / name);
    walkAll();
    std::vector<std::string> forward = visitor.entered;
    visitor.left.clear();
    walkAll(TreeWalk::Order::backward);
    std::reverse(forward.begin(), forward.end());
    EXPECT_EQ(visitor.left, forward);
}

TEST_F(TreeWalkTest, EntriesAddedToAFolderAfterItWasListedAreNotMet) {
    writeFile(folder / "a");
    system.before = [&](const std::string& operation, const std::string&) {
        if (operation == "close") writeFile(folder / "late");
    };
    walkAll();
    EXPECT_THAT(visitor.entered, ElementsAre("a"));
}

TEST_F(TreeWalkTest, LinksAreNotWalkedThrough) {
    writeFile(folder / "a/file");
    std::filesystem::create_symlink("a", folder / "link");
    walkAll();
    EXPECT_THAT(visitor.entered, UnorderedElementsAre("a", "a/file", "link"));
}

TEST_F(TreeWalkTest, DeepTreesKeepFewFoldersOpen) {
    makeDeep(300);
    const std::size_t before = openDescriptors();
    std::size_t most = 0;
    system.before = [&](const std::string&, const std::string&) {
        most = std::max(most, openDescriptors());
    };
    walkAll();
    EXPECT_EQ(visitor.entered.size(), 301U);
    EXPECT_EQ(visitor.left.size(), 301U);
    EXPECT_EQ(visitor.left.back(), "0");
    EXPECT_LE(most, before + 70);
}

TEST_F(TreeWalkTest, AFolderThatCannotBeListedIsMissedAndTheRestIsWalked) {
    writeFile(folder / "a/x");
    writeFile(folder / "b/y");
    system.failOnce("readFolder", 2, EIO);
    walkAll();
    ASSERT_EQ(visitor.misses.size(), 1U);
    EXPECT_EQ(visitor.misses[0].first, visitor.entered[0]);
    EXPECT_EQ(visitor.misses[0].second, EIO);
    EXPECT_EQ(visitor.entered.size(), 3U);
    EXPECT_EQ(visitor.left.size(), 3U);
}

TEST_F(TreeWalkTest, TheWalkedFolderItselfIsMissedByAnEmptyName) {
    system.failAlways("readFolder", EIO);
    walkAll();
    EXPECT_THAT(visitor.misses, ElementsAre(std::pair<std::string, int>("", EIO)));
}

TEST_F(TreeWalkTest, AStopEndsTheWalkWithoutLeavingAnything) {
    for (const char* name : {"a/b/c", "a/b/d", "a/e", "f"}) writeFile(folder / name);
    visitor.stopAfter = 3;
    walkAll();
    EXPECT_EQ(visitor.entered.size(), 3U);
    for (const std::string& path : visitor.left) EXPECT_NE(path, visitor.entered.back());
}

TEST_F(TreeWalkTest, AFolderMovedAwayDuringTheWalkIsNotMistakenForItsNewPlace) {
    makeDeep(100);
    writeFile(folder / "elsewhere/x");
    // Deep below, the folder that the walk stands in goes to another place: ".." leads elsewhere.
    bool moved = false;
    system.before = [&](const std::string& operation, const std::string& name) {
        if (operation != "openFolder" || name != "99" || moved) return;
        moved = true;
        std::string path = folder.path();
        for (int i = 0; i < 20; ++i) path += "/" + std::to_string(i);
        std::filesystem::rename(path, folder / "elsewhere/moved");
    };
    walkAll();
    ASSERT_TRUE(moved);
    ASSERT_FALSE(visitor.misses.empty());
    EXPECT_EQ(visitor.misses.back().second, ESTALE);
}

TEST_F(TreeWalkTest, OneWalkAfterAnotherNeedsNothingNew) {
    makeDeep(80);
    walkAll();
    const std::vector<std::string> first = visitor.entered;
    visitor.entered.clear();
    walkAll();
    EXPECT_EQ(visitor.entered, first);
}

}  // namespace
}  // namespace dorvanel::test
