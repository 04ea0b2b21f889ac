// SPDX-License-Identifier: MIT
#include "targets/trash/TrashFolders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "support/TemporaryFolder.h"

namespace dorvanel::trash {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A folder that stands for the top of a volume, and one for the data of the home folder.
class TrashFoldersTest : public ::testing::Test {
  protected:
    void make(const std::string& path, unsigned mode = 0700) {
        fs::create_directories(path);
        fs::permissions(path, static_cast<fs::perms>(mode));
    }
    void find() {
        found = findTrashFolders(*system, folder / "data", {top, folder / "missing"});
        paths.clear();
        refused.clear();
        for (const TrashFolder& trash : found.folders) paths.push_back(below(trash.path));
        for (const Refusal& refusal : found.refused) {
            refused.push_back(below(refusal.path) + ": " + refusal.reason);
        }
    }
    std::string below(const std::string& path) const {
        return path.substr(folder.path().native().size() + 1);
    }

    test::TemporaryFolder folder;
    const std::string top = folder / "top";
    const std::string user = std::to_string(::geteuid());
    std::unique_ptr<platform::SystemCalls> system = platform::makeSystemCalls();
    FoundTrash found;
    std::vector<std::string> paths;
    std::vector<std::string> refused;
};

TEST_F(TrashFoldersTest, WhereNothingIsNothingIsFoundOrRefused) {
    find();
    EXPECT_THAT(paths, IsEmpty());
    EXPECT_THAT(refused, IsEmpty());
}

TEST_F(TrashFoldersTest, TheThreeKindsOfTrashAreFound) {
    make(folder / "data/Trash/files");
    make(top + "/.Trash", 01777);
    make(top + "/.Trash/" + user + "/files");
    make(top + "/.Trash-" + user + "/info");
    find();
    EXPECT_THAT(paths, ElementsAre("data/Trash", "top/.Trash/" + user, "top/.Trash-" + user));
    EXPECT_THAT(refused, IsEmpty());
    EXPECT_EQ(found.folders[0].files.kind, platform::EntryKind::folder);
    EXPECT_EQ(found.folders[0].info.kind, platform::EntryKind::unknown);
    EXPECT_EQ(found.folders[2].info.kind, platform::EntryKind::folder);
}

TEST_F(TrashFoldersTest, ASharedFolderWithoutTheStickyBitIsRefused) {
    make(top + "/.Trash", 0777);
    find();
    EXPECT_THAT(refused, IsEmpty()) << "nothing of this user is in it";
    make(top + "/.Trash/" + user);
    find();
    EXPECT_THAT(paths, IsEmpty());
    EXPECT_THAT(refused, ElementsAre("top/.Trash: has no sticky bit"));
}

TEST_F(TrashFoldersTest, LinksAreRefusedWhereverTheyStand) {
    make(folder / "elsewhere/" + user + "/files", 0700);
    make(top);
    make(folder / "data/Trash");
    fs::permissions(folder / "elsewhere", static_cast<fs::perms>(01777));
    fs::create_symlink(folder / "elsewhere", top + "/.Trash");
    fs::create_symlink(folder / "elsewhere/" + user, top + "/.Trash-" + user);
    fs::create_symlink(folder / "elsewhere", folder / "data/Trash/files");
    find();
    EXPECT_THAT(paths, ElementsAre("data/Trash"));
    EXPECT_EQ(found.folders[0].files.kind, platform::EntryKind::unknown);
    EXPECT_THAT(refused, ElementsAre("data/Trash/files: is a link", "top/.Trash: is a link",
                                     "top/.Trash-" + user + ": is a link"));
}

TEST_F(TrashFoldersTest, FoldersOfOthersAndThoseThatOthersMayWriteInAreRefused) {
    if (::geteuid() != 0) GTEST_SKIP() << "only root can give a folder away";
    make(folder / "data/Trash");
    ASSERT_EQ(::chown((folder / "data/Trash").c_str(), 1234, 1234), 0);
    make(top + "/.Trash-" + user, 0777);
    make(top + "/.Trash", 01777);
    make(top + "/.Trash/" + user);
    ASSERT_EQ(::chown((top + "/.Trash/" + user).c_str(), 1234, 1234), 0);
    find();
    EXPECT_THAT(paths, IsEmpty());
    EXPECT_THAT(refused, ElementsAre("data/Trash: belongs to another user",
                                     "top/.Trash/" + user + ": belongs to another user",
                                     "top/.Trash-" + user + ": others may write in it"));
}

TEST_F(TrashFoldersTest, OneThatIsSeenTwiceIsFoundOnce) {
    make(folder / "data/Trash/files");
    found = findTrashFolders(*system, folder / "data", {});
    addTrashFolder(*system, folder / "data/../data/Trash", true, found);
    EXPECT_EQ(found.folders.size(), 1U);
}

TEST_F(TrashFoldersTest, AnItemsTrashFolderIsKnownByPlaceAndName) {
    EXPECT_EQ(
        trashFolderOf("/home/me/.local/share/Trash/files/x", "/home/me/.local/share/Trash", 5),
        "/home/me/.local/share/Trash");
    EXPECT_EQ(trashFolderOf("/mnt/.Trash-5/files/x", "", 5), "/mnt/.Trash-5");
    EXPECT_EQ(trashFolderOf("/mnt/.Trash/5/files/x", "", 5), "/mnt/.Trash/5");
    EXPECT_EQ(trashFolderOf("/mnt/.Trash-5/files/x/y", "", 5), "");
    EXPECT_EQ(trashFolderOf("/mnt/.Trash-6/files/x", "", 5), "");
    EXPECT_EQ(trashFolderOf("/mnt/.Trash-5/info/x", "", 5), "");
}

}  // namespace
}  // namespace dorvanel::trash
