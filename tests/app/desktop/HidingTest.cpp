// SPDX-License-Identifier: MIT
#include <QTabWidget>

#include "DesktopFixture.h"
#include "app/desktop/background/HiddenStart.h"

namespace dorvanel::test {
namespace {

/// Putting the program's windows away, and the icon in the status area to come back from.
class HidingTest : public DesktopFixture {
  protected:
    QAction* command(const QString& text) {
        for (QAction* action : desktop->trayMenu()->actions()) {
            if (action->text() == text) return action;
        }
        return nullptr;
    }
    void choose(const QString& text) {
        QAction* action = command(text);
        ASSERT_NE(action, nullptr) << "no command " << text.toStdString();
        action->trigger();
    }
    void setStatusArea(bool isThere) {
        hasStatusArea = isThere;
        desktop->checkStatusArea();
    }
};

TEST_F(HidingTest, TheIconsMenuHasTheCommands) {
    hasStatusArea = true;
    ASSERT_TRUE(launch());
    QStringList commands;
    for (const QAction* action : desktop->trayMenu()->actions()) commands << action->text();
    EXPECT_EQ(commands,
              QStringList({"Show Dorvanel", "", "Shred Traces", "Shred Traces and Log Out",
                           "Shred Traces and Shut Down", "Shred Traces and Restart", "",
                           "Browser Watch", "Last Runs…", "Preferences…", "", "Quit Dorvanel"}));
}

TEST_F(HidingTest, TheIconsMenuTurnsBrowserWatchOnAndOffAsThePanelDoes) {
    hasStatusArea = true;
    set("BrowserWatch", false);
    ASSERT_TRUE(launch());
    trigger("showPanelAction");
    auto* box = desktop->panel().window()->findChild<QCheckBox*>("browserWatchCheckbox");
    ASSERT_FALSE(box->isChecked());
    choose("Browser Watch");
    EXPECT_TRUE(preferences->boolForKey("BrowserWatch"));
    EXPECT_TRUE(box->isChecked());
    EXPECT_TRUE(command("Browser Watch")->isChecked());
    box->click();
    emit desktop->trayMenu()->aboutToShow();
    EXPECT_FALSE(command("Browser Watch")->isChecked());
    EXPECT_FALSE(preferences->boolForKey("BrowserWatch"));
}

TEST_F(HidingTest, TheIconsMenuLeadsToThePreferencesAndTheLastRuns) {
    hasStatusArea = true;
    ASSERT_TRUE(launch());
    choose("Preferences…");
    EXPECT_TRUE(desktop->panel().window()->isVisible());
    trigger("hideAction");
    choose("Last Runs…");
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(find<QTabWidget>("pages")->currentWidget()->objectName(), "resultsPage");
}

TEST_F(HidingTest, AHiddenStartLeavesTheIconAlone) {
    hasStatusArea = true;
    startsHidden = true;
    bundle.values["NSUIElement"] = "1";  // as the program has it for a hidden start
    ASSERT_TRUE(launch());
    EXPECT_FALSE(window().isVisible());
    choose("Show Dorvanel");
    EXPECT_TRUE(window().isVisible());
}

TEST_F(HidingTest, AHiddenStartWithoutAStatusAreaLeavesASmallWindowUntilThereIsOne) {
    startsHidden = true;
    bundle.values["NSUIElement"] = "1";
    ASSERT_TRUE(launch());
    EXPECT_TRUE(window().isVisible());
    EXPECT_TRUE(window().isMinimized());
    setStatusArea(true);
    EXPECT_FALSE(window().isVisible());
    choose("Show Dorvanel");
    EXPECT_TRUE(window().isVisible());
    EXPECT_FALSE(window().isMinimized());
}

TEST_F(HidingTest, AWindowThatSomebodyHasOpenedMeanwhileStays) {
    startsHidden = true;
    bundle.values["NSUIElement"] = "1";
    ASSERT_TRUE(launch());
    window().showNormal();
    setStatusArea(true);
    EXPECT_TRUE(window().isVisible());
}

TEST_F(HidingTest, OnlyAHiddenStartChangesWhatTheBundleSays) {
    bundle.values["NSUIElement"] = "0";
    bundle.values["Other"] = "x";
    EXPECT_EQ(desktop::HiddenStart(bundle, true).objectForInfoDictionaryKey("NSUIElement"), "1");
    EXPECT_EQ(desktop::HiddenStart(bundle, true).objectForInfoDictionaryKey("Other"), "x");
    EXPECT_EQ(desktop::HiddenStart(bundle, false).objectForInfoDictionaryKey("NSUIElement"), "0");
}

TEST_F(HidingTest, AllThatWasHiddenComesBackTogether) {
    hasStatusArea = true;
    ASSERT_TRUE(launch());
    trigger("showPanelAction");
    desktop->instanceHandlers().open({"/tmp/a"});
    desktop->instanceHandlers().open({"/tmp/b"});
    desktop->documents().front()->window()->close();
    trigger("hideAction");
    EXPECT_FALSE(window().isVisible());
    EXPECT_FALSE(desktop->panel().window()->isVisible());
    EXPECT_FALSE(desktop->documents().back()->window()->isVisible());
    desktop->instanceHandlers().open({"/tmp/c"});
    EXPECT_EQ(desktop->documents().size(), 2U) << "a hidden document is no closed one";

    choose("Show Dorvanel");
    EXPECT_TRUE(window().isVisible());
    EXPECT_TRUE(desktop->panel().window()->isVisible());
    for (const auto& document : desktop->documents()) EXPECT_TRUE(document->window()->isVisible());
}

TEST_F(HidingTest, WhatWasClosedBeforeStaysClosed) {
    hasStatusArea = true;
    ASSERT_TRUE(launch());
    trigger("showPanelAction");
    desktop->panel().window()->close();
    trigger("hideAction");
    choose("Show Dorvanel");
    EXPECT_FALSE(desktop->panel().window()->isVisible());
}

TEST_F(HidingTest, ThePanelComesBackWithAMinimisedWindowThatIsRestored) {
    ASSERT_TRUE(launch());
    trigger("showPanelAction");
    trigger("hideAction");
    EXPECT_TRUE(window().isMinimized());
    EXPECT_FALSE(desktop->panel().window()->isVisible());
    window().showNormal();  // as a task bar does
    waitUntil([this] { return desktop->panel().window()->isVisible(); });
}

TEST_F(HidingTest, AHiddenProgramComesBackWhenTheStatusAreaGoes) {
    hasStatusArea = true;
    ASSERT_TRUE(launch());
    trigger("hideAction");
    ASSERT_FALSE(window().isVisible());
    setStatusArea(false);
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(desktop->trayMenu(), nullptr);
    trigger("hideAction");
    EXPECT_TRUE(window().isMinimized()) << "there is no icon to come back from";
}

TEST_F(HidingTest, AStatusAreaThatComesLaterGetsTheIcon) {
    ASSERT_TRUE(launch());
    EXPECT_EQ(desktop->trayMenu(), nullptr);
    setStatusArea(true);
    ASSERT_NE(desktop->trayMenu(), nullptr);
    trigger("hideAction");
    EXPECT_FALSE(window().isVisible());
    choose("Show Dorvanel");
    EXPECT_TRUE(window().isVisible());
}

TEST_F(HidingTest, AStatusAreaThatGoesUnseenIsMissedAtTheMomentOfHiding) {
    hasStatusArea = true;
    ASSERT_TRUE(launch());
    hasStatusArea = false;
    trigger("hideAction");
    EXPECT_TRUE(window().isVisible());
    EXPECT_TRUE(window().isMinimized());
}

TEST_F(HidingTest, TheIconOutlivesACommandOfItsMenuThatStillAsks) {
    hasStatusArea = true;
    ASSERT_TRUE(launch());
    onAlert([this](QMessageBox& box) {
        setStatusArea(false);
        EXPECT_NE(desktop->trayMenu(), nullptr);
        click(box, "No");
    });
    choose("Shred Traces");
    desktop->checkStatusArea();
    EXPECT_EQ(desktop->trayMenu(), nullptr);
}

}  // namespace
}  // namespace dorvanel::test
