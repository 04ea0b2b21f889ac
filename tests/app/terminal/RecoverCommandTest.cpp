// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "app/MachinesUnfinished.h"
#include "app/terminal/TestTerminal.h"
#include "app/terminal/UnfinishedText.h"
#include "prefs/PropertyListDefaults.h"
#include "support/Disk.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* kName = "Dorvanel X Items (1000000000)";

class RecoverCommandTest : public ::testing::Test {
  protected:
    /// A holding folder that is not written down.
    std::string make(const std::string& parent, const std::string& name = kName) {
        const fs::path path = fs::path(parent) / name;
        writeFile(path / "tree/file", "old contents");
        fs::permissions(path, fs::perms(0700));
        return path;
    }
    /// One that a run has written down and left.
    std::string leave(const std::string& parent, const std::string& name = kName) {
        MachinesUnfinished unfinished;
        writeDown(unfinished, parent, name);
        unfinished.record().requestEnds();
        return make(parent, name);
    }
    static void writeDown(MachinesUnfinished& unfinished, const std::string& parent,
                          const std::string& name = kName) {
        platform::FileStatus status;
        const auto system = platform::makeSystemCalls();
        ASSERT_GE(system->statusAt(platform::SystemCalls::workingFolder, parent.c_str(),
                                   platform::SystemCalls::Links::follow, status),
                  0);
        unfinished.record().begins(parent, name, status);
    }
    /// Everything in the home folder.
    [[nodiscard]] std::vector<std::string> everything() const {
        std::vector<std::string> paths;
        for (const auto& entry : fs::recursive_directory_iterator(home.path())) {
            paths.push_back(entry.path());
        }
        std::ranges::sort(paths);
        return paths;
    }

    TemporaryHome home;
    TemporaryFolder work;
    std::string state = home / ".local/state/dorvanel/unfinished";
    TestTerminal console;
};

TEST_F(RecoverCommandTest, WhereNothingIsLeftItSaysSo) {
    EXPECT_EQ(console.run({"recover"}), 0);
    EXPECT_EQ(console.out.str(), "No holding folders are left.\n");
    EXPECT_EQ(console.err.str(), "");
}

TEST_F(RecoverCommandTest, FinishesWhatARunHasLeft) {
    const std::string left = leave(work.path());
    writeFile(work / "neighbour", "kept");
    console.in.str("yes\n");
    EXPECT_EQ(console.run({"recover"}), 0) << console.err.str();
    EXPECT_EQ(console.out.str(),
              left +
                  ": 1 file, 2 folders, 12 bytes\n"
                  "1 item: 1 file overwritten (12 bytes), 1 file and 2 folders removed\n");
    EXPECT_THAT(console.err.str(),
                HasSubstr("Are you sure you want to shred what is in 1 holding folder ?"));
    EXPECT_THAT(namesIn(work.path()), ElementsAre("neighbour"));
    EXPECT_THAT(namesIn(state), IsEmpty());
}

TEST_F(RecoverCommandTest, AnswersNoWhereNobodyAnswers) {
    leave(work.path());
    for (const char* answer : {"", "\n", "no\n", "n\n"}) {
        console.in.str(answer);
        EXPECT_EQ(console.run({"recover"}), 3);
        EXPECT_EQ(readFile(work / (std::string(kName) + "/tree/file")), "old contents");
        EXPECT_THAT(namesIn(state), SizeIs(1));
    }
}

TEST_F(RecoverCommandTest, TheContentsAreOverwrittenAsThePreferencesSay) {
    EXPECT_EQ(console.run({"prefs", "set", "OverwritePattern", "4"}), 0);
    const std::string left = leave(work.path());
    hardLink(left + "/tree/file", home / "witness");
    EXPECT_EQ(console.run({"recover", "--yes"}), 0);
    EXPECT_EQ(readFile(home / "witness").substr(0, 12), std::string(12, '\xFF'));
}

TEST_F(RecoverCommandTest, WhatALinkInItLeadsToStays) {
    const std::string left = leave(work.path());
    writeFile(work / "target", "kept");
    fs::create_symlink(work / "target", left + "/tree/link");
    fs::create_directory_symlink(work.path(), left + "/way out");
    EXPECT_EQ(console.run({"recover", "--yes"}), 0) << console.err.str();
    EXPECT_THAT(namesIn(work.path()), ElementsAre("target"));
    EXPECT_EQ(readFile(work / "target"), "kept");
}

TEST_F(RecoverCommandTest, APreviewTellsTheSameAndChangesNothing) {
    const std::string left = leave(work.path());
    const std::string gone = leave(home.path(), "Dorvanel X Items (2)");
    fs::remove_all(gone);
    fs::remove_all(home / "Library");
    const std::vector<std::string> before = everything();
    EXPECT_EQ(console.run({"recover", "--preview"}), 0);
    EXPECT_EQ(console.out.str(), left + ": 1 file, 2 folders, 12 bytes\n");
    EXPECT_EQ(console.err.str(), "");
    EXPECT_EQ(everything(), before);
    EXPECT_EQ(readFile(left + "/tree/file"), "old contents");
}

TEST_F(RecoverCommandTest, APreviewOfNothingMakesNothing) {
    fs::remove_all(home / "Library");
    EXPECT_EQ(console.run({"recover", "--preview"}), 0);
    EXPECT_THAT(everything(), IsEmpty());
}

TEST_F(RecoverCommandTest, ADocumentIsAllThatStandardOutputHas) {
    const std::string left = leave(work.path());
    for (const auto& [words, status] : std::vector<std::pair<std::vector<std::string>, int>>{
             {{"recover", "--json", "--preview"}, 0},
             {{"recover", "--json"}, 3},
             {{"recover", "--json", "--yes"}, 0}}) {
        EXPECT_EQ(console.run(words), status) << console.err.str();
        EXPECT_TRUE(console.out.str().starts_with("{")) << console.out.str();
        EXPECT_TRUE(console.out.str().ends_with("}\n")) << console.out.str();
        EXPECT_THAT(console.out.str(), HasSubstr(left));
    }
    EXPECT_THAT(namesIn(work.path()), IsEmpty());
}

TEST_F(RecoverCommandTest, WhatIsGoneIsForgottenWithoutAWord) {
    fs::remove_all(leave(work.path()));
    EXPECT_EQ(console.run({"recover"}), 0);
    EXPECT_EQ(console.err.str(), "");
    EXPECT_THAT(namesIn(state), IsEmpty());
}

TEST_F(RecoverCommandTest, ADamagedFileIsNamedAndTheOthersAreFinished) {
    leave(work.path());
    writeFile(state + "/damaged", "?");
    setMode(state + "/damaged", 0600);
    EXPECT_EQ(console.run({"recover", "--yes"}), 1);
    EXPECT_THAT(console.err.str(), HasSubstr(state + "/damaged: passed over"));
    EXPECT_THAT(namesIn(work.path()), IsEmpty());
    EXPECT_THAT(namesIn(state), ElementsAre("damaged"));
}

TEST_F(RecoverCommandTest, WhatIsNotThereNowIsKept) {
    fs::create_directory(work / "disk");
    leave(work / "disk");
    fs::rename(work / "disk", work / "elsewhere");
    EXPECT_EQ(console.run({"recover", "--preview"}), 1) << "as the recovery would";
    EXPECT_THAT(console.err.str(), HasSubstr("kept for later"));
    EXPECT_EQ(console.run({"recover", "--yes"}), 1);
    fs::rename(work / "elsewhere", work / "disk");
    EXPECT_EQ(console.run({"recover", "--yes"}), 0) << console.err.str();
    EXPECT_THAT(namesIn(work / "disk"), IsEmpty());
}

TEST_F(RecoverCommandTest, WhatIsInWorkIsLeftAlone) {
    MachinesUnfinished running;
    writeDown(running, work.path());
    const std::string left = make(work.path());
    EXPECT_EQ(console.run({"recover", "--yes"}), 0);
    EXPECT_THAT(console.err.str(), HasSubstr(left + ": passed over: another process works on it"));
    EXPECT_EQ(console.run({"recover", "--yes", work.path()}), 0);
    EXPECT_THAT(console.err.str(), HasSubstr(left + ": passed over: another process works on it"));
    EXPECT_EQ(readFile(left + "/tree/file"), "old contents");
}

TEST_F(RecoverCommandTest, LooksInFoldersInPlaceOfTheList) {
    const std::string listed = leave(home.path());
    const std::string deep = make(work / "a/b");
    make(work / "[a,b]");
    EXPECT_EQ(console.run({"recover", "--yes", work / "a", work / "a/b/"}), 0) << console.err.str();
    EXPECT_FALSE(fs::exists(deep));
    EXPECT_TRUE(fs::exists(listed));
    fs::current_path(work.path());
    EXPECT_EQ(console.run({"recover", "--yes", "[a,b]"}), 0) << console.err.str();
    EXPECT_THAT(namesIn(work / "[a,b]"), IsEmpty());
    EXPECT_EQ(console.run({"recover", "--yes", listed}), 0) << "one by its name";
    EXPECT_FALSE(fs::exists(listed));
    EXPECT_THAT(namesIn(state), IsEmpty()) << "what was found by looking is forgotten too";
    fs::current_path("/");
}

TEST_F(RecoverCommandTest, AFolderThatIsNoneIsBadUsage) {
    const std::string left = make(work.path());
    writeFile(work / "file");
    fs::create_directory_symlink(".", work / "link");
    for (const std::string& folder :
         {work / "nothing", work / "file", work / "link", std::string()}) {
        EXPECT_EQ(console.run({"recover", "--yes", work.path(), folder}), 2) << folder;
        EXPECT_TRUE(fs::exists(left)) << folder;
    }
}

TEST_F(RecoverCommandTest, WithPreferencesThatCannotBeReadNothingIsTouched) {
    const std::string left = leave(work.path());
    writeFile(userDefaultsPath(), "<plist><dict>");
    EXPECT_EQ(console.run({"recover", "--yes"}), 2);
    EXPECT_EQ(console.run({"recover", "--preview"}), 2);
    EXPECT_EQ(readFile(left + "/tree/file"), "old contents");
}

TEST_F(RecoverCommandTest, AHoldingFolderInWhichOthersMayWriteIsNamedAndPassedOver) {
    const std::string left = leave(work.path());
    setMode(left, 0777);
    EXPECT_EQ(console.run({"recover", "--yes"}), 1);
    EXPECT_THAT(console.err.str(), HasSubstr(left + ": passed over"));
    EXPECT_EQ(console.run({"recover", "--yes", work.path()}), 1);
    EXPECT_EQ(readFile(left + "/tree/file"), "old contents");
}

TEST_F(RecoverCommandTest, TheHomeFolderInItStays) {
    const std::string left = leave(work.path());
    fs::create_directory(left + "/home");
    setenv("XDG_STATE_HOME", (home / ".local/state").c_str(), 1);
    const std::string former = home.path();
    EXPECT_EQ(console.run({"--home", left + "/home", "recover", "--yes"}), 1);
    setenv("HOME", former.c_str(), 1);
    unsetenv("XDG_STATE_HOME");
    EXPECT_THAT(console.err.str(), HasSubstr("is the home folder or a folder above it"));
    EXPECT_EQ(readFile(left + "/tree/file"), "old contents");
}

TEST_F(RecoverCommandTest, AShreddingLeavesNothingWrittenDown) {
    writeFile(work / "file", "x");
    EXPECT_EQ(console.run({"shred", work / "file"}), 0);
    EXPECT_EQ(console.err.str(), "");
    EXPECT_THAT(namesIn(state), IsEmpty());
}

TEST_F(RecoverCommandTest, AShreddingThatCannotBeWrittenDownSaysSoAndGoesOn) {
    writeFile(home / ".local", "in the way");
    writeFile(work / "file", "x");
    EXPECT_EQ(console.run({"shred", work / "file"}), 0);
    EXPECT_THAT(console.err.str(), HasSubstr("\"dorvanel recover\" will not know"));
    EXPECT_THAT(namesIn(work.path()), IsEmpty());
}

TEST_F(RecoverCommandTest, ThereIsALineOnlyWhereSomethingIsLeft) {
    terminal::tellUnfinished(0, console.terminal);
    EXPECT_EQ(console.err.str(), "");
    leave(work.path());
    leave(home.path());
    MachinesUnfinished unfinished;
    terminal::tellUnfinished(unfinished.count(), console.terminal);
    EXPECT_EQ(console.err.str(),
              "dorvanel: 2 holding folders of an unfinished shredding are left: "
              "\"dorvanel recover\" finishes them\n");
    EXPECT_EQ(unfinished.count(), 2U) << "looking keeps nothing locked";
}

}  // namespace
}  // namespace dorvanel::test
