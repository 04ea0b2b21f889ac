// SPDX-License-Identifier: MIT
#include "targets/ProfilesMenu.h"

#include "support/FakeAlertPanel.h"
#include "targets/CollectorTest.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;

class ProfilesMenuTest : public ::testing::Test {
  protected:
    ProfilesMenuTest() {
        mainMenu.addItemWithTitle("File", {}, "");
        profilesItem = &mainMenu.addItemWithTitle("Profiles", {}, "");
        profilesItem->makeSubmenu();
    }

    void addMozilla(const std::string& name) {
        fs::create_directories(home.path() / "Library/Mozilla/Profiles" / name);
    }
    void addFirefox(const std::string& name) {
        fs::create_directories(home.path() / "Library/Application Support/Firefox/Profiles" / name);
    }
    void notTheFirstRun() { defaults.values["FirstRun"] = true; }

    /// The submenu as a person sees it: "---", "(dimmed)", "[x] ticked", "[ ] not ticked".
    Lines shown() const {
        Lines lines;
        const ui::Menu& menu = *profilesItem->submenu();
        for (int i = 0; i < menu.numberOfItems(); ++i) {
            const ui::MenuItem& item = menu.itemAtIndex(i);
            if (item.isSeparatorItem()) {
                lines.emplace_back("---");
            } else if (!item.isEnabled()) {
                lines.push_back("(" + item.title() + ")");
            } else {
                lines.push_back((item.state() ? "[x] " : "[ ] ") + item.title());
            }
        }
        return lines;
    }
    ui::MenuItem& item(int index) const { return profilesItem->submenu()->itemAtIndex(index); }
    Lines selection() const { return selectedProfiles(defaults); }

    TemporaryHome home;
    ui::Menu mainMenu;
    ui::MenuItem* profilesItem = nullptr;
    FakeUserDefaults defaults;
    FakeAlertPanel alerts;
    ProfilesMenu profiles{mainMenu, platform::defaultFileManager(), defaults, alerts};
};

TEST_F(ProfilesMenuTest, TheFirstLaunchTicksAnOnlyMozillaProfileAndNoneOfThreeOfFirefox) {
    addMozilla("default");
    addFirefox("a.one");
    addFirefox("b.two");
    addFirefox("c.three");
    profiles.populateProfilesMenu();
    ASSERT_EQ(alerts.alerts.size(), 1U);
    EXPECT_EQ(alerts.alerts[0].title, "Multiple Mozilla Profiles");
    EXPECT_EQ(alerts.alerts[0].message,
              "You have more than 1 Mozilla (Netscape or Firefox) profile.  You must select "
              "profiles from the Profiles menu if you want shredding enabled for them.\n\nThis "
              "dialog will not be displayed again.");
    EXPECT_EQ(alerts.alerts[0].defaultButton, "OK");
    EXPECT_EQ(alerts.alerts[0].alternateButton, "");
    EXPECT_EQ(alerts.alerts[0].otherButton, "");
    EXPECT_THAT(selection(), ElementsAre("default"));
    EXPECT_THAT(shown(),
                ::testing::UnorderedElementsAre("(Netscape/Mozilla)", "[x] default", "---",
                                                "(Firefox)", "[ ] one", "[ ] two", "[ ] three"));
}

TEST_F(ProfilesMenuTest, TheFirstLaunchTicksAnOnlyProfileOfEachWithoutAsking) {
    addMozilla("default");
    addFirefox("k3.default");
    profiles.populateProfilesMenu();
    EXPECT_THAT(alerts.alerts, IsEmpty());
    EXPECT_THAT(selection(), ElementsAre("default", "k3.default"));
    EXPECT_THAT(shown(), ElementsAre("(Netscape/Mozilla)", "[x] default", "---", "(Firefox)",
                                     "[x] default"));
}

TEST_F(ProfilesMenuTest, TheDialogIsShownOnceEver) {
    addMozilla("a");
    addMozilla("b");
    profiles.populateProfilesMenu();
    EXPECT_TRUE(defaults.boolForKey("FirstRun"));
    profilesItem->makeSubmenu();
    profiles.populateProfilesMenu();
    EXPECT_EQ(alerts.alerts.size(), 1U);
}

TEST_F(ProfilesMenuTest, TheFirstRunIsOverEvenWhenThereIsNoProfile) {
    profiles.populateProfilesMenu();
    EXPECT_THAT(defaults.calls, ElementsAre("set FirstRun YES", "synchronize",
                                            "set ProfilesMenu []", "synchronize"));
    EXPECT_THAT(shown(), IsEmpty());
    EXPECT_FALSE(profilesItem->isEnabled());
}

TEST_F(ProfilesMenuTest, TheFirstRunStoresEachOnlyProfileAndThenTheSelection) {
    addMozilla("m");
    addFirefox("x.f");
    profiles.populateProfilesMenu();
    EXPECT_THAT(defaults.calls, ElementsAre("set ProfilesMenu [m;]", "set ProfilesMenu [m;x.f;]",
                                            "set FirstRun YES", "synchronize",
                                            "set ProfilesMenu [m;x.f;]", "synchronize"));
}

TEST_F(ProfilesMenuTest, TheFinderFileIsNoProfile) {
    addMozilla("default");
    writeFile(home / "Library/Mozilla/Profiles/.DS_Store");
    writeFile(home / "Library/Application Support/Firefox/Profiles/.DS_Store");
    profiles.populateProfilesMenu();
    EXPECT_THAT(alerts.alerts, IsEmpty());
    EXPECT_THAT(shown(), ElementsAre("(Netscape/Mozilla)", "[x] default"));
}

TEST_F(ProfilesMenuTest, AnEntryThatIsNoFolderCountsAsAProfileButGetsNoItem) {
    writeFile(home / "Library/Mozilla/Profiles/registry");
    addMozilla("default");
    profiles.populateProfilesMenu();
    EXPECT_EQ(alerts.alerts.size(), 1U);
    EXPECT_THAT(shown(), ElementsAre("(Netscape/Mozilla)", "[ ] default"));
}

TEST_F(ProfilesMenuTest, ARootWithOnlyAFileHasAHeadingAndNoItem) {
    writeFile(home / "Library/Application Support/Firefox/Profiles/odd");
    notTheFirstRun();
    profiles.populateProfilesMenu();
    EXPECT_THAT(shown(), ElementsAre("---", "(Firefox)"));
    EXPECT_TRUE(profilesItem->isEnabled());
}

TEST_F(ProfilesMenuTest, TheTitleOfAFirefoxProfileIsWhatFollowsItsLastFullStop) {
    notTheFirstRun();
    for (const auto& [name, title] :
         {std::pair("x3f.default", "default"), {"a.b.c", "c"}, {"plain", ""}, {"end.", ""}}) {
        fs::remove_all(home / "Library/Application Support/Firefox");
        addFirefox(name);
        profilesItem->makeSubmenu();
        profiles.populateProfilesMenu();
        EXPECT_EQ(item(2).title(), title) << name;
        EXPECT_EQ(profiles.profileName(item(2)), name);
    }
}

TEST_F(ProfilesMenuTest, ATagLeadsFromAnItemToItsFolderNameAndCountsHeadingsButNotTheSeparator) {
    addMozilla("default");
    addFirefox("k3.default");
    profiles.populateProfilesMenu();
    EXPECT_EQ(item(1).tag(), 1);
    EXPECT_EQ(item(4).tag(), 3);
    EXPECT_EQ(profiles.profileName(item(1)), "default");
    EXPECT_EQ(profiles.profileName(item(4)), "k3.default");
}

TEST_F(ProfilesMenuTest, ProfilesThatAreGoneDropOutOfTheSelection) {
    notTheFirstRun();
    addMozilla("kept");
    addFirefox("x.kept");
    defaults.values["ProfilesMenu"] = Lines{"gone", "x.kept", "kept"};
    profiles.populateProfilesMenu();
    EXPECT_THAT(selection(), ElementsAre("kept", "x.kept"));
    EXPECT_EQ(defaults.calls.back(), "synchronize");
}

TEST_F(ProfilesMenuTest, AFirefoxProfileIsTickedByItsFullNameNotByItsTitle) {
    notTheFirstRun();
    addFirefox("x.work");
    defaults.values["ProfilesMenu"] = Lines{"work"};
    profiles.populateProfilesMenu();
    EXPECT_THAT(shown(), ElementsAre("---", "(Firefox)", "[ ] work"));
}

TEST_F(ProfilesMenuTest, AClickTicksAProfileAndPutsItLastInTheSelection) {
    notTheFirstRun();
    addMozilla("default");
    defaults.values["ProfilesMenu"] = Lines{"default"};
    addFirefox("k3.work");
    profiles.populateProfilesMenu();
    defaults.calls.clear();
    item(4).performAction();
    EXPECT_TRUE(item(4).state());
    EXPECT_THAT(defaults.calls, ElementsAre("set ProfilesMenu [default;k3.work;]", "synchronize"));
}

TEST_F(ProfilesMenuTest, ASecondClickUnticksItAndRemovesEveryOccurrence) {
    notTheFirstRun();
    addMozilla("a");
    defaults.values["ProfilesMenu"] = Lines{"a"};
    profiles.populateProfilesMenu();
    defaults.values["ProfilesMenu"] = Lines{"a", "b", "a"};
    item(1).performAction();
    EXPECT_FALSE(item(1).state());
    EXPECT_THAT(selection(), ElementsAre("b"));
}

TEST_F(ProfilesMenuTest, AHeadingIsDimmedAndAClickOnItDoesNothing) {
    addMozilla("a");
    profiles.populateProfilesMenu();
    defaults.calls.clear();
    item(0).performAction();
    EXPECT_FALSE(item(0).isEnabled());
    EXPECT_THAT(defaults.calls, IsEmpty());
}

TEST_F(ProfilesMenuTest, ThereIsNoKeyEquivalent) {
    addMozilla("a");
    profiles.populateProfilesMenu();
    EXPECT_EQ(item(0).keyEquivalent(), "");
    EXPECT_EQ(item(1).keyEquivalent(), "");
}

TEST_F(ProfilesMenuTest, WithoutAProfilesItemThereIsNoMenuAndTheSelectionIsKept) {
    ui::Menu bare;
    bare.addItemWithTitle("File", {}, "");
    addMozilla("a");
    addMozilla("b");
    defaults.values["ProfilesMenu"] = Lines{"a", "gone"};
    ProfilesMenu none(bare, platform::defaultFileManager(), defaults, alerts);
    none.populateProfilesMenu();
    EXPECT_EQ(none.menu(), nullptr);
    EXPECT_EQ(bare.numberOfItems(), 1);
    EXPECT_EQ(alerts.alerts.size(), 1U);
    EXPECT_TRUE(defaults.boolForKey("FirstRun"));
    EXPECT_THAT(selection(), ElementsAre("a", "gone"));
}

TEST_F(ProfilesMenuTest, AutomaticEnablingIsTurnedOnForBothMenus) {
    mainMenu.setAutoenablesItems(false);
    profilesItem->submenu()->setAutoenablesItems(false);
    profiles.populateProfilesMenu();
    EXPECT_TRUE(mainMenu.autoenablesItems());
    EXPECT_TRUE(profilesItem->submenu()->autoenablesItems());
}

}  // namespace
}  // namespace dorvanel::test
