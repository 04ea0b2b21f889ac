// SPDX-License-Identifier: MIT
#include <QComboBox>

#include "DesktopFixture.h"
#include "app/desktop/InterfaceFile.h"
#include "support/SharedPreferences.h"

namespace dorvanel::test {
namespace {

using ::testing::ElementsAre;

TEST(PanelLoadingTest, WithoutItsFileTheSystemsLogSaysSoItBeepsAndNothingChanges) {
    TemporaryHome home;
    const auto defaults = openUserDefaults(userDefaultsPath(), [](auto&) {});
    const auto preferences = sharedPreferences(*defaults);
    FakeSystemLog log;
    FakeSystemSound sound;
    desktop::PreferencesPanel panel({*preferences, platform::defaultFileManager(), log, sound,
                                     [] { return std::unique_ptr<QWidget>(); }});
    panel.reallyupdateUI();  // nothing is connected: nothing happens
    const PreferenceValues before = *preferences->preferences();
    panel.showPanel();
    EXPECT_THAT(log.lines, ElementsAre("Failed to load MainMenu.nib"));
    EXPECT_EQ(sound.beeps, 1);
    EXPECT_EQ(panel.window(), nullptr);
    EXPECT_EQ(*preferences->preferences(), before);
}

TEST(PanelLoadingTest, AFileThatLacksAnOutletConnectsNothingAndTheNextWholeOneAll) {
    TemporaryHome home;
    const auto defaults = openUserDefaults(userDefaultsPath(), [](auto&) {});
    const auto preferences = sharedPreferences(*defaults);
    FakeSystemLog log;
    FakeSystemSound sound;
    const std::string whole = readFile(platform::resourcesFolder() + "/MainMenu.ui");
    const std::string folder = home / "resources";
    writeFile(folder + "/MainMenu.ui", whole);
    // One that is looked for after others have been found.
    const std::string outlet = "\"enableOperaCheckbox\"";
    std::string lacking = whole;
    lacking.replace(lacking.find(outlet), outlet.size(), "\"somethingElse\"");
    bool isWhole = false;
    desktop::PreferencesPanel panel({*preferences, platform::defaultFileManager(), log, sound, [&] {
                                         writeFile(folder + "/MainMenu.ui",
                                                   isWhole ? whole : lacking);
                                         return desktop::loadInterfaceFile(folder, "MainMenu");
                                     }});
    for (int i = 0; i < 2; ++i) panel.showPanel();
    EXPECT_THAT(log.lines,
                ElementsAre("Failed to load MainMenu.nib", "Failed to load MainMenu.nib"));
    EXPECT_EQ(panel.window(), nullptr);
    isWhole = true;
    panel.showPanel();
    ASSERT_NE(panel.window(), nullptr);
    EXPECT_EQ(log.lines.size(), 2U);
    panel.window()->findChild<QAbstractButton*>("shredHistoryCheckbox")->click();
    EXPECT_TRUE(preferences->boolForKey("ShredHistory"));
    EXPECT_EQ(panel.window()->findChild<QComboBox*>("numberOfWritesPopUp")->count(), 17);
}

}  // namespace
}  // namespace dorvanel::test
