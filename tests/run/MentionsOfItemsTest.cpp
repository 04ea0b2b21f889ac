// SPDX-License-Identifier: MIT
#include "run/MentionsOfItems.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <filesystem>

#include "run/RunFixture.h"
#include "support/EnvironmentVariable.h"
#include "support/MountNamespace.h"
#include "support/SampleThumbnail.h"
#include "targets/mentions/FileUri.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using dorvanel::mentions::fileUri;
using ::testing::ElementsAre;

class MentionsOfItemsTest : public RunFixture {
  protected:
    std::string addThumbnail(const std::string& path) {
        std::string thumbnail = home / (".cache/thumbnails/normal/" + thumbnailName(fileUri(path)));
        writeFile(thumbnail, pngOf(fileUri(path)));
        return thumbnail;
    }
    [[nodiscard]] std::string listOf(const std::vector<std::string>& names) const {
        std::string text = "<xbel>\n";
        for (const std::string& name : names) {
            text += "  <bookmark href=\"" + fileUri(home / name) + "\"/>\n";
        }
        return text + "</xbel>";
    }
    /// Shreds the item with its mentions.
    Outcome shred(const std::string& path) {
        std::vector<HeldItem> items = held(path);
        mentions.find(items, MentionsOfItems::Where::everywhere);
        fileAccess.shredItems(items);
        Outcome outcome = fileAccess.outcome();
        mentions.shred(fileAccess, outcome);
        return outcome;
    }

    const EnvironmentVariable data{"XDG_DATA_HOME", ""};
    const EnvironmentVariable cache{"XDG_CACHE_HOME", ""};
    const std::string list = home / ".local/share/recently-used.xbel";
};

TEST_F(MentionsOfItemsTest, WithAFileGoesWhatIsRememberedOfIt) {
    writeFile(home / "x", "secret");
    const std::string thumbnail = addThumbnail(home / "x");
    const std::string other = addThumbnail(home / "y");
    writeFile(list, listOf({"x", "y"}));
    fs::create_hard_link(list, home / "witness-of-list");  // refused: the list has another name
    EXPECT_EQ(shred(home / "x").notCleaned, 1U);
    EXPECT_FALSE(fs::exists(thumbnail));
    EXPECT_TRUE(fs::exists(other));
    EXPECT_EQ(readFile(list), listOf({"x", "y"}));
}

TEST_F(MentionsOfItemsTest, ThePlanAndTheOutcomeTellOfEachMention) {
    writeFile(home / "x", "secret");
    const std::string thumbnail = addThumbnail(home / "x");
    writeFile(list, listOf({"x", "y"}));
    const std::size_t size = readFile(list).size();
    mentions.find(held(home / "x"), MentionsOfItems::Where::everywhere);
    const std::vector<PlanItem> plan = mentions.planItems();
    ASSERT_EQ(plan.size(), 2U);
    EXPECT_EQ(plan[0].path, thumbnail);
    EXPECT_EQ(plan[0].action, PlanItem::Action::mention);
    EXPECT_EQ(plan[0].files, 1U);
    EXPECT_EQ(plan[0].bytes, fs::file_size(thumbnail));
    EXPECT_EQ(plan[1].path, list);
    EXPECT_EQ(plan[1].entries, 1U);
    EXPECT_EQ(plan[1].files, 0U);
    EXPECT_EQ(readFile(list).size(), size) << "finding touches nothing";

    const Outcome outcome = shred(home / "x");
    EXPECT_EQ(readFile(list), listOf({"y"}));
    EXPECT_EQ(outcome.filesCleaned, 1U);
    EXPECT_EQ(outcome.rowsRemoved, 1U);
    ASSERT_EQ(outcome.perItem.size(), 3U);
    EXPECT_EQ(outcome.perItem[1].path, thumbnail);
    EXPECT_EQ(outcome.perItem[1].removed, 1U);
    EXPECT_EQ(outcome.perItem[1].overwritten, 1U);
    EXPECT_EQ(outcome.perItem[2].path, list);
    EXPECT_EQ(outcome.perItem[2].rows, 1U);
    EXPECT_EQ(outcome.perItem[2].bytes, size) << "the old list was overwritten";
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(home / ".local/share")) {
        names.push_back(entry.path().filename());
    }
    EXPECT_THAT(names, ElementsAre("recently-used.xbel"));
}

TEST_F(MentionsOfItemsTest, WhatCouldNotBeShreddedKeepsItsMentions) {
    const auto said = inMountNamespace([this]() -> std::string {
        writeFile(home / "tree/x", "secret");
        if (!mountTmpfs(home / "tree/mounted")) return "no mount";
        const std::string thumbnail = addThumbnail(home / "tree/x");
        writeFile(list, listOf({"tree/x"}));
        const Outcome outcome = shred(home / "tree");
        if (outcome.notRemoved == 0) return "the item went";
        return fs::exists(thumbnail) && readFile(list) == listOf({"tree/x"}) ? "kept" : "gone";
    });
    if (!said || *said == "no mount") return sayNotRun("nothing can be mounted");
    EXPECT_EQ(*said, "kept");
}

TEST_F(MentionsOfItemsTest, WhatIsLeftUnderAnotherNameKeepsItsMentions) {
    writeFile(home / "tree/x");
    writeFile(home / "tree/y");
    const std::string ofX = addThumbnail(home / "tree/x");
    const std::string ofY = addThumbnail(home / "tree/y");
    mentions.find(held(home / "tree"), MentionsOfItems::Where::everywhere);
    fs::remove(home / "tree/y");
    fs::rename(home / "tree", home / "holding");
    Outcome outcome;
    outcome.notRemoved = 1;
    outcome.perItem.push_back({.path = home / "tree"});
    outcome.perItem[0].left.push_back({home / "holding/x", "remove", EPERM, "", home / "tree/x"});
    mentions.shred(fileAccess, outcome);
    EXPECT_TRUE(fs::exists(ofX));
    EXPECT_FALSE(fs::exists(ofY));
    ASSERT_EQ(outcome.perItem.size(), 3U);
}

TEST_F(MentionsOfItemsTest, WhereTheFormerPlaceIsNotKnownTheWholeItemCounts) {
    Outcome outcome;
    outcome.perItem.push_back({.path = "/a/tree"});
    outcome.perItem[0].left.push_back({"/a/holding/x", "remove", EPERM, "", ""});
    outcome.perItem.push_back({.path = "/a/file"});
    EXPECT_THAT(formerPathsOfWhatIsLeft(outcome, {"/a/tree", "/a/file"}), ElementsAre("/a/tree"));
    outcome.perItem.clear();
    outcome.notRemoved = 1;
    EXPECT_THAT(formerPathsOfWhatIsLeft(outcome, {"/a/tree", "/a/file"}),
                ElementsAre("/a/tree", "/a/file"));
}

TEST_F(MentionsOfItemsTest, AfterAStopAllStay) {
    writeFile(home / "x");
    const std::string thumbnail = addThumbnail(home / "x");
    mentions.find(held(home / "x"), MentionsOfItems::Where::everywhere);
    fs::remove(home / "x");
    Outcome outcome;
    outcome.stopped = true;
    mentions.shred(fileAccess, outcome);
    EXPECT_TRUE(fs::exists(thumbnail));
}

TEST_F(MentionsOfItemsTest, FilesThatAreHandedOverFollowThePreference) {
    for (const bool isOn : {false, true}) {
        preferences.set("ShredMentions", isOn);
        writeFile(home / "x", "secret");
        const std::string thumbnail = addThumbnail(home / "x");
        ASSERT_TRUE(run.shredFiles(held(home / "x")));
        run.waitForWorker();
        EXPECT_FALSE(fs::exists(home / "x"));
        EXPECT_EQ(fs::exists(thumbnail), !isOn);
    }
}

TEST_F(MentionsOfItemsTest, RootTakesNoneInTheHomeOfSomebodyElse) {
    if (::geteuid() != 0) GTEST_SKIP() << "only root is refused";
    writeFile(home / "x", "secret");
    const std::string thumbnail = addThumbnail(home / "x");
    ASSERT_EQ(::chown(home.path().c_str(), 1234, 1234), 0);
    const Outcome outcome = shred(home / "x");
    ASSERT_EQ(::chown(home.path().c_str(), 0, 0), 0);
    EXPECT_EQ(outcome.notCleaned, 1U);
    EXPECT_FALSE(fs::exists(home / "x"));
    EXPECT_TRUE(fs::exists(thumbnail));
}

}  // namespace
}  // namespace dorvanel::test
