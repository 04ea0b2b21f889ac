// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "prefs/Preferences.h"
#include "prefs/PropertyListDefaults.h"
#include "support/Python.h"
#include "support/SharedPreferences.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

/// The preferences over a real property list, made and read with Python.
class StoredPreferencesTest : public ::testing::Test {
  protected:
    void store(const std::string& values, const std::string& format) {
        python(home.path(),
               "import plistlib\n"
               "with open('" +
                   file +
                   "', 'wb') as f:\n"
                   "    plistlib.dump(" +
                   values + ", f, fmt=plistlib.FMT_" + format + ")\n");
    }
    std::string stored() {
        return python(home.path(),
                      "import plistlib\n"
                      "d = plistlib.load(open('" +
                          file +
                          "', 'rb'))\n"
                          "print(dict(sorted(d.items())))\n");
    }
    std::unique_ptr<platform::UserDefaults> open() {
        return openUserDefaults(userDefaultsPath(),
                                [](const Error& error) { ADD_FAILURE() << error.message(); });
    }

    TemporaryHome home;
    std::string file = userDefaultsPath();
};

TEST_F(StoredPreferencesTest, StoredValuesOfEveryKindAreReadInBothForms) {
    for (const char* format : {"XML", "BINARY"}) {
        store(
            "{'ShredHistory': 'YES', 'ShredCache': '0', 'NSA': 'true', 'DoDSanitize': '1',"
            " 'BrowserWatch': 0.0, 'ShredMailCache': 0.5, 'NumberOfWrites': '4',"
            " 'OverwritePattern': 5.9, 'ConfirmShredding': 0, 'EnabledBrowsers': []}",
            format);
        const auto defaults = open();
        const auto preferences = sharedPreferences(*defaults);
        for (const BoolKey key : std::initializer_list<BoolKey>{"ShredHistory", "NSA",
                                                                "DoDSanitize", "ShredMailCache"}) {
            EXPECT_TRUE(preferences->boolForKey(key)) << key.name();
        }
        for (const BoolKey key :
             std::initializer_list<BoolKey>{"ShredCache", "BrowserWatch", "ConfirmShredding"}) {
            EXPECT_FALSE(preferences->boolForKey(key)) << key.name();
        }
        EXPECT_EQ(preferences->intForKey("NumberOfWrites"), 4);
        EXPECT_EQ(preferences->intForKey("OverwritePattern"), 5);
        EXPECT_FALSE(preferences->browserIsEnabled("Safari"));
        EXPECT_TRUE(preferences->boolForKey("ShredMailTrash"));
    }
}

TEST_F(StoredPreferencesTest, ASaveStoresWhatDiffersFromTheDefaultsAndKeepsTheRest) {
    store("{'ShredCache': True, 'ShredHistory': 1, 'My Window': '0 0 1 1', 'FirstRun': True}",
          "XML");
    const auto defaults = open();
    const auto preferences = sharedPreferences(*defaults);
    preferences->displayedValues.insert_or_assign("NumberOfWrites", Number::fromInt(3));
    ASSERT_TRUE(preferences->commitDisplayedValues());
    EXPECT_EQ(stored(),
              "{'FirstRun': True, 'My Window': '0 0 1 1', 'NumberOfWrites': 3,"
              " 'ShredHistory': True}");
}

TEST_F(StoredPreferencesTest, ProgramsAtWorkOnOneHomeDoNotUndoEachOther) {
    const auto windowsDefaults = open();
    const auto window = sharedPreferences(*windowsDefaults);
    python(home.path(),
           "import plistlib\n"
           "plistlib.dump({'ShredHistory': True}, open('" +
               file + "', 'wb'))\n");
    window->displayedValues.insert_or_assign("NSA", Number::fromBool(true));
    ASSERT_TRUE(window->commitDisplayedValues());
    ASSERT_TRUE(window->saveDefaults());
    EXPECT_EQ(stored(), "{'NSA': True, 'ShredHistory': True}");
}

TEST_F(StoredPreferencesTest, EnabledApplicationsStoredAsATextOrANumberMeanNone) {
    for (const char* value : {"'Safari'", "True", "7", "{'Safari': True}", "b'x'", "1.5"}) {
        store(std::string("{'EnabledBrowsers': ") + value + "}", "XML");
        const auto defaults = open();
        EXPECT_FALSE(sharedPreferences(*defaults)->browserIsEnabled("Safari")) << value;
    }
    store("{'EnabledBrowsers': ['Safari', 1, True]}", "XML");
    const auto defaults = open();
    const auto preferences = sharedPreferences(*defaults);
    EXPECT_TRUE(preferences->browserIsEnabled("Safari"));
    EXPECT_FALSE(preferences->browserIsEnabled("iCab"));
}

TEST_F(StoredPreferencesTest, AreNotKnownWhereTheFileIsDamagedUntilTheyAreStartedAfresh) {
    store("{'ShredCache': False}", "XML");
    const std::string whole = readFile(file);
    writeFile(file, whole.substr(0, whole.size() / 2));
    std::vector<std::string> reports;
    const auto defaults =
        openUserDefaults(file, [&](const Error& error) { reports.push_back(error.message()); });
    const auto preferences = sharedPreferences(*defaults);
    EXPECT_FALSE(preferences->areKnown());
    preferences->displayedValues.insert_or_assign("ShredHistory", Number::fromBool(true));
    EXPECT_FALSE(preferences->commitDisplayedValues());
    EXPECT_FALSE(preferences->saveDefaults());
    EXPECT_EQ(readFile(file), whole.substr(0, whole.size() / 2));

    ASSERT_TRUE(preferences->startAfresh());
    EXPECT_TRUE(preferences->areKnown());
    EXPECT_FALSE(preferences->boolForKey("ShredHistory")) << "what could not be saved is gone";
    EXPECT_EQ(readFile(file + " (damaged 1)"), whole.substr(0, whole.size() / 2));
    EXPECT_EQ(stored(), "{}");
    EXPECT_EQ(reports.size(), 2U);
}

TEST_F(StoredPreferencesTest, AFreshStartChangesNoValueThatIsKnown) {
    store("{'ShredHistory': True, 'EnabledBrowsers': []}", "XML");
    const auto defaults = open();
    const auto preferences = sharedPreferences(*defaults);
    ASSERT_TRUE(preferences->startAfresh());
    EXPECT_TRUE(preferences->boolForKey("ShredHistory"));
    EXPECT_FALSE(preferences->browserIsEnabled("Safari"));
    EXPECT_EQ(stored(), "{'EnabledBrowsers': [], 'ShredHistory': True}");
}

}  // namespace
}  // namespace dorvanel::test
