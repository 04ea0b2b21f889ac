#include <gtest/gtest.h>

#include "app/terminal/TestTerminal.h"
#include "platform/FileManager.h"
#include "platform/PropertyListDefaults.h"
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
    for (const Words& words : {Words{}, Words{"shred"}, Words{"prefs"}, Words{"prefs", "get"},
                               Words{"prefs", "set"}, Words{"apps"}, Words{"apps", "enable"},
                               Words{"log"}, Words{"watch"}, Words{"shred", "some file"}}) {
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
    EXPECT_FALSE(std::filesystem::exists(platform::userDefaultsPath()));
}

TEST_F(CommandLineTest, HostileWordsAreEscapedForAPersonAndRawInAPipe) {
    EXPECT_EQ(console.run({"prefs", "get", "\x1b[2J"}), 2);
    EXPECT_NE(console.err.str().find("\"\x1b[2J\""), std::string::npos);
    TestTerminal person(80);
    for (const Words& words : {Words{"prefs", "get", "\x1b[2J"}, Words{"log", "--bad\x1b[2J"},
                               Words{"log", "\x1b[2J"}, Words{"shred", "\x1b[2J"}}) {
        EXPECT_EQ(person.run(words), 2);
        EXPECT_NE(person.err.str().find("\\x1b[2J"), std::string::npos) << person.err.str();
        EXPECT_EQ(person.err.str().find('\x1b'), std::string::npos);
    }
}

}  // namespace
}  // namespace dorvanel::test
