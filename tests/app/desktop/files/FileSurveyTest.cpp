// SPDX-License-Identifier: MIT
#include "app/desktop/files/FileSurvey.h"

#include <filesystem>
#include <map>

#include "app/desktop/DesktopFixture.h"

namespace dorvanel::test {
namespace {

using desktop::FileFacts;
using desktop::FileSurvey;
using Kind = FileFacts::Kind;

class FileSurveyTest : public ::testing::Test {
  protected:
    TemporaryFolder folder;
    std::map<std::size_t, FileFacts> facts;
    FileSurvey survey{[this](std::size_t index, const FileFacts& found) {
        EXPECT_TRUE(desktop::isMainThread());
        facts[index] = found;
    }};
};

TEST_F(FileSurveyTest, TellsWhatEachNameStandsForWithoutFollowingLinks) {
    writeFile(folder / "file", "123");
    writeFile(folder / "folder/deep/one", "1234");
    writeFile(folder / "folder/two", "12");
    std::filesystem::create_directory_symlink(folder.path(), folder / "folder/round");
    std::filesystem::create_symlink("/no/such/file", folder / "link");
    survey.start({folder / "file", folder / "folder", folder / "link", folder / "missing"}, true);
    waitUntil([this] { return facts.size() == 4 && facts[1].isCounted; });
    EXPECT_EQ(facts[0].kind, Kind::file);
    EXPECT_EQ(facts[0].bytes, 3U);
    EXPECT_EQ(facts[1].kind, Kind::folder);
    EXPECT_EQ(facts[1].files, 3U);
    EXPECT_EQ(facts[1].bytes, 6U);
    EXPECT_EQ(facts[2].kind, Kind::link);
    EXPECT_EQ(facts[3].kind, Kind::missing);
}

TEST_F(FileSurveyTest, CountsNoFolderWhereItIsNotTo) {
    writeFile(folder / "folder/one", "1234");
    writeFile(folder / "last", "1");
    survey.start({folder / "folder", folder / "last"}, false);
    waitUntil([this] { return facts.size() == 2; });
    survey.stop();
    EXPECT_FALSE(facts[0].isCounted);
}

TEST_F(FileSurveyTest, FindsNothingAnyMoreOnceItIsStopped) {
    for (int i = 0; i < 200; ++i) writeFile(folder / ("folder/" + std::to_string(i)));
    for (int i = 0; i < 50; ++i) {
        survey.start({folder / "folder"}, true);
        survey.stop();
        const auto before = facts.size();
        QCoreApplication::processEvents();
        EXPECT_EQ(facts.size(), before);
    }
}

TEST_F(FileSurveyTest, BeginsAnewWithOtherFiles) {
    writeFile(folder / "file", "123");
    survey.start({folder / "file"}, true);
    survey.start({folder / "missing"}, true);
    waitUntil([this] { return !facts.empty(); });
    EXPECT_EQ(facts[0].kind, Kind::missing);
}

}  // namespace
}  // namespace dorvanel::test
