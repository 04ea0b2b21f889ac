// SPDX-License-Identifier: MIT
#include <climits>

#include "prefs/DefaultsFixture.h"
#include "support/CommaLocale.h"

namespace dorvanel::test {
namespace {

using Strings = std::vector<std::string>;

class PropertyListDefaultsTest : public DefaultsFixture {
  protected:
    /// Stores Python values under the keys "0", "1" and so on.
    void storeByNumber(const Strings& values) {
        std::string list = "{";
        for (std::size_t i = 0; i < values.size(); ++i) {
            list += "'" + std::to_string(i) + "': " + values[i] + ", ";
        }
        store(list + "}");
    }
};

TEST_F(PropertyListDefaultsTest, LieInThePreferencesFolderOfTheHome) {
    EXPECT_EQ(path(), home / "Library/Preferences/com.dorvanel.DorvanelX.plist");
}

TEST_F(PropertyListDefaultsTest, AMissingFileHoldsNothingAndIsNotReported) {
    const auto defaults = open();
    EXPECT_FALSE(defaults->hasObjectForKey("ShredHistory"));
    EXPECT_FALSE(defaults->boolForKey("ShredHistory"));
    EXPECT_EQ(defaults->integerForKey("NumberOfWrites"), 0);
    EXPECT_FALSE(defaults->arrayForKey("EnabledBrowsers").has_value());
    EXPECT_EQ(reports, Strings{});
    EXPECT_EQ(names(), Strings{});
}

class BothForms : public DefaultsFixture, public ::testing::WithParamInterface<const char*> {};
INSTANTIATE_TEST_SUITE_P(PropertyListDefaults, BothForms, ::testing::Values("XML", "BINARY"));

TEST_P(BothForms, AreRead) {
    store(
        "{'ShredHistory': True, 'ShredCache': False, 'NumberOfWrites': 3, 'Negative': -5,"
        " 'EnabledBrowsers': ['Safari', 'iCab']}",
        GetParam());
    const auto defaults = open();
    EXPECT_TRUE(defaults->boolForKey("ShredHistory"));
    EXPECT_TRUE(defaults->hasObjectForKey("ShredCache"));
    EXPECT_FALSE(defaults->boolForKey("ShredCache"));
    EXPECT_EQ(defaults->integerForKey("NumberOfWrites"), 3);
    EXPECT_EQ(defaults->integerForKey("Negative"), -5);
    EXPECT_EQ(defaults->arrayForKey("EnabledBrowsers"), (Strings{"Safari", "iCab"}));
    EXPECT_EQ(reports, Strings{});
}

TEST_P(BothForms, KeepKeysOfAnyKindThroughASave) {
    const std::string others =
        "'My Window': '0 0 1 1 ', 'real': 0.1, 'third': 1/3, 'tiny': 5e-324, 'huge': 1e300,"
        " 'big': 2**64-1, 'low': -2**63, 'text': 'é😀\\n<&>\"\\' ]]>', 'blank': '  ', 'empty': '',"
        " 'data': bytes(range(256)), 'nothing': b'', 'date': datetime.datetime(2024, 2, 29, 1, 2),"
        " 'old': datetime.datetime(1960, 1, 1), 'deep': [1, [], {}, {'x': [True, {'y': b'z'}]}],"
        " 'k<&>é': 1, '': 2, 'flag': False";
    store("{" + others + ", 'NumberOfWrites': 3}", GetParam());
    const auto defaults = open();
    defaults->setInteger(4, "NumberOfWrites");
    ASSERT_TRUE(defaults->synchronize());
    EXPECT_EQ(python(preferences(),
                     "import plistlib, datetime\n"
                     "d = plistlib.load(open('" +
                         name +
                         "', 'rb'))\n"
                         "print(d == {" +
                         others + ", 'NumberOfWrites': 4})\n"),
              "True");
    EXPECT_TRUE(readFile(path()).starts_with("<?xml"));
}

TEST_F(PropertyListDefaultsTest, NumbersAreTheSameBytesWhereTheLocaleWritesThemWithAComma) {
    const std::string values =
        "{'real': 0.75, 'third': 1/3, 'small': -2.5e-7, 'NumberOfWrites': 4.9, 'NSA': 0.5}";
    store(values);
    const auto changed = [&] {
        const auto defaults = open();
        EXPECT_EQ(defaults->integerForKey("NumberOfWrites"), 4);
        EXPECT_TRUE(defaults->boolForKey("NSA"));
        EXPECT_TRUE(defaults->hasObjectForKey("real"));
        defaults->setBool(true, "ShredHistory");
        EXPECT_TRUE(defaults->synchronize());
        return readFile(path());
    };
    const std::string plain = changed();
    store(values);
    {
        const CommaLocale locale;
        if (!locale.isSet()) {
            std::puts("not run: no locale with a decimal comma can be made here");
            return;
        }
        ASSERT_STREQ(localeconv()->decimal_point, ",");
        EXPECT_EQ(changed(), plain);
        EXPECT_STREQ(localeconv()->decimal_point, ",") << "the program's own locale stays";
    }
    EXPECT_EQ(stored("(d['real'], d['third'], d['small'])"),
              "(0.75, 0.3333333333333333, -2.5e-07)");
    EXPECT_EQ(reports, Strings{});
}

TEST_F(PropertyListDefaultsTest, ABooleanIsStoredAsABooleanAndAnIntegerAsAnInteger) {
    const auto defaults = open();
    defaults->setBool(true, "ShredHistory");
    defaults->setBool(false, "ShredCache");
    defaults->setInteger(3, "NumberOfWrites");
    defaults->setInteger(-1, "Negative");
    defaults->setArray({"Safari", "é", ""}, "EnabledBrowsers");
    defaults->setArray({}, "ProfilesMenu");
    ASSERT_TRUE(defaults->synchronize());
    EXPECT_EQ(stored("dict(sorted(d.items()))"),
              "{'EnabledBrowsers': ['Safari', 'é', ''], 'Negative': -1, 'NumberOfWrites': 3,"
              " 'ProfilesMenu': [], 'ShredCache': False, 'ShredHistory': True}");
}

TEST_F(PropertyListDefaultsTest, AnEmptyArrayIsAnAnswerAndAnAbsentOneIsNot) {
    store("{'EnabledBrowsers': [], 'NoArray': 'Safari', 'Mixed': ['a', 1, 'b', True, []]}");
    const auto defaults = open();
    EXPECT_EQ(defaults->arrayForKey("EnabledBrowsers"), Strings{});
    EXPECT_EQ(defaults->arrayForKey("NoArray"), std::nullopt);
    EXPECT_EQ(defaults->arrayForKey("Absent"), std::nullopt);
    EXPECT_EQ(defaults->arrayForKey("Mixed"), (Strings{"a", "b"}));
}

TEST_F(PropertyListDefaultsTest, ObjectsOfAnotherKindReadAsBooleans) {
    const Strings yes = {"True",         "1",     "-1",    "2**40",  "0.5",    "-0.1",
                         "float('inf')", "'YES'", "'Yes'", "'y'",    "'true'", "'TRUE'",
                         "'T'",          "'1'",   "' 1'",  "'0010'", "'-3'",   "'+7x'"};
    const Strings no = {"False",
                        "0",
                        "0.0",
                        "'NO'",
                        "'no'",
                        "'false'",
                        "''",
                        "'0'",
                        "'000'",
                        "'-'",
                        "'on'",
                        "' '",
                        "'x1'",
                        "b'YES'",
                        "['YES']",
                        "{'YES': True}",
                        "datetime.datetime(2024, 1, 1)"};
    for (const Strings* values : {&yes, &no}) {
        storeByNumber(*values);
        const auto defaults = open();
        for (std::size_t i = 0; i < values->size(); ++i) {
            EXPECT_EQ(defaults->boolForKey(std::to_string(i)), values == &yes) << (*values)[i];
            EXPECT_TRUE(defaults->hasObjectForKey(std::to_string(i))) << (*values)[i];
        }
    }
}

TEST_F(PropertyListDefaultsTest, ObjectsOfAnotherKindReadAsIntegers) {
    const std::vector<std::pair<std::string, int>> cases = {{"3", 3},
                                                            {"-3", -3},
                                                            {"2**40", INT_MAX},
                                                            {"-2**40", INT_MIN},
                                                            {"2.9", 2},
                                                            {"-2.9", -2},
                                                            {"1e300", INT_MAX},
                                                            {"float('-inf')", INT_MIN},
                                                            {"float('nan')", 0},
                                                            {"True", 1},
                                                            {"False", 0},
                                                            {"'5'", 5},
                                                            {"' 12abc'", 12},
                                                            {"'-4'", -4},
                                                            {"'+6'", 6},
                                                            {"'+-6'", 0},
                                                            {"'YES'", 0},
                                                            {"'9999999999'", INT_MAX},
                                                            {"'-9999999999'", INT_MIN},
                                                            {"''", 0},
                                                            {"'-'", 0},
                                                            {"[3]", 0},
                                                            {"b'3'", 0},
                                                            {"{'a': 3}", 0}};
    Strings values;
    for (const auto& [value, number] : cases) values.push_back(value);
    storeByNumber(values);
    const auto defaults = open();
    for (std::size_t i = 0; i < cases.size(); ++i) {
        EXPECT_EQ(defaults->integerForKey(std::to_string(i)), cases[i].second) << cases[i].first;
    }
}

TEST_F(PropertyListDefaultsTest, ChangesAreSeenAtOnceAndWrittenBySynchronize) {
    const auto defaults = open();
    defaults->setBool(true, "ShredHistory");
    EXPECT_TRUE(defaults->boolForKey("ShredHistory"));
    EXPECT_EQ(names(), Strings{});
    ASSERT_TRUE(defaults->synchronize());
    EXPECT_EQ(stored(), "{'ShredHistory': True}");
    defaults->removeObjectForKey("ShredHistory");
    EXPECT_FALSE(defaults->hasObjectForKey("ShredHistory"));
    ASSERT_TRUE(defaults->synchronize());
    EXPECT_EQ(stored(), "{}");
}

TEST_F(PropertyListDefaultsTest, TheFileIsItsOwnersAloneAndNothingElseIsLeft) {
    const auto defaults = open();
    defaults->setBool(true, "ShredHistory");
    ASSERT_TRUE(defaults->synchronize());
    EXPECT_EQ(names(), Strings{name});
    EXPECT_EQ(std::filesystem::status(path()).permissions(), std::filesystem::perms(0600));
}

TEST_F(PropertyListDefaultsTest, NothingIsWrittenWhereNothingChanged) {
    store("{'ShredHistory': True}", "BINARY");
    const std::string before = readFile(path());
    const auto defaults = open();
    EXPECT_TRUE(defaults->boolForKey("ShredHistory"));
    EXPECT_FALSE(defaults->hasObjectForKey("ShredCache"));
    defaults->setBool(true, "ShredHistory");
    defaults->removeObjectForKey("ShredCache");
    ASSERT_TRUE(defaults->synchronize());
    EXPECT_EQ(readFile(path()), before);
}

TEST_F(PropertyListDefaultsTest, ABooleanReplacesAnObjectOfAnotherKind) {
    store("{'ShredHistory': 'YES'}");
    const auto defaults = open();
    EXPECT_TRUE(defaults->boolForKey("ShredHistory"));
    defaults->setBool(true, "ShredHistory");
    ASSERT_TRUE(defaults->synchronize());
    EXPECT_EQ(stored(), "{'ShredHistory': True}");
}

TEST_F(PropertyListDefaultsTest, TwoProcessesDoNotUndoEachOther) {
    store("{'A': 1, 'B': 1, 'C': 1}");
    const auto one = open();
    const auto other = open();
    for (const auto* defaults : {&one, &other}) {
        for (const char* key : {"A", "B", "C"}) EXPECT_EQ((*defaults)->integerForKey(key), 1);
    }
    one->setInteger(2, "A");
    ASSERT_TRUE(one->synchronize());
    other->removeObjectForKey("B");
    other->setInteger(1, "A");  // what it read, stored again
    ASSERT_TRUE(other->synchronize());
    one->setInteger(1, "B");
    ASSERT_TRUE(one->synchronize());
    EXPECT_EQ(stored("dict(sorted(d.items()))"), "{'A': 2, 'C': 1}");
}

TEST_F(PropertyListDefaultsTest, SynchronizeReadsWhatOthersChanged) {
    const auto defaults = open();
    EXPECT_EQ(defaults->integerForKey("NumberOfWrites"), 0);
    store("{'NumberOfWrites': 7}");
    EXPECT_EQ(defaults->integerForKey("NumberOfWrites"), 0);
    ASSERT_TRUE(defaults->synchronize());
    EXPECT_EQ(defaults->integerForKey("NumberOfWrites"), 7);
}

TEST_F(PropertyListDefaultsTest, ALinkStaysALinkAndItsTargetIsReplaced) {
    std::filesystem::create_directories(home / "dotfiles");
    std::filesystem::create_symlink("../../dotfiles/prefs.plist", path());
    const auto defaults = open();
    defaults->setInteger(3, "NumberOfWrites");
    ASSERT_TRUE(defaults->synchronize());  // the link led to nothing
    EXPECT_TRUE(std::filesystem::is_symlink(path()));
    EXPECT_EQ(stored(), "{'NumberOfWrites': 3}");
    defaults->setInteger(4, "NumberOfWrites");
    ASSERT_TRUE(defaults->synchronize());
    EXPECT_TRUE(std::filesystem::is_symlink(path()));
    EXPECT_EQ(stored(), "{'NumberOfWrites': 4}");
    EXPECT_EQ(names(), Strings{name});
}

TEST_F(PropertyListDefaultsTest, MissingAccountFoldersAreMadeForTheirOwnerAlone) {
    std::filesystem::remove_all(home / "Library");
    const auto defaults = open();
    defaults->setInteger(3, "NumberOfWrites");
    ASSERT_TRUE(defaults->synchronize());
    EXPECT_EQ(stored(), "{'NumberOfWrites': 3}");
    EXPECT_EQ(std::filesystem::status(preferences()).permissions(), std::filesystem::perms(0700));
}

TEST_F(PropertyListDefaultsTest, ATextThatXmlCannotCarryIsKeptAllTheSame) {
    store("{'Text': 'a\\x01b\\rc\\x1b', 'More': [1, 'é']}", "BINARY");
    const auto defaults = open();
    defaults->setBool(true, "ShredHistory");
    ASSERT_TRUE(defaults->synchronize());
    EXPECT_EQ(stored("dict(sorted(d.items()))"),
              R"({'More': [1, 'é'], 'ShredHistory': True, 'Text': 'a\x01b\rc\x1b'})");
}

TEST_F(PropertyListDefaultsTest, AStoredFileNameNeedNotBeValidUtf8) {
    const Strings folders = {"caf\xE9", "plain"};
    const auto defaults = open();
    defaults->setArray(folders, "ProfilesMenu");
    ASSERT_TRUE(defaults->synchronize());
    EXPECT_EQ(open()->arrayForKey("ProfilesMenu"), folders);
}

TEST_F(PropertyListDefaultsTest, WithoutAHomeNothingIsKnownAndSavingFails) {
    setenv("HOME", "", 1);
    EXPECT_EQ(path(), "");
    const auto defaults = open();
    EXPECT_EQ(reports, Strings{"read preferences: there is no home folder"});
    defaults->setBool(true, "ShredHistory");
    EXPECT_FALSE(defaults->synchronize());
}

}  // namespace
}  // namespace dorvanel::test
