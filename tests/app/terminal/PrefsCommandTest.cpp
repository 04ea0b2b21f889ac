// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "app/terminal/TestTerminal.h"
#include "prefs/PropertyListDefaults.h"
#include "support/Python.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

class PrefsCommandTest : public ::testing::Test {
  protected:
    std::string stored() {
        return python(home.path(),
                      "import plistlib\n"
                      "d = plistlib.load(open('" +
                          userDefaultsPath() +
                          "', 'rb'))\n"
                          "print(dict(sorted(d.items())))\n");
    }

    TemporaryHome home;
    TestTerminal console;
};

TEST_F(PrefsCommandTest, APreferenceThatCameLaterIsListedLastAndOnlyWhereItWasChosen) {
    EXPECT_EQ(console.run({"prefs", "get", "ShredMentions"}), 0);
    EXPECT_EQ(console.out.str(), "NO\n");
    EXPECT_EQ(console.run({"prefs", "set", "ShredMentions", "YES"}), 0);
    EXPECT_EQ(console.run({"prefs"}), 0);
    EXPECT_TRUE(console.out.str().ends_with("ShredMailCache NO\nShredMentions YES\n"));
    EXPECT_EQ(console.run({"prefs", "set", "ShredMentions", "NO"}), 0);
    EXPECT_EQ(console.run({"prefs"}), 0);
    EXPECT_TRUE(console.out.str().ends_with("ShredMailCache NO\n"));
}

TEST_F(PrefsCommandTest, ListsKeysAndValuesInTheOrderOfTheTable) {
    const std::string list =
        "ShredCache YES\nShredIEDownloadCache NO\nShredMailTrash YES\nShredHistory NO\n"
        "HideAfterShredding NO\nBrowserWatch YES\nActivityLog NO\nConfirmShredding YES\n"
        "DoDSanitize NO\nNumberOfWrites 0\nOverwritePattern 0\nShredAppleMailJunk NO\nNSA NO\n"
        "ShredMailsmithSpam NO\nshredSafariFavicon NO\nShredQuicktimeCache NO\nShredMailCache NO\n";
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"prefs"}, std::vector<std::string>{"prefs", "list"}}) {
        EXPECT_EQ(console.run(words), 0);
        EXPECT_EQ(console.out.str(), list);
        EXPECT_EQ(console.err.str(), "");
    }
    EXPECT_FALSE(std::filesystem::exists(userDefaultsPath())) << "nothing to store";
}

TEST_F(PrefsCommandTest, AChangeIsSavedAndPrintedAlone) {
    EXPECT_EQ(console.run({"prefs", "set", "ShredHistory", "YES"}), 0);
    EXPECT_EQ(console.run({"prefs", "set", "NumberOfWrites", "3"}), 0);
    EXPECT_EQ(console.run({"prefs", "set", "ShredCache", "NO"}), 0);
    EXPECT_EQ(console.out.str(), "");
    EXPECT_EQ(stored(), "{'NumberOfWrites': 3, 'ShredCache': False, 'ShredHistory': True}");
    EXPECT_EQ(console.run({"prefs", "get", "ShredHistory"}), 0);
    EXPECT_EQ(console.out.str(), "YES\n");
    EXPECT_EQ(console.run({"prefs", "get", "NumberOfWrites"}), 0);
    EXPECT_EQ(console.out.str(), "3\n");
    EXPECT_EQ(console.run({"prefs", "set", "ShredHistory", "NO"}), 0);
    EXPECT_EQ(stored(), "{'NumberOfWrites': 3, 'ShredCache': False}");
}

TEST_F(PrefsCommandTest, RevertRestoresTheFactoryValuesAndSaves) {
    EXPECT_EQ(console.run({"prefs", "set", "NSA", "YES"}), 0);
    EXPECT_EQ(console.run({"apps", "disable", "Safari"}), 0);
    EXPECT_EQ(console.run({"prefs", "revert"}), 0);
    EXPECT_EQ(stored().find("NSA"), std::string::npos);
    EXPECT_NE(stored().find("EnabledBrowsers"), std::string::npos) << "not touched by a revert";
}

TEST_F(PrefsCommandTest, OnlyValuesThatThePanelCouldStoreAreTaken) {
    const auto taken = [&](const std::string& key, const std::string& value) {
        const int status = console.run({"prefs", "set", key, value});
        EXPECT_TRUE(status == 0 || status == 2);
        return status == 0;
    };
    for (int index = -2; index <= 20; ++index) {
        const bool isWrites = index == 0 || (index >= 2 && index <= 16);
        const bool isPattern = index == 0 || (index >= 2 && index <= 6);
        EXPECT_EQ(taken("NumberOfWrites", std::to_string(index)), isWrites) << index;
        EXPECT_EQ(taken("OverwritePattern", std::to_string(index)), isPattern) << index;
    }
    for (const char* value : {"", "YES", "3x", "0x3", " 3", "3.0", "+3", "99999999999999999999"}) {
        EXPECT_FALSE(taken("NumberOfWrites", value)) << value;
    }
    for (const char* value : {"", "yes", "Yes", "no", "1", "0", "true", "YES "}) {
        EXPECT_FALSE(taken("ShredHistory", value)) << value;
    }
}

TEST_F(PrefsCommandTest, ARefusedValueIsAnsweredWithWhatIsAllowedAndNothingIsStored) {
    EXPECT_EQ(console.run({"prefs", "set", "NumberOfWrites", "1"}), 2);
    EXPECT_EQ(console.err.str(), "dorvanel: NumberOfWrites takes 0 or 2 to 16, not \"1\"\n");
    EXPECT_EQ(console.run({"prefs", "set", "OverwritePattern", "7"}), 2);
    EXPECT_EQ(console.err.str(), "dorvanel: OverwritePattern takes 0 or 2 to 6, not \"7\"\n");
    EXPECT_EQ(console.run({"prefs", "set", "NSA", "maybe"}), 2);
    EXPECT_EQ(console.err.str(), "dorvanel: NSA takes YES or NO, not \"maybe\"\n");
    EXPECT_FALSE(std::filesystem::exists(userDefaultsPath()));
}

TEST_F(PrefsCommandTest, AnUnknownPreferenceIsRefused) {
    for (const char* key :
         {"", "shredcache", "ShredSafariFavicon", "EnabledBrowsers", "FirstRun"}) {
        EXPECT_EQ(console.run({"prefs", "get", key}), 2) << key;
        EXPECT_EQ(console.run({"prefs", "set", key, "YES"}), 2) << key;
        EXPECT_EQ(console.err.str(), "dorvanel: there is no preference \"" + std::string(key) +
                                         "\"; \"dorvanel prefs\" lists them\n");
    }
}

TEST_F(PrefsCommandTest, AStoredValueThatNobodyCouldChooseIsShownAsItIs) {
    python(home.path(),
           "import plistlib\n"
           "plistlib.dump({'NumberOfWrites': 1, 'OverwritePattern': -4, 'NSA': 'y'},"
           " open('" +
               userDefaultsPath() + "', 'wb'))\n");
    EXPECT_EQ(console.run({"prefs", "get", "NumberOfWrites"}), 0);
    EXPECT_EQ(console.out.str(), "1\n");
    EXPECT_EQ(console.run({"prefs", "get", "OverwritePattern"}), 0);
    EXPECT_EQ(console.out.str(), "-4\n");
    EXPECT_EQ(console.run({"prefs", "get", "NSA"}), 0);
    EXPECT_EQ(console.out.str(), "YES\n");
}

TEST_F(PrefsCommandTest, AFileThatCannotBeReadIsToldAndNothingIsListedOrChanged) {
    const std::string path = userDefaultsPath();
    writeFile(path, "junk");
    using Words = std::vector<std::string>;
    for (const Words& words :
         {Words{"prefs"}, Words{"prefs", "list"}, Words{"prefs", "get", "ShredCache"},
          Words{"prefs", "set", "ShredHistory", "YES"}, Words{"apps"},
          Words{"apps", "disable", "Safari"}, Words{"apps", "enable", "Safari"}, Words{"profiles"},
          Words{"profiles", "select", "default"}, Words{"profiles", "deselect", "default"}}) {
        SCOPED_TRACE(testing::PrintToString(words));
        EXPECT_EQ(console.run(words), 1);
        EXPECT_EQ(console.out.str(), "");
        EXPECT_TRUE(console.err.str().starts_with("dorvanel: " + path +
                                                  ": parse: not a whole property list\n"))
            << console.err.str();
        EXPECT_NE(console.err.str().find("dorvanel prefs revert"), std::string::npos);
        EXPECT_EQ(readFile(path), "junk");
        EXPECT_FALSE(std::filesystem::exists(path + " (damaged 1)"));
    }
}

TEST_F(PrefsCommandTest, ARevertSetsAFileThatCannotBeReadAsideAndWritesAGoodOne) {
    const std::string path = userDefaultsPath();
    writeFile(path, "junk");
    writeFile(path + " (damaged 1)", "of another day");
    EXPECT_EQ(console.run({"prefs", "revert"}), 0);
    EXPECT_EQ(console.err.str(),
              "dorvanel: " + path + ": parse: not a whole property list\n" + "dorvanel: " + path +
                  ": parse: not a whole property list; kept as " + path + " (damaged 2)\n");
    EXPECT_EQ(readFile(path + " (damaged 1)"), "of another day");
    EXPECT_EQ(readFile(path + " (damaged 2)"), "junk");
    EXPECT_EQ(stored(), "{}");
    EXPECT_EQ(console.run({"prefs", "get", "ShredCache"}), 0);
    EXPECT_EQ(console.out.str(), "YES\n");
    EXPECT_EQ(console.err.str(), "");
}

TEST_F(PrefsCommandTest, AChangeThatCannotBeSavedIsToldAndFails) {
    // A link to where no file can be made: the list is known, and empty.
    std::filesystem::create_symlink(home / "missing folder/list", userDefaultsPath());
    EXPECT_EQ(console.run({"prefs", "set", "NSA", "YES"}), 1);
    EXPECT_NE(console.err.str().find("dorvanel: not saved: "), std::string::npos)
        << console.err.str();
}

}  // namespace
}  // namespace dorvanel::test
