#include "prefs/Preferences.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "prefs/KeyTable.h"
#include "support/FakeUserDefaults.h"

namespace dorvanel::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using Strings = std::vector<std::string>;

class PreferencesTest : public ::testing::Test {
  protected:
    std::shared_ptr<Preferences> make() { return Preferences::sharedInstance(defaults); }

    FakeUserDefaults defaults;
};

TEST_F(PreferencesTest, AUserWhoseDefaultsHoldNoKeysGetsTheFactoryDefaults) {
    const auto preferences = make();
    const std::vector<std::string_view> on = {"ShredCache", "ShredMailTrash", "BrowserWatch",
                                              "ConfirmShredding"};
    ASSERT_EQ(preferences->preferences()->size(), 17U);
    for (const auto& [key, value] : *preferences->preferences()) {
        const bool isOn = std::find(on.begin(), on.end(), key) != on.end();
        EXPECT_EQ(value.intValue(), isOn ? 1 : 0) << key;
        EXPECT_EQ(value.isBool(), key != "NumberOfWrites" && key != "OverwritePattern") << key;
    }
    for (const char* name :
         {"Safari", "Internet Explorer", "Mozilla", "Netscape", "iCab", "Omniweb", "Opera",
          "Camino", "Firefox", "Apple Mail", "Eudora", "Mailsmith"}) {
        EXPECT_TRUE(preferences->browserIsEnabled(name)) << name;
    }
    EXPECT_EQ(preferences->mEnableBrowsers->size(), 12U);
    EXPECT_EQ(defaults.calls, Strings{}) << "loading stores nothing";
}

TEST_F(PreferencesTest, TheFactoryDefaultsAreBuiltOnce) {
    EXPECT_EQ(&defaultValues(), &defaultValues());
    EXPECT_EQ(defaultValues().size(), 17U);
    EXPECT_TRUE(defaultValues().find("shredSafariFavicon") != defaultValues().end());
    EXPECT_TRUE(defaultValues().find("ShredSafariFavicon") == defaultValues().end());
}

TEST_F(PreferencesTest, EveryKeyIsProcessedInTheOrderOfTheTable) {
    std::vector<std::string> order;
    for (const PreferenceKey& key : preferenceKeys) order.emplace_back(key.name);
    EXPECT_THAT(order,
                ElementsAre("ShredCache", "ShredIEDownloadCache", "ShredMailTrash", "ShredHistory",
                            "HideAfterShredding", "BrowserWatch", "ActivityLog", "ConfirmShredding",
                            "DoDSanitize", "NumberOfWrites", "OverwritePattern",
                            "ShredAppleMailJunk", "NSA", "ShredMailsmithSpam", "shredSafariFavicon",
                            "ShredQuicktimeCache", "ShredMailCache"));

    ASSERT_TRUE(Preferences::savePreferencesToDefaults(defaultValues(), defaults));
    ASSERT_EQ(defaults.calls.size(), 18U);
    for (std::size_t i = 0; i < order.size(); ++i) {
        EXPECT_EQ(defaults.calls[i], "remove " + order[i]);
    }
    EXPECT_EQ(defaults.calls.back(), "synchronize") << "once, after the last key";
}

TEST_F(PreferencesTest, ValuesThatAllEqualTheDefaultsLeaveNoneOfTheKeys) {
    for (const PreferenceKey& key : preferenceKeys) defaults.values[std::string(key.name)] = 1;
    defaults.values["My Window"] = Strings{"kept"};
    ASSERT_TRUE(Preferences::savePreferencesToDefaults(defaultValues(), defaults));
    EXPECT_EQ(defaults.values.size(), 1U);
    EXPECT_TRUE(defaults.hasObjectForKey("My Window"));
}

TEST_F(PreferencesTest, AValueThatDiffersIsStoredAsABooleanAndRemovedWhenItIsTheDefaultAgain) {
    PreferenceValues values = defaultValues();
    values.insert_or_assign("ShredHistory", Number::fromBool(true));
    ASSERT_TRUE(Preferences::savePreferencesToDefaults(values, defaults));
    EXPECT_EQ(defaults.values.size(), 1U);
    EXPECT_TRUE(std::get<bool>(defaults.values["ShredHistory"]));

    values.insert_or_assign("ShredHistory", Number::fromBool(false));
    ASSERT_TRUE(Preferences::savePreferencesToDefaults(values, defaults));
    EXPECT_FALSE(defaults.hasObjectForKey("ShredHistory"));
}

TEST_F(PreferencesTest, ADefaultOfYesIsStoredAsNoWhenSwitchedOff) {
    PreferenceValues values = defaultValues();
    values.insert_or_assign("BrowserWatch", Number::fromBool(false));
    ASSERT_TRUE(Preferences::savePreferencesToDefaults(values, defaults));
    EXPECT_FALSE(std::get<bool>(defaults.values["BrowserWatch"]));
    EXPECT_FALSE(make()->boolForKey("BrowserWatch"));
}

TEST_F(PreferencesTest, AnIntegerIsStoredAsAnIntegerAndReadBack) {
    PreferenceValues values = defaultValues();
    values.insert_or_assign("NumberOfWrites", Number::fromInt(3));
    ASSERT_TRUE(Preferences::savePreferencesToDefaults(values, defaults));
    EXPECT_EQ(std::get<int>(defaults.values["NumberOfWrites"]), 3);
    EXPECT_EQ(make()->intForKey("NumberOfWrites"), 3);
    EXPECT_FALSE(make()->objectForKey("NumberOfWrites")->isBool());
}

TEST_F(PreferencesTest, NumbersAreComparedByValueWhateverTheirKind) {
    PreferenceValues values = defaultValues();
    values.insert_or_assign("ShredCache", Number::fromInt(1));
    values.insert_or_assign("ShredHistory", Number::fromInt(5));
    values.insert_or_assign("OverwritePattern", Number::fromBool(false));
    ASSERT_TRUE(Preferences::savePreferencesToDefaults(values, defaults));
    EXPECT_EQ(defaults.values.size(), 1U);
    EXPECT_TRUE(std::get<bool>(defaults.values["ShredHistory"]));
}

TEST_F(PreferencesTest, AKeyMissingFromTheValuesIsStoredAsNoOrZero) {
    ASSERT_TRUE(Preferences::savePreferencesToDefaults({}, defaults));
    EXPECT_EQ(defaults.values.size(), 17U);
    for (std::size_t i = 0; i < preferenceKeys.size(); ++i) {
        const PreferenceKey& key = preferenceKeys[i];
        EXPECT_EQ(defaults.calls[i],
                  "set " + std::string(key.name) + (key.isBool() ? " NO" : " 0"));
    }
}

TEST_F(PreferencesTest, AStoredValueOfAnotherKindIsConverted) {
    defaults.values["ShredHistory"] = 7;
    defaults.values["NumberOfWrites"] = true;
    defaults.values["ShredCache"] = Strings{"not a number"};
    const auto preferences = make();
    EXPECT_EQ(preferences->intForKey("ShredHistory"), 1);
    EXPECT_EQ(preferences->intForKey("NumberOfWrites"), 1);
    EXPECT_FALSE(preferences->boolForKey("ShredCache"));
}

TEST_F(PreferencesTest, AnUnknownKeyIsNothingAndReadsAsNo) {
    defaults.values["EnabledBrowsers"] = Strings{"Safari"};
    defaults.values["FirstRun"] = true;
    const auto preferences = make();
    for (const char* key : {"", "shredCache", "FirstRun", "EnabledBrowsers", "My Window"}) {
        EXPECT_FALSE(preferences->objectForKey(key).has_value()) << key;
        EXPECT_FALSE(preferences->boolForKey(key)) << key;
        EXPECT_EQ(preferences->intForKey(key), 0) << key;
    }
}

TEST_F(PreferencesTest, TwoSuccessiveConstructionsGiveTheSameObject) {
    FakeUserDefaults others;
    others.setBool(true, "ShredHistory");
    const auto first = Preferences::init(defaults);
    EXPECT_EQ(Preferences::init(others), first);
    EXPECT_EQ(Preferences::sharedInstance(others), first);
    EXPECT_FALSE(first->boolForKey("ShredHistory"));
}

TEST_F(PreferencesTest, TheObjectLivesAsLongAsSomebodyHoldsIt) {
    make()->displayedValues.clear();
    EXPECT_EQ(make()->displayedValues.size(), 17U);
}

TEST_F(PreferencesTest, ANewObjectDisplaysTheCommittedValues) {
    defaults.setBool(true, "NSA");
    const auto preferences = make();
    EXPECT_EQ(preferences->displayedValues, *preferences->preferences());
    EXPECT_EQ(preferences->mCanStrip, 1);
    EXPECT_FALSE(preferences->mEnableBrowsers.has_value()) << "loaded on first use";
}

TEST_F(PreferencesTest, TheThreeShortcutsReadTheCommittedValues) {
    const auto preferences = make();
    EXPECT_TRUE(preferences->prefsConfirmShredding());
    EXPECT_FALSE(preferences->prefsDoDSanitize());
    EXPECT_FALSE(preferences->prefsNSA());
    preferences->displayedValues.insert_or_assign("ConfirmShredding", Number::fromBool(false));
    preferences->displayedValues.insert_or_assign("DoDSanitize", Number::fromBool(true));
    preferences->displayedValues.insert_or_assign("NSA", Number::fromBool(true));
    EXPECT_FALSE(preferences->prefsNSA()) << "not committed yet";
    ASSERT_TRUE(preferences->commitDisplayedValues());
    EXPECT_FALSE(preferences->prefsConfirmShredding());
    EXPECT_TRUE(preferences->prefsDoDSanitize());
    EXPECT_TRUE(preferences->prefsNSA());
}

TEST_F(PreferencesTest, SavingWithoutASharedObjectDoesNothing) {
    ASSERT_TRUE(Preferences::saveDefaults());
    EXPECT_EQ(defaults.calls, Strings{});
}

TEST_F(PreferencesTest, SavingWritesTheCommittedValuesNotTheDisplayedOnes) {
    const auto preferences = make();
    preferences->displayedValues.insert_or_assign("NSA", Number::fromBool(true));
    ASSERT_TRUE(Preferences::saveDefaults());
    EXPECT_FALSE(defaults.hasObjectForKey("NSA"));
    EXPECT_EQ(defaults.calls.back(), "synchronize");
}

TEST_F(PreferencesTest, AFailedSaveIsToldAndLeavesTheValuesCommitted) {
    class FullDisk final : public platform::UserDefaults {
      public:
        bool hasObjectForKey(const std::string&) const override { return false; }
        bool boolForKey(const std::string&) const override { return false; }
        int integerForKey(const std::string&) const override { return 0; }
        std::optional<Strings> arrayForKey(const std::string&) const override { return {}; }
        void setBool(bool, const std::string&) override {}
        void setInteger(int, const std::string&) override {}
        void setArray(const Strings&, const std::string&) override {}
        void removeObjectForKey(const std::string&) override {}
        platform::Result<platform::Done> synchronize() override {
            return platform::Error{28, "write", "file", {}};
        }
    } fullDisk;
    const auto preferences = Preferences::sharedInstance(fullDisk);
    preferences->displayedValues.insert_or_assign("NSA", Number::fromBool(true));
    EXPECT_FALSE(preferences->commitDisplayedValues());
    EXPECT_TRUE(preferences->prefsNSA());
    EXPECT_FALSE(preferences->enableChanged("Safari"));
    EXPECT_FALSE(preferences->browserIsEnabled("Safari"));
}

}  // namespace
}  // namespace dorvanel::test
