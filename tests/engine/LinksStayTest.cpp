// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "engine/ItemCount.h"
#include "support/EngineFixture.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A list whose links go while what they lead to stays.
class LinksStayTest : public EngineFixture {
  protected:
    const Outcome& shredUnfollowed(std::vector<std::string> followed,
                                   std::vector<std::string> unfollowed) {
        FileAccess::Others others{.paths = std::move(unfollowed)};
        access.shredDroppedFile(followed, others);
        EXPECT_THAT(followed, IsEmpty());
        EXPECT_THAT(others.paths, IsEmpty());
        return access.outcome();
    }
};

TEST_F(LinksStayTest, ALinkGoesAndItsTargetStaysByteForByte) {
    writeFile(folder / "kept", "kept");
    fs::create_symlink(folder / "kept", folder / "link");
    const Outcome& outcome = shredUnfollowed({}, {folder / "link"});
    EXPECT_FALSE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(readFile(folder / "kept"), "kept");
    EXPECT_EQ(outcome.filesOverwritten, 0U);
    EXPECT_EQ(outcome.filesRemoved, 1U);
    EXPECT_EQ(outcome.allTroubles, 0U);
}

TEST_F(LinksStayTest, LinksInAFolderGoAndTheirTargetsStay) {
    writeFile(folder / "kept/a", "kept");
    writeFile(folder / "item/sub/gone", "secret");
    fs::create_symlink(folder / "kept/a", folder / "item/file");
    fs::create_directory_symlink(folder / "kept", folder / "item/sub/folder");
    fs::create_symlink("gone", folder / "item/sub/beside");
    fs::create_symlink("nowhere", folder / "item/broken");
    const Outcome& outcome = shredUnfollowed({}, {folder / "item"});
    EXPECT_FALSE(fs::exists(folder / "item"));
    EXPECT_EQ(readFile(folder / "kept/a"), "kept");
    EXPECT_EQ(outcome.filesOverwritten, 1U);
    EXPECT_EQ(outcome.bytesOverwritten, 6U);
    EXPECT_EQ(outcome.filesRemoved, 5U);
    EXPECT_EQ(outcome.allTroubles, 0U);
}

TEST_F(LinksStayTest, ALinkToNothingGoesToo) {
    fs::create_symlink("nowhere", folder / "broken");
    const Outcome& outcome = shredUnfollowed({}, {folder / "broken", folder / "none"});
    EXPECT_FALSE(fs::is_symlink(folder / "broken"));
    EXPECT_EQ(outcome.filesRemoved, 1U);
    EXPECT_EQ(outcome.allTroubles, 0U);
}

TEST_F(LinksStayTest, TheOtherListOfTheSameRequestIsFollowedAsEver) {
    writeFile(folder / "target", "secret");
    writeFile(folder / "kept", "kept");
    fs::create_symlink(folder / "target", folder / "followed");
    fs::create_symlink(folder / "kept", folder / "unfollowed");
    const Outcome& outcome = shredUnfollowed({folder / "followed"}, {folder / "unfollowed"});
    EXPECT_NE(readFile(folder / "target"), "secret");
    EXPECT_EQ(readFile(folder / "kept"), "kept");
    EXPECT_EQ(outcome.items, 2U);
    EXPECT_EQ(outcome.filesRemoved, 2U);
}

TEST_F(LinksStayTest, WhatIsNotToBeLoggedHasNoLineAndTheOthersHave) {
    writeFile(folder / "a", "a");
    writeFile(folder / "b", "b");
    writeFile(folder / "c", "c");
    std::vector<std::string> paths = {folder / "a"};
    FileAccess::Others others{.paths = {folder / "b"}, .unlogged = {folder / "c"}};
    access.shredDroppedFile(paths, others);
    EXPECT_EQ(log.lines().size(), 2U);
    EXPECT_EQ(access.outcome().filesOverwritten, 3U);
    writeFile(folder / "d", "d");
    shred({folder / "d"});
    EXPECT_EQ(log.lines().size(), 3U) << "the next request is logged again";
}

TEST_F(LinksStayTest, AStopLeavesBothLists) {
    writeFile(folder / "a", "a");
    writeFile(folder / "b", "b");
    access.requestStop();
    const Outcome& outcome = shredUnfollowed({folder / "a"}, {folder / "b"});
    EXPECT_THAT(outcome.left, ElementsAre(folder / "a", folder / "b"));
    EXPECT_EQ(readFile(folder / "b"), "b");
}

TEST_F(LinksStayTest, WhatTheProgressGoesByAreTheBytesOfPlainFilesAlone) {
    writeFile(folder / "kept", std::string(1000, 'x'));
    writeFile(folder / "item/gone", "secret");
    fs::create_symlink(folder / "kept", folder / "item/link");
    shredUnfollowed({}, {folder / "item"});
    EXPECT_EQ(access.deepPathSize(), 6U);
    EXPECT_EQ(access.deepShreddedSize(), 6U);
}

TEST_F(LinksStayTest, AnItemIsCountedByWhatWouldGo) {
    writeFile(folder / "kept", std::string(1000, 'x'));
    writeFile(folder / "item/a", "abc");
    writeFile(folder / "item/sub/b", "de");
    fs::create_symlink(folder / "kept", folder / "item/link");
    const ItemCount count = countItem(system, folder / "item");
    EXPECT_EQ(count.files, 3U);
    EXPECT_EQ(count.folders, 2U);
    EXPECT_EQ(count.bytes, 5U);
    EXPECT_THAT(count.unread, IsEmpty());
    const ItemCount link = countItem(system, folder / "item/link");
    EXPECT_EQ(link.files, 1U);
    EXPECT_EQ(link.bytes, 0U);
    const ItemCount none = countItem(system, folder / "none/at/all");
    EXPECT_EQ(none.files + none.folders + none.bytes, 0U);
    EXPECT_THAT(none.unread, IsEmpty());
}

TEST_F(LinksStayTest, WhatCannotBeCountedIsTold) {
    class Closed final : public ForwardingSystemCalls {
      public:
        using ForwardingSystemCalls::ForwardingSystemCalls;
        int openFolder(int folder, const char* name) override {
            return std::string(name) == "closed" ? -EACCES
                                                 : ForwardingSystemCalls::openFolder(folder, name);
        }
    } closed(*real);
    writeFile(folder / "item/closed/b", "de");
    writeFile(folder / "item/a", "abc");
    const ItemCount count = countItem(closed, folder / "item");
    EXPECT_EQ(count.files, 1U);
    ASSERT_EQ(count.unread.size(), 1U);
    EXPECT_EQ(count.unread[0].path, folder / "item/closed");
    EXPECT_EQ(count.unread[0].code, EACCES);
}

}  // namespace
}  // namespace dorvanel::test
