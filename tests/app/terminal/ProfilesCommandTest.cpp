// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>

#include "app/terminal/TestTerminal.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;

class ProfilesCommandTest : public ::testing::Test {
  protected:
    void addMozilla(const std::string& name) const {
        fs::create_directories(home.path() / "Library/Mozilla/Profiles" / name);
    }
    void addFirefox(const std::string& name) const {
        fs::create_directories(home.path() / "Library/Application Support/Firefox/Profiles" / name);
    }
    /// Runs "dorvanel profiles WORDS..." and gives back what it printed.
    std::string profiles(std::vector<std::string> words) {
        words.insert(words.begin(), "profiles");
        TestTerminal console = asTerminal ? TestTerminal(80) : TestTerminal();
        status = static_cast<terminal::ExitStatus>(console.run(words));
        err = console.err.str();
        return console.out.str();
    }

    TemporaryHome home;
    bool asTerminal = false;
    terminal::ExitStatus status = terminal::ExitStatus::usage;
    std::string err;
};

TEST_F(ProfilesCommandTest, ListPrintsWhatTheMenuShowsWithFullFolderNames) {
    addMozilla("default");
    addFirefox("k3.work");
    EXPECT_EQ(profiles({"list"}), "Netscape/Mozilla\n[x] default\n\nFirefox\n[x] k3.work\n");
    EXPECT_EQ(status, terminal::ExitStatus::done);
    EXPECT_EQ(err, "");
    EXPECT_EQ(profiles({}), profiles({"list"}));
}

TEST_F(ProfilesCommandTest, AHomeWithoutProfilesPrintsNothing) {
    EXPECT_EQ(profiles({"list"}), "");
    EXPECT_EQ(status, terminal::ExitStatus::done);
}

TEST_F(ProfilesCommandTest, SelectAndDeselectAreKeptForTheNextCommand) {
    addMozilla("default");
    addFirefox("k3.work");
    EXPECT_EQ(profiles({"deselect", "default"}), "");
    EXPECT_EQ(status, terminal::ExitStatus::done);
    EXPECT_EQ(profiles({}), "Netscape/Mozilla\n[ ] default\n\nFirefox\n[x] k3.work\n");
    profiles({"select", "default"});
    profiles({"deselect", "k3.work"});
    EXPECT_EQ(profiles({}), "Netscape/Mozilla\n[x] default\n\nFirefox\n[ ] k3.work\n");
}

TEST_F(ProfilesCommandTest, SelectingTwiceIsAsSelectingOnce) {
    addMozilla("default");
    profiles({"select", "default"});
    profiles({"select", "default"});
    EXPECT_EQ(status, terminal::ExitStatus::done);
    EXPECT_EQ(profiles({}), "Netscape/Mozilla\n[x] default\n");
    profiles({"deselect", "default"});
    profiles({"deselect", "default"});
    EXPECT_EQ(status, terminal::ExitStatus::done);
    EXPECT_EQ(profiles({}), "Netscape/Mozilla\n[ ] default\n");
}

TEST_F(ProfilesCommandTest, ANameOfBothBrowsersIsOneSelection) {
    addMozilla("same");
    addFirefox("same");
    profiles({"deselect", "same"});
    EXPECT_EQ(profiles({}), "Netscape/Mozilla\n[ ] same\n\nFirefox\n[ ] same\n");
    profiles({"select", "same"});
    EXPECT_EQ(profiles({}), "Netscape/Mozilla\n[x] same\n\nFirefox\n[x] same\n");
}

TEST_F(ProfilesCommandTest, AnUnknownNameAndAHeadingAreRefused) {
    addMozilla("default");
    for (const char* name : {"other", "Netscape/Mozilla", "Default", ""}) {
        EXPECT_EQ(profiles({"select", name}), "");
        EXPECT_EQ(status, terminal::ExitStatus::usage) << name;
        EXPECT_NE(err.find("there is no profile"), std::string::npos) << err;
    }
    EXPECT_EQ(profiles({}), "Netscape/Mozilla\n[x] default\n");
}

TEST_F(ProfilesCommandTest, ANameInBracketsIsANameLikeAnyOther) {
    addFirefox("[a,b]");
    profiles({"deselect", "[a,b]"});
    EXPECT_EQ(status, terminal::ExitStatus::done) << err;
    EXPECT_EQ(profiles({}), "\nFirefox\n[ ] [a,b]\n");
}

TEST_F(ProfilesCommandTest, ATitleThatTheMenuShortensIsNoName) {
    addFirefox("k3.work");
    profiles({"deselect", "work"});
    EXPECT_EQ(status, terminal::ExitStatus::usage);
    EXPECT_EQ(profiles({}), "\nFirefox\n[x] k3.work\n");
}

TEST_F(ProfilesCommandTest, TheOneTimeAlertGoesToStandardErrorOnce) {
    addMozilla("a");
    addMozilla("b");
    const std::string listed = profiles({});
    EXPECT_TRUE(err.starts_with("Multiple Mozilla Profiles\nYou have more than 1")) << err;
    EXPECT_EQ(listed.find("Multiple"), std::string::npos);
    EXPECT_EQ(profiles({}), listed);
    EXPECT_EQ(err, "");
}

TEST_F(ProfilesCommandTest, AHostileNameIsEscapedOnATerminalAndLeftAloneInAPipe) {
    addMozilla("\x1b[31mred");
    EXPECT_EQ(profiles({}), "Netscape/Mozilla\n[x] \x1b[31mred\n");
    asTerminal = true;
    EXPECT_EQ(profiles({}).find('\x1b'), std::string::npos);
}

TEST_F(ProfilesCommandTest, TheHomeOfTheCommandLineIsTheOneThatIsShown) {
    const TemporaryFolder other;
    fs::create_directories(other.path() / "Library/Mozilla/Profiles/elsewhere");
    EXPECT_EQ(profiles({"--home", other.path()}), "Netscape/Mozilla\n[x] elsewhere\n");
    setenv("HOME", home.path().c_str(), 1);
}

TEST_F(ProfilesCommandTest, AWordTooManyIsBadUsage) {
    profiles({"select"});
    EXPECT_EQ(status, terminal::ExitStatus::usage);
    profiles({"list", "more"});
    EXPECT_EQ(status, terminal::ExitStatus::usage);
}

}  // namespace
}  // namespace dorvanel::test
