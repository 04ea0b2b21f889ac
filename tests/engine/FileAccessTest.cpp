// SPDX-License-Identifier: MIT
#include "engine/FileAccess.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "support/Disk.h"
#include "support/EngineFixture.h"
#include "ui/OpenPanel.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// The engine's operations apart from shredding.
class FileAccessTest : public EngineFixture {
  protected:
    FileAccessTest() {
        for (const char* name : {"a", "sub/b", "sub/inner/c", "sub/inner/d"}) {
            writeFile(folder / ("tree/" + std::string(name)), recognisable(1000));
        }
    }

    TemporaryFolder outside;
};

TEST_F(FileAccessTest, SizeIsTheSumOfAllFilesAndOfWhatLinksLeadTo) {
    writeFile(outside / "target", std::string(77, 'x'));
    fs::create_symlink(outside / "target", folder / "tree/link");
    fs::create_symlink(outside.path(), folder / "tree/folder link");
    fs::create_symlink("nowhere", folder / "tree/dangling");
    EXPECT_EQ(access.sizeInBytes(folder / "tree"), 4077U);
    EXPECT_EQ(access.sizeInBytes(folder / "tree/a"), 1000U);
    EXPECT_EQ(access.sizeInBytes(folder / "tree/link"), 77U);
    EXPECT_EQ(access.sizeInBytes(folder / "nothing"), 0U);
}

TEST_F(FileAccessTest, MoveAndRenameReturnsTheHoldingFolder) {
    const std::string holding = access.moveAndRename(folder / "tree");
    EXPECT_EQ(fs::path(holding).parent_path(), folder.path());
    EXPECT_THAT(fs::path(holding).filename(), ::testing::StartsWith("Dorvanel X Items ("));
    EXPECT_THAT(namesIn(holding), SizeIs(1));
    EXPECT_EQ(access.sizeInBytes(holding), 4000U);
}

TEST_F(FileAccessTest, ThePredicatesAlwaysAnswerNo) {
    EXPECT_EQ(access.safePlaceInPath("/"), 0);
    EXPECT_EQ(access.safePlaceBelowPath(folder.path()), 0);
}

/// Picks what the test says.
class FakeOpenPanel final : public ui::OpenPanel {
  public:
    void setAllowsMultipleSelection(bool allows) override { allowsMultiple = allows; }
    std::optional<std::vector<std::string>> runModalForDirectory(
        const std::string& directory) override {
        startedIn = directory;
        return picked;
    }

    bool allowsMultiple = false;
    std::string startedIn;
    std::optional<std::vector<std::string>> picked;
};

TEST_F(FileAccessTest, TheOpenPanelStartsAtHomeAndItsFilesAreHandedOverAtOnce) {
    FakeOpenPanel panel;
    panel.picked = {folder / "one", folder / "two"};
    std::vector<std::string> handedOver;
    FileAccess::openDoc(panel, [&](std::vector<std::string> items) { handedOver = items; });
    EXPECT_TRUE(panel.allowsMultiple);
    EXPECT_EQ(panel.startedIn, home.path());
    EXPECT_THAT(handedOver, ElementsAre(folder / "one", folder / "two"));
}

TEST_F(FileAccessTest, ACancelledOpenPanelDoesNothing) {
    FakeOpenPanel panel;
    FileAccess::openDoc(panel, [](const std::vector<std::string>&) { FAIL(); });
}

}  // namespace
}  // namespace dorvanel::test
