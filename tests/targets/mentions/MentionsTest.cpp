// SPDX-License-Identifier: MIT
#include "targets/mentions/Mentions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "support/EnvironmentVariable.h"
#include "support/FakeClock.h"
#include "support/SampleThumbnail.h"
#include "support/TemporaryFolder.h"
#include "targets/mentions/FileUri.h"

namespace dorvanel::mentions {
namespace {

namespace fs = std::filesystem;
using test::EnvironmentVariable;
using test::pngOf;
using test::readFile;
using test::thumbnailName;
using test::writeFile;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

/// A home whose desktop remembers files.
class MentionsTest : public ::testing::Test {
  protected:
    [[nodiscard]] std::string thumbnail(const std::string& size, const std::string& path) const {
        return home / (".cache/thumbnails/" + size + "/" + thumbnailName(fileUri(path)));
    }
    void addThumbnail(const std::string& size, const std::string& path) {
        writeFile(thumbnail(size, path), pngOf(fileUri(path)));
    }
    void find(const std::vector<std::string>& items) {
        mentions.find(items, Mentions::Where::everywhere, [] { return false; });
    }
    std::vector<std::string> found() {
        std::vector<std::string> paths;
        for (const Mention& mention : mentions.found()) paths.push_back(mention.path);
        return paths;
    }
    std::vector<std::string> obstacles() {
        std::vector<std::string> told;
        for (const Obstacle& obstacle : mentions.obstacles()) {
            told.push_back(obstacle.path.substr(home.path().native().size() + 1) + ": " +
                           obstacle.detail);
        }
        return told;
    }
    /// A list with an entry for each path.
    static std::string listOf(const std::vector<std::string>& paths) {
        std::string list = "<xbel>\n";
        for (const std::string& path : paths) {
            std::string uri;
            for (const char c : fileUri(path)) uri += c == '&' ? "&amp;" : std::string(1, c);
            list += "  <bookmark href=\"" + uri + "\"/>\n";
        }
        return list + "</xbel>";
    }

    test::TemporaryHome home;
    const EnvironmentVariable data{"XDG_DATA_HOME", ""};
    const EnvironmentVariable cache{"XDG_CACHE_HOME", ""};
    const std::string list = home / ".local/share/recently-used.xbel";
    std::unique_ptr<platform::SystemCalls> system = platform::makeSystemCalls();
    std::unique_ptr<platform::CleaningCalls> calls = platform::makeCleaningCalls();
    test::FakeClock clock;
    Mentions mentions{{*system, *calls, clock}};
};

TEST_F(MentionsTest, ThumbnailsOfAllSizesAreFoundByTheirNames) {
    const std::string file = home / "a b;caf\xC3\xA9\xFF\n%.txt";
    writeFile(file);
    for (const char* size : {"normal", "large", "x-large", "xx-large", "fail/gnome-1"}) {
        addThumbnail(size, file);
        addThumbnail(size, home / "other");
    }
    writeFile(home / (".thumbnails/normal/" + thumbnailName(fileUri(file))), "no image");
    find({file});
    EXPECT_THAT(found(),
                UnorderedElementsAre(
                    thumbnail("normal", file), thumbnail("large", file), thumbnail("x-large", file),
                    thumbnail("xx-large", file), thumbnail("fail/gnome-1", file),
                    home / (".thumbnails/normal/" + thumbnailName(fileUri(file)))));
    EXPECT_THAT(obstacles(), IsEmpty());
}

TEST_F(MentionsTest, OfAFolderTheThumbnailsOfAllThatIsOrWasInItAreFound) {
    writeFile(home / "tree/deep/x");
    fs::create_directory_symlink(home / "elsewhere", home / "tree/link");
    writeFile(home / "elsewhere/y");
    addThumbnail("normal", home / "tree/deep/x");
    addThumbnail("normal", home / "tree/gone");
    addThumbnail("normal", home / "tree2");
    addThumbnail("normal", home / "elsewhere/y");
    find({home / "tree"});
    EXPECT_THAT(found(), UnorderedElementsAre(thumbnail("normal", home / "tree/deep/x"),
                                              thumbnail("normal", home / "tree/gone")));
}

TEST_F(MentionsTest, LinksAndFilesOfOthersAreLeftAndNamed) {
    const std::string file = home / "x";
    writeFile(file);
    const std::string name = thumbnailName(fileUri(file));
    writeFile(home / "bystander", "kept");
    fs::create_directories(home / ".cache/thumbnails/normal");
    fs::create_symlink(home / "bystander", home / (".cache/thumbnails/normal/" + name));
    fs::create_directories(home / "planted");
    writeFile(home / ("planted/" + name));
    fs::create_directory_symlink(home / "planted", home / ".cache/thumbnails/large");
    fs::create_directories(home / ".local/share");
    writeFile(home / "list", listOf({file}));
    fs::create_symlink(home / "list", list);
    find({file});
    EXPECT_THAT(found(), IsEmpty());
    EXPECT_THAT(obstacles(),
                UnorderedElementsAre(".cache/thumbnails/normal/" + name + ": is a link",
                                     ".cache/thumbnails/large: is a link",
                                     ".local/share/recently-used.xbel: is a link"));
}

TEST_F(MentionsTest, AListThatIsLinkedToTheNullDeviceIsNone) {
    writeFile(home / "x");
    fs::create_directories(home / ".local/share");
    fs::create_symlink("/dev/null", list);
    find({home / "x"});
    EXPECT_THAT(obstacles(), IsEmpty());
}

TEST_F(MentionsTest, AFileOfSomebodyElseIsNoThumbnailOfOurs) {
    if (::geteuid() != 0) GTEST_SKIP() << "only root can give a file away";
    writeFile(home / "x");
    addThumbnail("normal", home / "x");
    ASSERT_EQ(::chown(thumbnail("normal", home / "x").c_str(), 1234, 1234), 0);
    find({home / "x"});
    EXPECT_THAT(found(), IsEmpty());
    EXPECT_EQ(mentions.obstacles().size(), 1U);
}

TEST_F(MentionsTest, EntriesOfWhatIsGoneLeaveTheListAndTheOthersStay) {
    const std::string gone = home / "gone & away";
    const std::string kept = home / "kept";
    const std::string moved = home / "tree/moved";
    writeFile(gone);
    writeFile(kept);
    writeFile(moved);
    writeFile(list, listOf({gone, kept, moved, home / "other"}));
    find({gone, kept, home / "tree"});
    ASSERT_EQ(mentions.found().size(), 1U);
    EXPECT_EQ(mentions.found()[0].entries, 3U);
    fs::remove(gone);
    fs::rename(home / "tree", home / "hidden");
    Departed departed = mentions.ofWhatIsGone({moved});
    ASSERT_EQ(departed.lists.size(), 1U);
    std::vector<std::string> aside;
    EXPECT_FALSE(departed.lists[0].prepared->commit({}, aside));
    EXPECT_EQ(readFile(list), listOf({kept, moved, home / "other"}));
    ASSERT_EQ(aside.size(), 1U);
    EXPECT_EQ(readFile(aside[0]), listOf({gone, kept, moved, home / "other"}));
}

TEST_F(MentionsTest, ADamagedListIsLeftAndNamed) {
    writeFile(home / "x");
    writeFile(list, "<xbel><bookmark href=");
    find({home / "x"});
    ASSERT_EQ(mentions.obstacles().size(), 1U);
    EXPECT_EQ(mentions.obstacles()[0].reason, Obstacle::Reason::corrupt);
    EXPECT_EQ(mentions.obstacles()[0].path, list);
}

TEST_F(MentionsTest, AFileThatIsMentionedByAWayWithLinksIsFound) {
    writeFile(home / "real/x");
    fs::create_directory_symlink(home / "real", home / "way");
    writeFile(list, listOf({home / "way/x", home / "way/y"}));
    find({home / "real/x"});
    ASSERT_EQ(mentions.found().size(), 1U);
    EXPECT_EQ(mentions.found()[0].entries, 1U);
    fs::remove(home / "real/x");
    EXPECT_EQ(mentions.ofWhatIsGone({}).lists.size(), 1U);
}

TEST_F(MentionsTest, LinkEntriesOfKdeAreFilesOfTheirOwn) {
    writeFile(home / "x");
    const std::string recent = home / ".local/share/RecentDocuments/x.desktop";
    const std::string old = home / ".kde4/share/apps/RecentDocuments/x.desktop";
    writeFile(recent, "[Desktop Entry]\nURL[$e]=file://$HOME/x\n");
    writeFile(old, "[Desktop Entry]\nURL=" + fileUri(home / "x") + "\n");
    writeFile(home / ".local/share/RecentDocuments/y.desktop", "[Desktop Entry]\nURL=file:///y\n");
    find({home / "x"});
    EXPECT_THAT(found(), UnorderedElementsAre(recent, old));
}

TEST_F(MentionsTest, WhatTheTrashKnowsOfAnItemIsFound) {
    const std::string trash = home / ".local/share/Trash";
    writeFile(trash + "/files/tree/x");
    writeFile(trash + "/files/other");
    writeFile(trash + "/info/tree.trashinfo", "[Trash Info]\nPath=/x\n");
    writeFile(trash + "/info/other.trashinfo", "[Trash Info]\nPath=/y\n");
    writeFile(trash + "/directorysizes", "1 2 tree\n3 4 more\n");
    find({trash + "/files/tree"});
    EXPECT_THAT(found(),
                UnorderedElementsAre(trash + "/info/tree.trashinfo", trash + "/directorysizes"));
    find({trash + "/files/tree/x"});
    EXPECT_THAT(found(), IsEmpty());
    find({trash + "/files"});
    EXPECT_THAT(found(),
                UnorderedElementsAre(trash + "/info/tree.trashinfo",
                                     trash + "/info/other.trashinfo", trash + "/directorysizes"));
}

TEST_F(MentionsTest, WhatLiesInAnItemItselfIsNoMention) {
    writeFile(home / "x");
    addThumbnail("normal", home / "x");
    writeFile(list, listOf({home / "x"}));
    find({home / "x", home / ".cache", home / ".local"});
    EXPECT_THAT(found(), IsEmpty());
    EXPECT_THAT(obstacles(), IsEmpty());
}

}  // namespace
}  // namespace dorvanel::mentions
