// SPDX-License-Identifier: MIT
#include "DesktopFixture.h"

namespace dorvanel::test {
namespace {

/// Putting the program's windows away, and the icon in the status area to come back from.
class HidingTest : public DesktopFixture {
  protected:
    void choose(const QString& command) {
        for (QAction* action : desktop->trayMenu()->actions()) {
            if (action->text() == command) return action->trigger();
        }
        ADD_FAILURE() << "no command " << command.toStdString();
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
              QStringList({"Show Dorvanel", "", "Shred", "Shred and Log Out", "Shred and Shut Down",
                           "Shred and Restart", "", "Quit Dorvanel"}));
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
    choose("Shred");
    desktop->checkStatusArea();
    EXPECT_EQ(desktop->trayMenu(), nullptr);
}

}  // namespace
}  // namespace dorvanel::test
