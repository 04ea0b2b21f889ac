// SPDX-License-Identifier: MIT
#include <QDropEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QProgressBar>
#include <QTableView>
#include <filesystem>

#include "DesktopFixture.h"

namespace dorvanel::test {
namespace {

using ::testing::ElementsAre;

constexpr std::array<const char*, 12> labels = {
    "mBWSafari", "mBWExplorer", "mBWMozilla", "mBWNetscape",  "mBWiCab",   "mBWOmniweb",
    "mBWOpera",  "mBWMail",     "mBWEudora",  "mBWMailsmith", "mBWCamino", "mBWFirefox"};

class WindowTest : public DesktopFixture {
  protected:
    /// Drops files on the window, and lets the drop come to its end.
    bool drop(const QList<QUrl>& urls) {
        QMimeData data;
        data.setUrls(urls);
        // The toolkit delivers a drop only to who took the drag when it came in.
        QDragEnterEvent enter(QPoint(50, 50), Qt::MoveAction | Qt::CopyAction, &data,
                              Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QCoreApplication::sendEvent(&window(), &enter);
        if (!enter.isAccepted()) return false;
        QDropEvent event(QPointF(50, 50), Qt::MoveAction | Qt::CopyAction, &data, Qt::LeftButton,
                         Qt::NoModifier);
        event.ignore();
        QCoreApplication::sendEvent(&window(), &event);
        const bool accepted = event.isAccepted();
        EXPECT_TRUE(!accepted || event.dropAction() == Qt::CopyAction);
        for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
        return accepted;
    }
    QString toolTip(const char* label) { return find<QLabel>(label)->toolTip(); }
};

TEST_F(WindowTest, AWatchPassShowsInTheLabelsWhoseTextsStay) {
    ASSERT_TRUE(launch());
    QStringList texts;
    for (const char* name : labels) texts << find<QLabel>(name)->text();
    ASSERT_TRUE(preferences->enableChanged("Opera"));
    listing.show({"/Applications/Safari.app/Contents/MacOS/Safari"});
    desktop->controller().browserWatch().HandleBrowserWatchTimer(nullptr);
    EXPECT_TRUE(toolTip("mBWSafari").contains("is running"));
    EXPECT_TRUE(toolTip("mBWFirefox").contains("is watched"));
    EXPECT_TRUE(toolTip("mBWOpera").contains("not watched"));
    EXPECT_EQ(find<QLabel>("browserWatchStatusTextbox")->text(),
              "A supported browser or email application is running...");
    for (const char* name : labels) EXPECT_EQ(find<QLabel>(name)->text(), texts.takeFirst());
}

TEST_F(WindowTest, ARunGoesThroughAndTheWindowTellsWhatItDid) {
    const std::string page = addSafariCache();
    ASSERT_TRUE(launch());
    onAlert([](QMessageBox& box) { click(box, "Yes"); });
    trigger("shredAndNothingAction");
    waitUntil([this] { return desktop->mainWindow().message().startsWith("Shredded:"); });
    EXPECT_TRUE(desktop->mainWindow().message().startsWith("Shredded: 1 file, 6 bytes"));
    EXPECT_FALSE(std::filesystem::exists(page));
    waitUntil([this] {
        return find<QProgressBar>("shreddingProgress")->value() == 0 &&
               find<QLabel>("fileName")->text().isEmpty();
    });
}

TEST_F(WindowTest, TheWindowStaysAliveDuringARun) {
    addSafariCache();
    set("ConfirmShredding", false);
    draws.hold();
    ASSERT_TRUE(launch());
    find<QPushButton>("shredNowButton")->click();
    ASSERT_EQ(desktop->controller().run().threadCount(), 1);
    trigger("showPanelAction");
    EXPECT_TRUE(desktop->panel().window()->isVisible());
    draws.release();
    waitUntil([this] { return desktop->controller().run().threadCount() == 0; });
}

TEST_F(WindowTest, WhileApplicationsAreAskedToQuitTheWindowSaysSoAndIsPainted) {
    set("ConfirmShredding", false);
    ASSERT_TRUE(launch());
    processes.add("Safari", "APPL", "sfri");
    QStringList seen;
    processes.onWalk = [&] { seen << desktop->mainWindow().message(); };
    onAlert([](QMessageBox& box) {
        EXPECT_EQ(box.text(), "Dorvanel Quit Browsers");
        EXPECT_TRUE(box.informativeText().startsWith("1 Email or Browser Applications"));
        click(box, "Cancel");
    });
    trigger("shredAndLogoutAction");
    EXPECT_EQ(processes.quits.size(), 1U);
    EXPECT_EQ(seen.last(), "Waiting for browsers and mail programs to quit…");
    EXPECT_EQ(desktop->mainWindow().message(), "Cancelled. Nothing was shredded.");
}

TEST_F(WindowTest, DroppedFilesAreAskedAboutOnceByNameAndCountAndThenShredded) {
    const std::string one = home / "one.txt", two = home / "two.txt";
    writeFile(one, "1");
    writeFile(two, "2");
    ASSERT_TRUE(launch());
    int asked = 0;
    onQuestion([&asked](QDialog& question) {
        ++asked;
        EXPECT_EQ(question.windowTitle(), "Shred Dropped Items");
        EXPECT_EQ(question.findChild<QLabel*>("itemsQuestion")->text(),
                  "Shred 2 items? There is no way back.");
        const auto* table = question.findChild<QTableView*>("itemsTable");
        ASSERT_EQ(table->model()->rowCount(), 2);
        EXPECT_EQ(table->model()->index(0, 0).data().toString(), "one.txt");
        EXPECT_EQ(table->model()->index(1, 0).data().toString(), "two.txt");
        EXPECT_TRUE(question.findChild<QPushButton*>("cancelButton")->isDefault());
        agree(question);
    });
    EXPECT_TRUE(drop({QUrl::fromLocalFile(QString::fromStdString(one)),
                      QUrl::fromLocalFile(QString::fromStdString(two))}));
    EXPECT_EQ(asked, 1);
    waitForEnd();
    EXPECT_FALSE(std::filesystem::exists(one));
    EXPECT_FALSE(std::filesystem::exists(two));
    EXPECT_TRUE(desktop->mainWindow().message().startsWith("Shredded: 2 files"));
    EXPECT_EQ(desktop->controller().run().threadCount(), 0);
}

TEST_F(WindowTest, ADropThatIsCancelledOrNoFileLeavesEverything) {
    const std::string one = home / "one.txt";
    writeFile(one, "1");
    ASSERT_TRUE(launch());
    onQuestion(decline);
    EXPECT_TRUE(drop({QUrl::fromLocalFile(QString::fromStdString(one))}));
    EXPECT_EQ(readFile(one), "1");
    EXPECT_FALSE(drop({QUrl("https://example.org/page")}));
}

TEST_F(WindowTest, WhatMustNotBeShreddedIsRefusedWithAllThatWasDroppedWithIt) {
    const std::string one = home / "one.txt";
    writeFile(one, "1");
    ASSERT_TRUE(launch());
    EXPECT_TRUE(drop({QUrl::fromLocalFile(QString::fromStdString(one)),
                      QUrl::fromLocalFile(QString::fromStdString(home.path().native()))}));
    EXPECT_EQ(readFile(one), "1");
    EXPECT_TRUE(desktop->mainWindow().failures().message().endsWith(
        "is the home folder or a folder above it"));
}

TEST_F(WindowTest, TheProfilesMenuTicksAndUnticks) {
    std::filesystem::create_directories(home.path() /
                                        "Library/Application Support/Firefox/Profiles/x7.default");
    std::filesystem::create_directories(home.path() /
                                        "Library/Application Support/Firefox/Profiles/y.a & b");
    defaults->setBool(true, "FirstRun");
    ASSERT_TRUE(launch());
    QMenu& menu = desktop->mainWindow().profilesMenu();
    EXPECT_TRUE(menu.menuAction()->isEnabled());
    QAction* profile = nullptr;
    QAction* heading = nullptr;
    for (QAction* action : menu.actions()) {
        if (action->text() == "x7.default") profile = action;
        if (action->text() == "Firefox") heading = action;
    }
    ASSERT_NE(profile, nullptr);
    ASSERT_NE(heading, nullptr);
    EXPECT_FALSE(heading->isEnabled());
    EXPECT_EQ(profile->toolTip(), "x7.default");
    profile->trigger();
    EXPECT_TRUE(profile->isChecked());
    EXPECT_THAT(*defaults->arrayForKey("ProfilesMenu"), ElementsAre("x7.default"));
    profile->trigger();
    EXPECT_FALSE(profile->isChecked());
    EXPECT_TRUE(defaults->arrayForKey("ProfilesMenu")->empty());
}

TEST_F(WindowTest, WithoutProfilesTheirMenuIsDimmed) {
    ASSERT_TRUE(launch());
    EXPECT_FALSE(desktop->mainWindow().profilesMenu().menuAction()->isEnabled());
}

TEST_F(WindowTest, EveryActionOfTheLauncherStartsItsRun) {
    ASSERT_TRUE(launch());
    int alerts = 0;
    for (const auto& [action, status] : {std::pair("shred", 0),
                                         {"shred-and-log-out", 1},
                                         {"shred-and-shut-down", 2},
                                         {"shred-and-restart", 3}}) {
        onAlert([this, &alerts, expected = status](QMessageBox& box) {
            ++alerts;
            EXPECT_EQ(desktop->controller().run().shutdownStatus(), expected);
            click(box, "No");
        });
        desktop->instanceHandlers().activateAction(action);
    }
    EXPECT_EQ(alerts, 4);
}

TEST_F(WindowTest, EveryMnemonicOfTheWindowIsItsOwn) {
    ASSERT_TRUE(launch());
    QStringList keys;
    const auto collect = [&keys](const QString& text) {
        const qsizetype mark = text.indexOf('&');
        if (mark >= 0) keys << text.mid(mark + 1, 1).toLower();
    };
    for (QAction* menu : window().menuBar()->actions()) collect(menu->text());
    for (QPushButton* button : window().findChildren<QPushButton*>()) collect(button->text());
    QStringList unique = keys;
    unique.removeDuplicates();
    EXPECT_EQ(keys, unique);
    EXPECT_EQ(keys.size(), 15);
}

}  // namespace
}  // namespace dorvanel::test
