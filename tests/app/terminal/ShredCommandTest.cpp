// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "app/terminal/TestTerminal.h"
#include "prefs/PropertyListDefaults.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

class ShredCommandTest : public ::testing::Test {
  protected:
    ShredCommandTest() : former_(fs::current_path()) { fs::current_path(work.path()); }
    ~ShredCommandTest() override { fs::current_path(former_); }

    [[nodiscard]] Words names() const {
        Words found;
        for (const auto& entry : fs::directory_iterator(work.path())) {
            found.push_back(entry.path().filename());
        }
        std::sort(found.begin(), found.end());
        return found;
    }

    TemporaryHome home;
    TemporaryFolder work;
    TestTerminal console;

  private:
    fs::path former_;
};

TEST_F(ShredCommandTest, ShredsFilesAndFoldersAndTellsWhatWasDone) {
    writeFile(work / "one", "contents");
    writeFile(work / "tree/two", "more");
    writeFile(work / "tree/deep/three", "");
    writeFile(work / "kept", "kept");
    EXPECT_EQ(console.run({"shred", "one", "tree"}), 0);
    EXPECT_EQ(console.err.str(), "") << "silent in a pipe";
    EXPECT_EQ(console.out.str(),
              "2 items: 3 files overwritten (12 bytes), 3 files and 2 folders removed\n");
    EXPECT_EQ(names(), Words{"kept"});
    EXPECT_EQ(readFile("kept"), "kept");
}

TEST_F(ShredCommandTest, TheContentsAreOverwrittenAsThePreferencesSay) {
    EXPECT_EQ(console.run({"prefs", "set", "OverwritePattern", "4"}), 0);
    writeFile(work / "file", "secret");
    fs::create_hard_link("file", home / "witness");
    EXPECT_EQ(console.run({"shred", "file"}), 0);
    EXPECT_EQ(readFile(home / "witness"), std::string(12, '\xFF'));
}

TEST_F(ShredCommandTest, WhatTheDesktopRemembersGoesWhereItIsWanted) {
    const std::string entry = home / ".local/share/RecentDocuments/file.desktop";
    struct Case {
        Words options;
        const char* preference;
        bool goes;
    };
    for (const Case& one : {Case{{}, "NO", false}, Case{{"--mentions"}, "NO", true},
                            Case{{}, "YES", true}, Case{{"--no-mentions"}, "YES", false}}) {
        writeFile(home / "file", "secret");
        writeFile(entry, "[Desktop Entry]\nURL[$e]=file://$HOME/file\n");
        EXPECT_EQ(console.run({"prefs", "set", "ShredMentions", one.preference}), 0);
        Words words = {"shred", home / "file"};
        words.insert(words.end(), one.options.begin(), one.options.end());
        EXPECT_EQ(console.run(words), 0) << console.err.str();
        EXPECT_FALSE(fs::exists(home / "file"));
        EXPECT_EQ(fs::exists(entry), !one.goes);
    }
    EXPECT_EQ(console.run({"shred", "--mentions", "--no-mentions", entry}), 2);
}

TEST_F(ShredCommandTest, WithPreferencesThatCannotBeReadNothingIsTouched) {
    writeFile(work / "file", "contents");
    writeFile(userDefaultsPath(), "<plist><dict>");
    EXPECT_EQ(console.run({"shred", "file"}), 2);
    EXPECT_NE(console.err.str().find(userDefaultsPath()), std::string::npos) << console.err.str();
    EXPECT_EQ(readFile("file"), "contents");
    EXPECT_EQ(names(), Words{"file"});
}

TEST_F(ShredCommandTest, HostileNamesAreFilesLikeAnyOther) {
    const Words hostile = {"[a,b]",
                           "a",
                           "b",
                           "-rf",
                           "--help",
                           "prefs",
                           "shred",
                           "caf\xE9",
                           "x\ny",
                           "100%",
                           "it's",
                           "--",
                           "-",
                           "a=b",
                           "@file",
                           "++",
                           std::string(255, 'n')};
    for (const std::string& name : hostile) writeFile(work / name, "x");
    Words line = {"shred", "--"};
    line.insert(line.end(), hostile.begin(), hostile.end());
    EXPECT_EQ(console.run(line), 0) << console.err.str();
    EXPECT_EQ(names(), Words{});
}

TEST_F(ShredCommandTest, AWordThatTheParserKnowsIsAFileToo) {
    for (const char* name : {"++", "%%", "{}", "log", "-"}) writeFile(work / name, "x");
    EXPECT_EQ(console.run({"shred", "log", "++", "%%", "{}", "-"}), 0);
    EXPECT_EQ(names(), Words{});
}

TEST_F(ShredCommandTest, BehindTwoDashesAWordIsAFileWhateverStandsBefore) {
    for (const char* name : {"a", "-x", "--yes", "--", "b"}) writeFile(work / name, "x");
    EXPECT_EQ(console.run({"shred", "a", "--", "-x", "--yes", "--", "b"}), 0) << console.err.str();
    EXPECT_EQ(names(), Words{});
}

TEST_F(ShredCommandTest, AWordInBracketsIsOneFile) {
    for (const char* name : {"[a,b]", "a", "b"}) writeFile(work / name, "x");
    EXPECT_EQ(console.run({"shred", "[a,b]"}), 0);
    EXPECT_EQ(names(), (Words{"a", "b"}));
}

TEST_F(ShredCommandTest, TheNameOfACommandIsAFileHere) {
    for (const char* name : {"prefs", "list", "shred", "log"}) writeFile(work / name, "x");
    EXPECT_EQ(console.run({"shred", "prefs", "list", "shred", "log"}), 0) << console.err.str();
    EXPECT_EQ(names(), Words{});
}

TEST_F(ShredCommandTest, OneBadPathAndNothingIsShredded) {
    writeFile(work / "file", "kept");
    fs::create_symlink("gone", "dangling");
    EXPECT_EQ(console.run({"shred", "file", "nope", "/", "..", "dangling", home.path()}), 2);
    EXPECT_EQ(console.out.str(), "");
    EXPECT_EQ(console.err.str(),
              "dorvanel: \"nope\" does not exist\n"
              "dorvanel: \"/\" is the root of the file system\n"
              "dorvanel: \"..\" is never shredded\n"
              "dorvanel: \"dangling\" is a symbolic link to \"gone\", which does not exist\n"
              "dorvanel: \"" +
                  home.path().string() + "\" is the home folder or a folder above it\n");
    EXPECT_EQ(readFile("file"), "kept");
}

TEST_F(ShredCommandTest, ARealMountPointIsRefused) {
    EXPECT_EQ(console.run({"shred", "/proc"}), 2);
    EXPECT_EQ(console.err.str(), "dorvanel: \"/proc\" is a mount point\n");
}

TEST_F(ShredCommandTest, APathGivenTwiceOrInsideAnotherIsHarmless) {
    writeFile(work / "tree/file", "x");
    EXPECT_EQ(console.run({"shred", "tree", "tree/", "tree/file"}), 0) << console.err.str();
    EXPECT_EQ(names(), Words{});
}

TEST_F(ShredCommandTest, TheBarIsDrawnOnATerminalAndTakenAwayAgain) {
    writeFile(work / "file", std::string(300'000, 'x'));
    TestTerminal person(40);
    EXPECT_EQ(person.run({"shred", "file"}), 0);
    const std::string drawn = person.err.str();
    EXPECT_NE(drawn.find("100%"), std::string::npos) << drawn;
    EXPECT_EQ(drawn.find('\x1b'), std::string::npos);
    EXPECT_TRUE(drawn.ends_with(" \r"));
    EXPECT_EQ(person.out.str(),
              "1 item: 1 file overwritten (300000 bytes), 1 file and 0 folders removed\n");
}

TEST_F(ShredCommandTest, WhatIsStillThereIsNamedAndMakesTheStatusOne) {
    writeFile(work / "locked/file", "x");
    fs::permissions(work.path(), fs::perms(0755));
    fs::permissions(work / "locked", fs::perms(0555));
    fs::permissions(home.path(), fs::perms(0777));
    const std::string folder = fs::canonical("locked");
    const std::string expected = "dorvanel: " + folder +
                                 "/file: could not move: Permission denied\n"
                                 "dorvanel: 1 item still there\n";
    const pid_t child = fork();
    if (child == 0) {  // an ordinary user's process: root writes everywhere
        if (geteuid() == 0 && setuid(65534) != 0) _exit(10);
        const int status = console.run({"shred", "locked/file"});
        if (console.err.str().find(expected) == std::string::npos) _exit(12);
        _exit(status);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(WEXITSTATUS(status), 1);
    fs::permissions(work / "locked", fs::perms(0755));
    EXPECT_EQ(readFile("locked/file"), "x");
}

TEST_F(ShredCommandTest, AnInterruptEndsAfterTheBlockAtHandAndTellsWhatIsLeft) {
    EXPECT_EQ(console.run({"prefs", "set", "NumberOfWrites", "16"}), 0);
    writeFile(work / "big", "");
    fs::resize_file("big", 64 << 20);  // seconds of work, had nobody interrupted it
    writeFile(work / "next", "untouched");
    TestTerminal person(80);
    int drawings = 0;
    person.terminal.columns = [&drawings] {
        // The first drawing begins the request, the second names the file at hand.
        if (++drawings == 2) kill(getpid(), SIGINT);
        return 80;
    };
    EXPECT_EQ(person.run({"shred", "big", "next"}), 130);
    const std::string told = person.err.str();
    const Words left = names();
    ASSERT_EQ(left.size(), 2U);
    EXPECT_TRUE(left[0].starts_with("Dorvanel X Items (")) << left[0];
    EXPECT_EQ(left[1], "next");
    EXPECT_EQ(readFile("next"), "untouched");
    const std::string folder = fs::canonical(".");
    EXPECT_NE(told.find("dorvanel: left: " + folder + "/" + left[0] + "\n"), std::string::npos);
    EXPECT_NE(told.find("dorvanel: left: " + folder + "/next\n"), std::string::npos);
    EXPECT_NE(person.out.str().find("; stopped\n"), std::string::npos);

    // A second run on what is left works.
    EXPECT_EQ(console.run({"prefs", "set", "NumberOfWrites", "2"}), 0);
    fs::rename(left[0], "Dorvanel X Items (1)");  // as though seconds had passed
    EXPECT_EQ(console.run({"shred", "Dorvanel X Items (1)", "next"}), 0) << console.err.str();
    EXPECT_EQ(names(), Words{});
}

TEST_F(ShredCommandTest, APreviewTouchesNothingAndSaysWhatWouldGo) {
    writeFile(work / "tree/one", "12345");
    fs::remove_all(home / "Library");
    EXPECT_EQ(console.run({"shred", "--preview", "tree"}), 0);
    EXPECT_THAT(console.out.str(),
                ::testing::HasSubstr("1 item, 1 file, 5 bytes would be shredded"));
    EXPECT_EQ(readFile("tree/one"), "12345");
    EXPECT_TRUE(fs::is_empty(home.path())) << "no folder of the account is made";
    EXPECT_EQ(console.run({"shred", "--preview", "--json", "tree", "none"}), 2);
    EXPECT_EQ(console.out.str(), "") << "no document where nothing may be shredded";
}

TEST_F(ShredCommandTest, TheReportSaysOfEachItemWhatBecameOfIt) {
    writeFile(work / "one", "12345");
    writeFile(work / "tree/two", "1234567");
    writeFile(work / "tree/caf\xE9", "");
    EXPECT_EQ(console.run({"shred", "--json", "--verify", "one", "tree"}), 0);
    const auto document = nlohmann::json::parse(console.out.str());
    EXPECT_EQ(document.at("status"), 0);
    const auto& items = document.at("items");
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[0].at("path"), (fs::canonical(work.path()) / "one").string());
    EXPECT_EQ(items[0].at("outcome").at("verified"), 1);
    EXPECT_EQ(items[1].at("files"), 2);
    EXPECT_EQ(items[1].at("outcome").at("removed"), 3);
    EXPECT_EQ(items[1].at("outcome").at("bytes"), 7);
    EXPECT_EQ(names(), Words{});
}

TEST_F(ShredCommandTest, WhatGoesWithAnotherItemIsNoneOfItsOwnInTheReportEither) {
    writeFile(work / "tree/file", "secret");
    EXPECT_EQ(console.run({"shred", "--preview", "--json", "tree", "tree/file"}), 0);
    EXPECT_EQ(nlohmann::json::parse(console.out.str()).at("items").size(), 1U);
    EXPECT_EQ(console.run({"shred", "--json", "tree", "tree/file"}), 0);
    const auto items = nlohmann::json::parse(console.out.str()).at("items");
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items[0].at("outcome").at("removed"), 2);
}

TEST_F(ShredCommandTest, WithoutFollowingALinkGoesAndItsTargetStays) {
    writeFile(work / "kept", "kept");
    fs::create_symlink(work / "kept", work / "link");
    fs::create_symlink("nowhere", work / "broken");
    writeFile(work / "tree/file", "secret");
    fs::create_symlink(work / "kept", work / "tree/link");
    EXPECT_EQ(console.run({"shred", "broken"}), 2) << "followed, it leads nowhere";
    EXPECT_EQ(console.run({"shred", "--no-follow", "link", "broken", "tree"}), 0);
    EXPECT_EQ(names(), Words{"kept"});
    EXPECT_EQ(readFile("kept"), "kept");
}

TEST_F(ShredCommandTest, WhatDiscardingCameToIsSaidAndDoesNotChangeTheStatus) {
    writeFile(work / "file", "secret");
    EXPECT_EQ(console.run({"shred", "--discard", "file"}), 0);
    EXPECT_EQ(names(), Words{});
    EXPECT_THAT(console.out.str() + console.err.str(), ::testing::HasSubstr("discarded"));
}

}  // namespace
}  // namespace dorvanel::test
