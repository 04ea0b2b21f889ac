// SPDX-License-Identifier: MIT
#include "prefs/Preferences.h"
#include "support/SharedPreferences.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/FakeUserDefaults.h"

namespace dorvanel::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using Strings = std::vector<std::string>;

class PreferencesTest : public ::testing::Test {
  protected:
    std::shared_ptr<Preferences> make() { return sharedPreferences(defaults); }

    FakeUserDefaults defaults;
};

TEST_F(PreferencesTest, AUserWhoseDefaultsHoldNoKeysGetsTheFactoryDefaults) {
    const auto preferences = make();
    const std::vector<std::string_view> on = {"ShredCache", "ShredMailTrash", "BrowserWatch",
                                              "ConfirmShredding"};
    ASSERT_EQ(preferences->preferences()->size(), 18U);
    for (const auto& [key, value] : *preferences->preferences()) {
        const bool isOn = std::find(on.begin(), on.end(), key.name()) != on.end();
        EXPECT_EQ(value.intValue(), isOn ? 1 : 0) << key.name();
        EXPECT_EQ(value.isBool(), key != Key("NumberOfWrites") && key != Key("OverwritePattern"))
            << key.name();
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
    EXPECT_EQ(defaultValues().size(), 18U);
}

TEST_F(PreferencesTest, EveryKeyIsProcessedInTheOrderOfTheTable) {
    std::vector<std::string> order;
    for (const PreferenceKey& key : preferenceKeys) order.emplace_back(key.name);
    EXPECT_THAT(order,
                ElementsAre("ShredCache", "ShredIEDownloadCache", "ShredMailTrash", "ShredHistory",
                            "HideAfterShredding", "BrowserWatch", "ActivityLog", "ConfirmShredding",
                            "DoDSanitize", "NumberOfWrites", "OverwritePattern",
                            "ShredAppleMailJunk", "NSA", "ShredMailsmithSpam", "shredSafariFavicon",
                            "ShredQuicktimeCache", "ShredMailCache", "ShredMentions"));

    ASSERT_TRUE(Preferences::savePreferencesToDefaults(defaultValues(), defaults));
    ASSERT_EQ(defaults.calls.size(), 19U);
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
    EXPECT_FALSE(make()->objectForKey("NumberOfWrites").isBool());
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
    EXPECT_EQ(defaults.values.size(), 18U);
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
    EXPECT_EQ(preferences->objectForKey("ShredHistory").intValue(), 1);
    EXPECT_EQ(preferences->intForKey("NumberOfWrites"), 1);
    EXPECT_FALSE(preferences->boolForKey("ShredCache"));
}

TEST_F(PreferencesTest, OnlyAKeyOfTheTableIsFoundByItsName) {
    for (const char* key :
         {"", "shredCache", "ShredSafariFavicon", "FirstRun", "EnabledBrowsers", "My Window"}) {
        EXPECT_FALSE(Key::find(key).has_value()) << key;
    }
    for (const PreferenceKey& row : preferenceKeys) {
        EXPECT_EQ(Key::find(row.name), Key::of(row)) << row.name;
    }
}

TEST_F(PreferencesTest, TwoSuccessiveConstructionsGiveTheOwnersOneObject) {
    PreferencesOwner owner{.defaults = defaults, .applications = supportedApplications};
    const auto first = Preferences::init(owner);
    EXPECT_EQ(Preferences::init(owner), first);
    EXPECT_EQ(Preferences::sharedInstance(owner), first);

    PreferencesOwner another{.defaults = defaults, .applications = supportedApplications};
    EXPECT_NE(Preferences::sharedInstance(another), first);
}

TEST_F(PreferencesTest, TheObjectLivesAsLongAsSomebodyHoldsIt) {
    PreferencesOwner owner{.defaults = defaults, .applications = supportedApplications};
    Preferences::sharedInstance(owner)->displayedValues.clear();
    EXPECT_EQ(Preferences::sharedInstance(owner)->displayedValues.size(), 18U);
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

TEST_F(PreferencesTest, SavingWritesTheCommittedValuesNotTheDisplayedOnes) {
    const auto preferences = make();
    preferences->displayedValues.insert_or_assign("NSA", Number::fromBool(true));
    ASSERT_TRUE(preferences->saveDefaults());
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
        std::optional<StringLists> dictionaryForKey(const std::string&) const override {
            return {};
        }
        void setBool(bool, const std::string&) override {}
        void setInteger(int, const std::string&) override {}
        void setDictionary(const StringLists&, const std::string&) override {}
        void setArray(const Strings&, const std::string&) override {}
        void removeObjectForKey(const std::string&) override {}
        Result<Done> synchronize() override { return Error{28, "write", "file", {}}; }
    } fullDisk;
    const auto preferences = sharedPreferences(fullDisk);
    preferences->displayedValues.insert_or_assign("NSA", Number::fromBool(true));
    EXPECT_FALSE(preferences->commitDisplayedValues());
    EXPECT_TRUE(preferences->prefsNSA());
    EXPECT_FALSE(preferences->enableChanged("Safari"));
    EXPECT_FALSE(preferences->browserIsEnabled("Safari"));
}

}  // namespace
}  // namespace dorvanel::test
