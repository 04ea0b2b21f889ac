// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "prefs/Preferences.h"
#include "support/FakeUserDefaults.h"
#include "support/SharedPreferences.h"

namespace dorvanel::test {
namespace {

using Strings = std::vector<std::string>;

class EnabledApplicationsTest : public ::testing::Test {
  protected:
    void store(const Strings& names) { defaults.values["EnabledBrowsers"] = names; }
    std::shared_ptr<Preferences> make() { return sharedPreferences(defaults); }
    [[nodiscard]] Strings stored() const { return *defaults.arrayForKey("EnabledBrowsers"); }

    FakeUserDefaults defaults;
};

TEST_F(EnabledApplicationsTest, AnEmptyListMeansThatNoneIsEnabled) {
    store({});
    const auto preferences = make();
    for (const char* name : {"Safari", "Firefox", "Mailsmith"}) {
        EXPECT_FALSE(preferences->browserIsEnabled(name)) << name;
    }
    EXPECT_EQ(preferences->mEnableBrowsers, Strings{});
}

TEST_F(EnabledApplicationsTest, AListStoredAsAnythingElseMeansThatNoneIsEnabled) {
    defaults.values["EnabledBrowsers"] = true;
    EXPECT_FALSE(make()->browserIsEnabled("Safari"));
    defaults.values["EnabledBrowsers"] = 3;
    const auto preferences = make();
    for (const char* name : {"Safari", "Firefox", "Mailsmith"}) {
        EXPECT_FALSE(preferences->browserIsEnabled(name)) << name;
    }
}

TEST_F(EnabledApplicationsTest, NoneIsEnabledWhereWhatIsStoredCannotBeRead) {
    defaults.known = false;
    const auto preferences = make();
    EXPECT_FALSE(preferences->browserIsEnabled("Safari"));
    ASSERT_TRUE(preferences->startAfresh());
    EXPECT_TRUE(preferences->browserIsEnabled("Safari")) << "nothing is stored now";
}

TEST_F(EnabledApplicationsTest, ANameThatIsNotAmongTheTwelveIsNotEnabled) {
    const auto preferences = make();
    for (const char* name : {"OmniWeb", "safari", "Safari ", "", "Mail", "IE"}) {
        EXPECT_FALSE(preferences->browserIsEnabled(name)) << name;
    }
    EXPECT_TRUE(preferences->browserIsEnabled("Omniweb"));
}

TEST_F(EnabledApplicationsTest, AreLoadedOnFirstUseAndThenKept) {
    const auto preferences = make();
    store({"Safari"});
    EXPECT_FALSE(preferences->browserIsEnabled("Opera")) << "stored before the first use";
    store({"Opera"});
    EXPECT_FALSE(preferences->browserIsEnabled("Opera"));
    EXPECT_TRUE(preferences->browserIsEnabled("Safari"));
}

TEST_F(EnabledApplicationsTest, OneSwitchedOffLeavesTheOthersInTheirOrderAndComesBackAtTheEnd) {
    const auto preferences = make();
    ASSERT_TRUE(preferences->enableChanged("Safari"));
    EXPECT_EQ(stored(),
              (Strings{"Internet Explorer", "Mozilla", "Netscape", "iCab", "Omniweb", "Opera",
                       "Camino", "Firefox", "Apple Mail", "Eudora", "Mailsmith"}));
    ASSERT_TRUE(preferences->enableChanged("Safari"));
    EXPECT_EQ(stored(),
              (Strings{"Internet Explorer", "Mozilla", "Netscape", "iCab", "Omniweb", "Opera",
                       "Camino", "Firefox", "Apple Mail", "Eudora", "Mailsmith", "Safari"}));
}

TEST_F(EnabledApplicationsTest, MozillaAndNetscapeMoveTogether) {
    store({"Mozilla", "Safari", "Netscape"});
    const auto preferences = make();
    ASSERT_TRUE(preferences->enableChanged("Mozilla"));
    EXPECT_EQ(stored(), Strings{"Safari"});
    ASSERT_TRUE(preferences->enableChanged("Netscape"));
    EXPECT_EQ(stored(), (Strings{"Safari", "Netscape", "Mozilla"}));
    ASSERT_TRUE(preferences->enableChanged("Netscape"));
    ASSERT_TRUE(preferences->enableChanged("Mozilla"));
    EXPECT_EQ(stored(), (Strings{"Safari", "Mozilla", "Netscape"}));
}

TEST_F(EnabledApplicationsTest, AppendingDoesNotCheckForAnEntryAndRemovingTakesEveryOne) {
    store({"Netscape", "Safari", "Safari"});
    const auto preferences = make();
    ASSERT_TRUE(preferences->enableChanged("Mozilla"));
    EXPECT_EQ(stored(), (Strings{"Netscape", "Safari", "Safari", "Mozilla", "Netscape"}));
    ASSERT_TRUE(preferences->enableChanged("Netscape"));
    EXPECT_EQ(stored(), (Strings{"Safari", "Safari"}));
    ASSERT_TRUE(preferences->enableChanged("Safari"));
    EXPECT_EQ(stored(), Strings{});
}

TEST_F(EnabledApplicationsTest, AChangeIsStoredAsAWholeListAndSynchronizedAtOnce) {
    store({"Safari", "iCab"});
    ASSERT_TRUE(make()->enableChanged("iCab"));
    EXPECT_EQ(defaults.calls, (Strings{"set EnabledBrowsers [Safari;]", "synchronize"}));
}

}  // namespace
}  // namespace dorvanel::test
