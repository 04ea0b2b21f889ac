// SPDX-License-Identifier: MIT
#include <filesystem>

#include "DesktopFixture.h"
#include "support/SharedPreferences.h"

namespace dorvanel::test {
namespace {

/// Preferences that cannot be read: nobody knows what may be shredded, so nothing is.
class UnknownPreferencesTest : public DesktopFixture {
  protected:
    UnknownPreferencesTest() {
        writeFile(file(), damaged);
        page = addSafariCache();
        preferences.reset();
        defaults =
            openUserDefaults(file(), [this](const Error& error) { trouble = error.message(); });
        preferences = sharedPreferences(*defaults);
    }
    static std::string file() { return userDefaultsPath(); }
    QString failure() { return desktop->mainWindow().failures().message(); }
    template <typename Control>
    Control& inPanel(const char* name) {
        return *desktop->panel().window()->findChild<Control*>(QLatin1String(name));
    }
    QString panelMessage() {
        auto& label = inPanel<QLabel>("preferencesMessage");
        if (!label.isVisible()) return {};
        return label.accessibleName().isEmpty() ? label.text() : label.accessibleName();
    }

    const std::string damaged = "<plist version=\"1.0\"><dict><key>ShredCache</key><fal";
    std::string page;
};

TEST_F(UnknownPreferencesTest, TheLaunchSaysWhichFileAndWhyAndLeavesItAsItIs) {
    ASSERT_TRUE(launch());
    EXPECT_TRUE(failure().startsWith("Not started: the preferences cannot be read. " +
                                     QString::fromStdString(file()) + ": parse: "))
        << failure().toStdString();
    desktop.reset();
    EXPECT_EQ(readFile(file()), damaged);
}

TEST_F(UnknownPreferencesTest, NoRunAndNoFilesAreShredded) {
    const std::string letter = home / "letter.txt";
    writeFile(letter, "dear");
    onAlert([](QMessageBox& box) {
        ADD_FAILURE() << "nothing is asked";
        box.close();
    });
    ASSERT_TRUE(launch({letter}));
    desktop->mainWindow().failures().dismiss();
    trigger("shredAndNothingAction");
    EXPECT_NE(failure(), "");
    EXPECT_FALSE(desktop->controller().shredFiles(holdAll(*system, {letter})));
    waitForEnd();
    EXPECT_EQ(desktop->mainWindow().message(), "Not started. Nothing was shredded.");
    EXPECT_EQ(desktop->mainWindow().failures().count(), 1U) << "said once";
    EXPECT_TRUE(std::filesystem::exists(page));
    EXPECT_EQ(readFile(letter), "dear");
    EXPECT_EQ(readFile(file()), damaged);
}

TEST_F(UnknownPreferencesTest, ThePanelSaysSoAndAClickSavesNothing) {
    ASSERT_TRUE(launch());
    trigger("showPanelAction");
    EXPECT_TRUE(panelMessage().startsWith("The stored preferences cannot be read"));
    EXPECT_TRUE(panelMessage().contains(QString::fromStdString(file())));
    inPanel<QAbstractButton>("shredHistoryCheckbox").click();
    EXPECT_TRUE(panelMessage().startsWith("Not saved, and nothing is shredded by it: "))
        << panelMessage().toStdString();
    EXPECT_FALSE(preferences->areKnown());
    EXPECT_EQ(readFile(file()), damaged);
}

TEST_F(UnknownPreferencesTest, FactorySettingsSetTheFileAsideAndBeginAgain) {
    ASSERT_TRUE(launch());
    trigger("showPanelAction");
    inPanel<QAbstractButton>("revertToDefaultButton").click();
    EXPECT_TRUE(preferences->areKnown());
    EXPECT_EQ(readFile(file() + " (damaged 1)"), damaged);
    EXPECT_TRUE(panelMessage().startsWith("The preferences begin again. ")) << "and what became "
                                                                               "of the file";
    EXPECT_TRUE(panelMessage().contains("(damaged 1)")) << panelMessage().toStdString();
    const auto stored = openUserDefaults(file(), [](auto&) {});
    EXPECT_TRUE(stored->isKnown());
    EXPECT_TRUE(inPanel<QAbstractButton>("enableOperaCheckbox").isChecked());

    inPanel<QAbstractButton>("shredHistoryCheckbox").click();
    EXPECT_EQ(panelMessage(), "");
    set("ConfirmShredding", false);
    trigger("shredAndNothingAction");
    waitForEnd();
    EXPECT_FALSE(std::filesystem::exists(page));
}

}  // namespace
}  // namespace dorvanel::test
