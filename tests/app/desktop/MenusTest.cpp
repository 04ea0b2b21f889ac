// SPDX-License-Identifier: MIT
#include <QMenu>
#include <QMenuBar>

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
    EXPECT_EQ(commandsOf(*find<QMenu>("fileMenu")), QStringList({"Shred Files… | Ctrl+O"}));
    EXPECT_EQ(commandsOf(*find<QMenu>("shredMenu")),
              QStringList({"Shred Now | Ctrl+Return", "-", "Shred and Log Out",
                           "Shred and Shut Down", "Shred and Restart"}));
    EXPECT_EQ(commandsOf(*find<QMenu>("helpMenu")),
              QStringList({"E-mail Support", "Frequently Asked Questions | F1", "Downloads"}));
}

TEST_F(MenusTest, TheShredCommandsAreWithinReachOfTheMainWindow) {
    ASSERT_TRUE(launch());
    for (const char* name : {"shredNowButton", "shredAndButton", "shredFilesButton"}) {
        EXPECT_TRUE(find<QPushButton>(name)->isVisible()) << name;
    }
    EXPECT_EQ(commandsOf(*find<QPushButton>("shredAndButton")->menu()),
              QStringList({"Shred and Log Out", "Shred and Shut Down", "Shred and Restart"}));
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
