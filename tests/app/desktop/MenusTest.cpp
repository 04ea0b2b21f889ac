// SPDX-License-Identifier: MIT
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <filesystem>

#include "DesktopFixture.h"
#include "OpenedAddresses.h"

namespace dorvanel::test {
namespace {

class MenusTest : public DesktopFixture {
  protected:
    /// The commands of a menu by name, with their keys; a separator is "-".
    static QStringList commandsOf(const QMenu& menu) {
        QStringList commands;
        for (const QAction* action : menu.actions()) {
            const QString key = action->shortcut().toString();
            const QString text = action->text().remove(u'&');
            commands << (action->isSeparator() ? "-" : key.isEmpty() ? text : text + " | " + key);
        }
        return commands;
    }
};

TEST_F(MenusTest, EveryCommandIsInItsMenuWithItsKey) {
    ASSERT_TRUE(launch());
    QStringList titles;
    for (const QAction* menu : window().menuBar()->actions()) {
        titles << menu->text().remove(u'&');
    }
    EXPECT_EQ(titles, QStringList({"Dorvanel", "File", "Shred", "Profiles", "Help"}));
    EXPECT_EQ(commandsOf(*find<QMenu>("applicationMenu")),
              QStringList({"About Dorvanel X", "-", "Preferences… | Ctrl+,", "-",
                           "Hide Dorvanel | Ctrl+H", "Quit Dorvanel | Ctrl+Q"}));
    EXPECT_EQ(commandsOf(*find<QMenu>("fileMenu")),
              QStringList({"Shred Files… | Ctrl+O", "Shred Trash…", "-", "Show Activity Log"}));
    EXPECT_EQ(commandsOf(*find<QMenu>("shredMenu")),
              QStringList({"Preview… | Ctrl+P", "Shred Traces | Ctrl+Return", "Stop | Ctrl+.", "-",
                           "Shred Traces and Log Out", "Shred Traces and Shut Down",
                           "Shred Traces and Restart"}));
    EXPECT_EQ(commandsOf(*find<QMenu>("helpMenu")),
              QStringList({"Dorvanel X Help | F1", "First Steps", "-", "E-mail Support",
                           "Frequently Asked Questions", "Downloads"}));
}

TEST_F(MenusTest, TheShredCommandsAreWithinReachOfTheMainWindow) {
    ASSERT_TRUE(launch());
    for (const char* name : {"shredNowButton", "shredAndButton", "shredFilesButton"}) {
        EXPECT_TRUE(find<QPushButton>(name)->isVisible()) << name;
    }
    EXPECT_EQ(commandsOf(*find<QPushButton>("shredAndButton")->menu()),
              QStringList({"Shred Traces and Log Out", "Shred Traces and Shut Down",
                           "Shred Traces and Restart"}));
}

TEST_F(MenusTest, EachEndingOfTheShredMenuStartsItsRun) {
    ASSERT_TRUE(launch());
    int alerts = 0;
    for (const auto& [action, status] : {std::pair("shredAndNothingAction", 0),
                                         {"shredAndLogoutAction", 1},
                                         {"shredAndShutdownAction", 2},
                                         {"shredAndRestartAction", 3}}) {
        onAlert([this, &alerts, expected = status](QMessageBox& box) {
            ++alerts;
            EXPECT_EQ(desktop->controller().run().shutdownStatus(), expected);
            click(box, "No");
        });
        trigger(action);
    }
    EXPECT_EQ(alerts, 4);
}

class ProfilesMenuTest : public MenusTest {
  protected:
    void SetUp() override {
        for (const char* name : {"k2v9x1aa.default", "p0q8w3bb.default"}) {
            std::filesystem::create_directories(
                home.path() / "Library/Application Support/Firefox/Profiles" / name);
        }
        defaults->setBool(true, "FirstRun");
        ASSERT_TRUE(launch());
        menu().popup(QPoint());
        settle();
    }
    QMenu& menu() { return desktop->mainWindow().profilesMenu(); }
    QAction* profile(const QString& name) {
        for (QAction* action : menu().actions()) {
            if (action->text() == name) return action;
        }
        return nullptr;
    }
    void press(Qt::Key key) {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, key, Qt::NoModifier);
            QCoreApplication::sendEvent(&menu(), &event);
        }
    }
    void click(QAction* action) {
        const QPointF place = menu().actionGeometry(action).center();
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QMouseEvent event(type, place, menu().mapToGlobal(place), Qt::LeftButton,
                              Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(&menu(), &event);
        }
    }
};

TEST_F(ProfilesMenuTest, ProfilesThatArePrettilyTheSameHaveTheirWholeNames) {
    EXPECT_NE(profile("k2v9x1aa.default"), nullptr);
    EXPECT_NE(profile("p0q8w3bb.default"), nullptr);
}

TEST_F(ProfilesMenuTest, ItStaysOpenWhileProfilesAreClicked) {
    for (const char* name : {"k2v9x1aa.default", "p0q8w3bb.default"}) {
        click(profile(name));
        EXPECT_TRUE(profile(name)->isChecked());
        EXPECT_TRUE(menu().isVisible());
    }
    click(profile("k2v9x1aa.default"));
    EXPECT_THAT(*defaults->arrayForKey("ProfilesMenu"), ::testing::ElementsAre("p0q8w3bb.default"));
}

TEST_F(ProfilesMenuTest, TheSpaceKeyTicksAndEscapeCloses) {
    menu().setActiveAction(profile("p0q8w3bb.default"));
    press(Qt::Key_Space);
    EXPECT_TRUE(profile("p0q8w3bb.default")->isChecked());
    EXPECT_TRUE(menu().isVisible());
    press(Qt::Key_Escape);
    EXPECT_FALSE(menu().isVisible());
    EXPECT_THAT(*defaults->arrayForKey("ProfilesMenu"), ::testing::ElementsAre("p0q8w3bb.default"));
}

TEST_F(MenusTest, TheHelpMenuOpensItsThreeAddresses) {
    const OpenedAddresses opened;
    ASSERT_TRUE(launch());
    for (const char* name : {"emailSupportAction", "webFAQAction", "webDownloadsAction"}) {
        trigger(name);
    }
    EXPECT_EQ(opened.addresses, QStringList({"mailto:support@dorvanel.example?subject=Dorvanel%20X",
                                             "https://www.dorvanel.example/faq",
                                             "https://www.dorvanel.example/downloads"}));
}

TEST_F(MenusTest, TheIconIsThereInEverySize) {
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        const QImage icon(QString::fromStdString(resources + "/icons/dorvanel-x-" +
                                                 std::to_string(size) + ".png"));
        EXPECT_EQ(icon.size(), QSize(size, size));
    }
}

}  // namespace
}  // namespace dorvanel::test
