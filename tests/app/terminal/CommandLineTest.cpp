// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "app/terminal/TestTerminal.h"
#include "platform/FileManager.h"
#include "prefs/PropertyListDefaults.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

using Words = std::vector<std::string>;

class CommandLineTest : public ::testing::Test {
  protected:
    TemporaryHome home;
    TestTerminal console;
};

TEST_F(CommandLineTest, HelpAndVersionAreAnsweredEverywhere) {
    for (const Words& words :
         {Words{}, Words{"shred"}, Words{"prefs"}, Words{"prefs", "get"}, Words{"prefs", "set"},
          Words{"apps"}, Words{"apps", "enable"}, Words{"log"}, Words{"watch"}, Words{"run"}}) {
        for (const char* option : {"--version", "--help", "-h"}) {
            Words line = words;
            line.emplace_back(option);
            EXPECT_EQ(console.run(line), 0) << testing::PrintToString(line);
            EXPECT_EQ(console.err.str(), "");
            const std::string expected =
                std::string(option) == "--version" ? "dorvanel " DORVANEL_VERSION "\n" : "Usage: ";
            EXPECT_NE(console.out.str().find(expected), std::string::npos) << console.out.str();
        }
    }
    EXPECT_EQ(console.run({"--version", "shred"}), 0);
}

TEST_F(CommandLineTest, BadUsageIsToldOnStandardError) {
    for (const Words& words :
         {Words{}, Words{"nonsense"}, Words{"--nonsense"}, Words{"shred"},
          Words{"shred", "--force"}, Words{"prefs", "nonsense"}, Words{"prefs", "get"},
          Words{"prefs", "get", "NSA", "more"}, Words{"prefs", "set", "NSA"},
          Words{"apps", "enable"}, Words{"log", "more"}, Words{"prefs", "list", "get", "NSA"},
          Words{"log", "prefs"}, Words{"--home"}, Words{"--home", "", "prefs"},
          Words{"--home", "/nonexistent", "prefs"}}) {
        EXPECT_EQ(console.run(words), 2) << testing::PrintToString(words);
        EXPECT_EQ(console.out.str(), "");
        EXPECT_NE(console.err.str(), "");
    }
}

TEST_F(CommandLineTest, AnUnknownCommandIsNamed) {
    EXPECT_EQ(console.run({"shed", "file"}), 2);
    EXPECT_NE(console.err.str().find("shed"), std::string::npos) << console.err.str();
    EXPECT_EQ(console.run({}), 2);
    EXPECT_NE(console.err.str().find("A command is required"), std::string::npos);
}

TEST_F(CommandLineTest, HomeStandsForTheHomeFolderBeforeAndAfterTheCommand) {
    const std::string other = home / "other";
    std::filesystem::create_directory(other);
    for (const Words& words : {Words{"--home", other, "prefs", "set", "NSA", "YES"},
                               Words{"prefs", "--home", other, "set", "NumberOfWrites", "3"},
                               Words{"prefs", "set", "ShredHistory", "YES", "--home=" + other}}) {
        setenv("HOME", home.path().c_str(), 1);
        EXPECT_EQ(console.run(words), 0) << console.err.str();
        EXPECT_EQ(platform::homeDirectory(), other);
    }
    const std::string stored =
        readFile(other + "/Library/Preferences/com.dorvanel.DorvanelX.plist");
    for (const char* key : {"NSA", "NumberOfWrites", "ShredHistory"}) {
        EXPECT_NE(stored.find(key), std::string::npos) << key;
    }
    setenv("HOME", home.path().c_str(), 1);
    EXPECT_FALSE(std::filesystem::exists(userDefaultsPath()));
}

TEST_F(CommandLineTest, HostileWordsAreEscapedOnATerminalAndInAPipe) {
    TestTerminal person(80);
    for (TestTerminal* reader : {&person, &console}) {
        for (const Words& words : {Words{"prefs", "get", "\x1b[2J"}, Words{"log", "--bad\x1b[2J"},
                                   Words{"log", "\x1b[2J"}, Words{"shred", "\x1b[2J"}}) {
            EXPECT_EQ(reader->run(words), 2);
            EXPECT_NE(reader->err.str().find("\\x1b[2J"), std::string::npos) << reader->err.str();
            EXPECT_EQ(reader->err.str().find('\x1b'), std::string::npos);
        }
    }
    EXPECT_EQ(console.run({"prefs", "get", "a\nb\u202e\xff"}), 2);
    EXPECT_NE(console.err.str().find("a\\nb\\u{202e}\\xff"), std::string::npos)
        << console.err.str();
}

TEST_F(CommandLineTest, HelpAmongTheFilesToShredIsBadUsage) {
    writeFile(home / "file");
    for (const char* option : {"--help", "-h", "--version", "--help=x", "-hx"}) {
        for (const Words& words :
             {Words{"shred", option, home / "file"}, Words{"shred", home / "file", option},
              Words{"shred", option, "--", home / "file"},
              Words{"--home", home.path(), "shred", home / "file", option}}) {
            EXPECT_EQ(console.run(words), 2) << testing::PrintToString(words);
            EXPECT_EQ(console.out.str(), "");
            EXPECT_NE(console.err.str(), "");
        }
    }
    EXPECT_TRUE(std::filesystem::exists(home / "file"));
    EXPECT_EQ(console.run({"shred", "--home", home.path(), "--help"}), 0) << "no file is named";
    EXPECT_EQ(console.run({"--home", "shred", "log", "--help"}), 0) << "a folder named so";
}

TEST_F(CommandLineTest, BehindTwoDashesHelpIsTheNameOfAFile) {
    const std::filesystem::path former = std::filesystem::current_path();
    writeFile(home / "--help", "contents");
    std::filesystem::current_path(home.path());
    const int status = console.run({"shred", "--", "--help"});
    std::filesystem::current_path(former);
    EXPECT_EQ(status, 0) << console.err.str();
    EXPECT_FALSE(std::filesystem::exists(home / "--help"));
}

TEST_F(CommandLineTest, AHomeThatIsEmptyOrRelativeIsRefusedByEveryCommand) {
    const std::filesystem::path former = std::filesystem::current_path();
    const std::string file = home / "Library/Caches/Safari/file";
    writeFile(file, "kept");
    std::filesystem::current_path(home.path());
    for (const char* path : {"", ".", "Library/..", "./"}) {
        for (const Words& words :
             {Words{"shred", file}, Words{"run", "--yes"}, Words{"watch", "--yes"}, Words{"prefs"},
              Words{"prefs", "set", "NSA", "YES"}, Words{"apps"}, Words{"profiles"},
              Words{"log"}}) {
            setenv("HOME", path, 1);
            EXPECT_EQ(console.run(words), 2) << testing::PrintToString(words);
            EXPECT_EQ(console.out.str(), "");
            EXPECT_NE(console.err.str().find("HOME is not the absolute path of a folder"),
                      std::string::npos);
        }
    }
    std::filesystem::current_path(former);
    setenv("HOME", home.path().c_str(), 1);
    EXPECT_EQ(readFile(file), "kept");
    EXPECT_FALSE(std::filesystem::exists(userDefaultsPath()));
}

}  // namespace
}  // namespace dorvanel::test
