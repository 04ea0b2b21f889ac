// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "prefs/KeyTable.h"
#include "prefs/Preferences.h"
#include "support/FakeUserDefaults.h"
#include "support/SharedPreferences.h"

namespace dorvanel::test {
namespace {

using Strings = std::vector<std::string>;

/// A panel that remembers in the same list as the defaults when it was told to show what.
class RecordingView final : public PreferencesView {
  public:
    explicit RecordingView(Strings& calls) : calls_(calls) {}
    void reallyupdateUI() override { calls_.emplace_back("reallyupdateUI"); }
    void showMozillaAndNetscape() override { calls_.emplace_back("showMozillaAndNetscape"); }

  private:
    Strings& calls_;
};

class DisplayedValuesTest : public ::testing::Test {
  protected:
    DisplayedValuesTest() { preferences->setView(&view); }
    void display(Key key, Number value) {
        preferences->displayedValues.insert_or_assign(key, value);
    }

    FakeUserDefaults defaults;
    std::shared_ptr<Preferences> preferences = sharedPreferences(defaults);
    RecordingView view{defaults.calls};
};

TEST_F(DisplayedValuesTest, ACommitIsInTheDefaultsBeforeItReturns) {
    display("ShredHistory", Number::fromBool(true));
    ASSERT_TRUE(preferences->commitDisplayedValues());
    EXPECT_TRUE(preferences->boolForKey("ShredHistory"));
    EXPECT_TRUE(std::get<bool>(defaults.values["ShredHistory"]));
    EXPECT_EQ(defaults.calls.size(), preferenceKeys.size() + 1);
    EXPECT_EQ(defaults.calls[3], "set ShredHistory YES");
    EXPECT_EQ(defaults.calls.back(), "synchronize");

    display("ShredHistory", Number::fromBool(false));
    ASSERT_TRUE(preferences->commitDisplayedValues());
    EXPECT_FALSE(defaults.hasObjectForKey("ShredHistory"));
}

TEST_F(DisplayedValuesTest, EditingAfterACommitDoesNotTouchTheCommittedValues) {
    ASSERT_TRUE(preferences->commitDisplayedValues());
    const auto committed = preferences->preferences();
    display("NumberOfWrites", Number::fromInt(5));
    EXPECT_EQ(preferences->intForKey("NumberOfWrites"), 0);
    ASSERT_TRUE(preferences->commitDisplayedValues());
    EXPECT_EQ(preferences->intForKey("NumberOfWrites"), 5);
    EXPECT_EQ(committed->at("NumberOfWrites").intValue(), 0) << "a reader keeps what it holds";
}

TEST_F(DisplayedValuesTest, DiscardingAndRevertingShowTheCommittedValuesAgain) {
    display("NSA", Number::fromBool(true));
    preferences->discardDisplayedValues();
    EXPECT_EQ(preferences->displayedValues, *preferences->preferences());
    display("NSA", Number::fromBool(true));
    preferences->revert();
    EXPECT_EQ(preferences->displayedValues, *preferences->preferences());
    EXPECT_EQ(defaults.calls, (Strings{"reallyupdateUI", "reallyupdateUI"}));
}

TEST_F(DisplayedValuesTest, RevertingToTheDefaultsGovernsReadersAtOnceAndStoresNothing) {
    display("NSA", Number::fromBool(true));
    display("ShredCache", Number::fromBool(false));
    display("NumberOfWrites", Number::fromInt(5));
    ASSERT_TRUE(preferences->commitDisplayedValues());
    ASSERT_TRUE(preferences->enableChanged("Safari"));
    defaults.calls.clear();

    preferences->revertToDefault();
    EXPECT_EQ(*preferences->preferences(), defaultValues());
    EXPECT_EQ(preferences->displayedValues, defaultValues());
    EXPECT_EQ(defaults.calls, Strings{"reallyupdateUI"});
    EXPECT_TRUE(defaults.hasObjectForKey("NSA")) << "rewritten at the next commit or at the end";
    EXPECT_FALSE(preferences->browserIsEnabled("Safari")) << "not touched by a revert";

    ASSERT_TRUE(preferences->saveDefaults());
    EXPECT_FALSE(defaults.hasObjectForKey("NSA"));
    EXPECT_TRUE(defaults.hasObjectForKey("EnabledBrowsers"));
}

TEST_F(DisplayedValuesTest, MozillaAndNetscapeAreShownBeforeTheListIsStored) {
    ASSERT_TRUE(preferences->enableChanged("Netscape"));
    ASSERT_EQ(defaults.calls.size(), 3U);
    EXPECT_EQ(defaults.calls[0], "showMozillaAndNetscape");
    EXPECT_TRUE(defaults.calls[1].starts_with("set EnabledBrowsers ["));
    EXPECT_EQ(defaults.calls[2], "synchronize");
}

TEST_F(DisplayedValuesTest, TheChangeCountGrowsWithEveryChangeOfTheCommittedValues) {
    const std::uint64_t before = preferences->changeCount();
    display("NSA", Number::fromBool(true));
    EXPECT_EQ(preferences->changeCount(), before);
    ASSERT_TRUE(preferences->commitDisplayedValues());
    EXPECT_EQ(preferences->changeCount(), before + 1);
    preferences->revertToDefault();
    EXPECT_EQ(preferences->changeCount(), before + 2);
}

}  // namespace
}  // namespace dorvanel::test
