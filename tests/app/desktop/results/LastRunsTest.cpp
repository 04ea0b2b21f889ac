// SPDX-License-Identifier: MIT
#include <QClipboard>
#include <QFileDialog>
#include <QJsonDocument>
#include <QTabWidget>
#include <QTreeView>
#include <QTreeWidget>
#include <QUrl>
#include <filesystem>

#include "app/desktop/DesktopFixture.h"
#include "app/desktop/OpenedAddresses.h"
#include "app/desktop/background/SessionServices.h"
#include "app/desktop/results/RunDetails.h"
#include "app/desktop/results/RunHistory.h"

namespace dorvanel::test {
namespace {

using desktop::RunDetails;
using desktop::RunHistory;

/// The page of the last runs, and what it leads to.
class LastRunsTest : public DesktopFixture {
  protected:
    LastRunsTest() {
        set("ConfirmShredding", false);
        hasStatusArea = true;
    }
    /// Has a run fail: its holding folder cannot be made where a file has the name.
    void failARun() {
        addSafariCache();
        writeFile(inTheWay(), "in the way");
        shred();
    }
    std::string inTheWay() {
        return home / ("Library/Caches/Dorvanel X Items (" + std::to_string(clock.time()) + ")");
    }
    void shred() {
        desktop->controller().shredAndNothing();
        waitForEnd();
    }
    QTreeView& list() { return *find<QTreeView>("runList"); }
    QString cell(int row, int column) {
        return list().model()->index(row, column).data().toString();
    }
    QString title() {
        auto* pages = find<QTabWidget>("pages");
        return pages->tabText(pages->indexOf(find<QWidget>("resultsPage"))).remove('&');
    }
    bool failureIsShown() { return find<QWidget>("failureBox")->isVisible(); }
    /// The details that are open; the newest.
    RunDetails& details() {
        settle();
        auto* found = window().findChild<RunDetails*>("runDetails");
        EXPECT_NE(found, nullptr);
        return *found;
    }
    static void press(RunDetails& dialog, const char* name) {
        auto* button = dialog.findChild<QPushButton*>(QLatin1String(name));
        ASSERT_TRUE(button->isEnabled()) << name;
        button->click();
    }
    static QString told(RunDetails& dialog) {
        auto* label = dialog.findChild<QLabel*>("runDetailsMessage");
        if (label->isHidden()) return {};
        return label->accessibleName().isEmpty() ? label->text() : label->accessibleName();
    }
};

TEST_F(LastRunsTest, BeforeTheFirstRunThePageSaysSo) {
    ASSERT_TRUE(launch());
    EXPECT_TRUE(list().isHidden());
    EXPECT_FALSE(find<QLabel>("noRunsText")->isHidden());
    EXPECT_FALSE(find<QPushButton>("runDetailsButton")->isEnabled());
    EXPECT_TRUE(find<QLabel>("runListNote")->text().contains("no name of a file"));
}

TEST_F(LastRunsTest, ARunIsInTheListWithWhatItDid) {
    addSafariCache();
    ASSERT_TRUE(launch());
    shred();
    EXPECT_FALSE(list().isHidden());
    EXPECT_EQ(cell(0, RunHistory::starter), "You");
    EXPECT_EQ(cell(0, RunHistory::subject), "Chosen traces");
    EXPECT_TRUE(cell(0, RunHistory::result).startsWith("Shredded: 1 file"));
    EXPECT_EQ(title(), "Last Runs");
    find<QPushButton>("runDetailsButton")->click();
    auto* tree = details().findChild<QTreeWidget*>("runTree");
    ASSERT_EQ(tree->topLevelItemCount(), 1);
    EXPECT_TRUE(tree->topLevelItem(0)->child(0)->text(0).endsWith("Library/Caches/Safari"));
}

TEST_F(LastRunsTest, EachRequestSaysByWhichDoorItCame) {
    const std::string file = home / "letter.txt";
    writeFile(file, "dear");
    ASSERT_TRUE(launch());
    waitForEnd();
    onQuestion([](QDialog& question) { agree(question); });
    desktop->filesDropped({file});
    waitForEnd();
    EXPECT_EQ(cell(0, RunHistory::starter), "Dropped files");
    EXPECT_EQ(cell(0, RunHistory::subject), "1 item");
    desktop->instanceHandlers().activateAction("shred");
    waitForEnd();
    EXPECT_EQ(cell(0, RunHistory::starter), "Launcher");
    shred();
    EXPECT_EQ(cell(0, RunHistory::starter), "You") << "a door counts once";
    EXPECT_EQ(list().model()->rowCount(), 3);
}

TEST_F(LastRunsTest, ItemsOfTheLaunchAreNamed) {
    const std::string file = home / "letter.txt";
    writeFile(file, "dear");
    ASSERT_TRUE(launch({file}));
    waitForEnd();
    EXPECT_EQ(cell(0, RunHistory::starter), "Launch");
}

TEST_F(LastRunsTest, ARunOfBrowserWatchNamesTheApplicationThatQuit) {
    set("BrowserWatch", true);
    ASSERT_TRUE(launch());
    listing.show({"/Applications/Safari.app/Contents/MacOS/Safari"});
    auto& watch = desktop->controller().browserWatch();
    watch.HandleBrowserWatchTimer(nullptr);
    listing.show({});
    addSafariCache();
    const auto timer =
        desktop->runLoop().scheduleRepeatingTimer(std::chrono::hours(1), [](ui::Timer&) {});
    watch.HandleBrowserWatchTimer(timer.get());
    timer->invalidate();
    waitForEnd();
    EXPECT_EQ(cell(0, RunHistory::starter), "Browser Watch: Safari quit");
}

TEST_F(LastRunsTest, AFailureMarksTheTabUntilItIsDismissedInTheList) {
    ASSERT_TRUE(launch());
    failARun();
    EXPECT_EQ(title(), "Last Runs (1)");
    EXPECT_TRUE(cell(0, RunHistory::result).startsWith("Failed: 1 item is still there."));
    EXPECT_TRUE(failureIsShown());
    EXPECT_EQ(desktop->tray().state(), desktop::Tray::State::failure);
    EXPECT_EQ(desktop->tray().toolTip(), "Dorvanel X: 1 run failed");
    find<QPushButton>("dismissRunButton")->click();
    EXPECT_EQ(title(), "Last Runs");
    EXPECT_FALSE(failureIsShown());
    EXPECT_EQ(desktop->tray().state(), desktop::Tray::State::idle);
    EXPECT_EQ(list().model()->rowCount(), 1);
}

TEST_F(LastRunsTest, DismissingItInTheFailureBoxTakesTheMarkAwayToo) {
    ASSERT_TRUE(launch());
    failARun();
    find<QPushButton>("dismissButton")->click();
    EXPECT_EQ(title(), "Last Runs");
    EXPECT_FALSE(failureIsShown());
}

TEST_F(LastRunsTest, TheDetailsOfTheFailureBoxAreThoseOfTheRunWithOlderFailures) {
    ASSERT_TRUE(launch());
    desktop->filesDropped({"/no/such/file"});
    failARun();
    find<QPushButton>("detailsButton")->click();
    auto* tree = details().findChild<QTreeWidget*>("runTree");
    QStringList groups;
    for (int i = 0; i < tree->topLevelItemCount(); ++i) groups << tree->topLevelItem(i)->text(0);
    EXPECT_EQ(groups.first(), "Still there");
    EXPECT_EQ(groups.last(), "Older failures");
    EXPECT_TRUE(tree->topLevelItem(0)->isExpanded());
    EXPECT_TRUE(tree->topLevelItem(0)->child(0)->text(1).startsWith("could not move: "));
}

TEST_F(LastRunsTest, DetailsAreCopiedAsText) {
    ASSERT_TRUE(launch());
    failARun();
    find<QPushButton>("detailsButton")->click();
    press(details(), "copyRunButton");
    const QString copied = QApplication::clipboard()->text();
    EXPECT_TRUE(copied.contains("1 item is still there."));
    EXPECT_TRUE(copied.contains("Library/Caches/Safari"));
    EXPECT_EQ(told(details()), "The details were copied.");
}

TEST_F(LastRunsTest, WhatIsLeftIsTriedAgainAfterAQuestion) {
    ASSERT_TRUE(launch());
    failARun();
    std::filesystem::remove(inTheWay());
    find<QPushButton>("detailsButton")->click();
    onQuestion([](QDialog& question) { decline(question); });
    press(details(), "tryAgainButton");
    waitForEnd();
    EXPECT_TRUE(std::filesystem::exists(home / "Library/Caches/Safari"));
    find<QPushButton>("detailsButton")->click();
    onQuestion([](QDialog& question) { agree(question); });
    press(details(), "tryAgainButton");
    waitForEnd();
    EXPECT_FALSE(std::filesystem::exists(home / "Library/Caches/Safari"));
    EXPECT_EQ(cell(0, RunHistory::starter), "Try Again");
    EXPECT_EQ(list().model()->rowCount(), 2);
}

TEST_F(LastRunsTest, WhereNothingIsLeftAnyMoreThatIsSaid) {
    ASSERT_TRUE(launch());
    failARun();
    std::filesystem::remove_all(home / "Library/Caches/Safari");
    find<QPushButton>("detailsButton")->click();
    press(details(), "tryAgainButton");
    EXPECT_EQ(told(details()), "Nothing of it is there any more.");
}

TEST_F(LastRunsTest, WhatIsLeftIsShownByTheFileManager) {
    SessionServices services;
    ASSERT_TRUE(services.haveFileManager());
    sessionBus = services.program;
    ASSERT_TRUE(launch());
    failARun();
    find<QPushButton>("detailsButton")->click();
    press(details(), "showInFolderButton");
    waitUntil([&services] { return !services.fileManager.shown.isEmpty(); });
    EXPECT_TRUE(services.fileManager.shown.first().endsWith("Library/Caches/Safari"));
    desktop.reset();
}

TEST_F(LastRunsTest, WithoutAFileManagerToAskTheFolderIsOpened) {
    OpenedAddresses opened;
    ASSERT_TRUE(launch());
    failARun();
    find<QPushButton>("detailsButton")->click();
    press(details(), "showInFolderButton");
    waitUntil([&opened] { return !opened.addresses.isEmpty(); });
    EXPECT_TRUE(opened.addresses.first().endsWith("Library/Caches"));
}

TEST_F(LastRunsTest, TheReportIsSavedToAFileThatThePersonChooses) {
    ASSERT_TRUE(launch());
    failARun();
    find<QPushButton>("detailsButton")->click();
    RunDetails& dialog = details();
    press(dialog, "saveReportButton");
    auto* chooser = dialog.findChild<QFileDialog*>("saveReportDialog");
    ASSERT_NE(chooser, nullptr);
    const std::string path = home / "report.json";
    emit chooser->fileSelected(QString::fromStdString(path));
    waitUntil([&dialog] { return !told(dialog).isEmpty(); });
    EXPECT_TRUE(told(dialog).startsWith("The report was saved: "));
    EXPECT_FALSE(QJsonDocument::fromJson(QByteArray::fromStdString(readFile(path))).isNull());
    emit chooser->fileSelected(QString::fromStdString(home / "none/report.json"));
    waitUntil([&dialog] { return told(dialog).startsWith("The report was not saved: "); });
}

TEST_F(LastRunsTest, ARefusalThatPassesIsNoRun) {
    addSafariCache();
    ASSERT_TRUE(launch());
    draws.hold();
    desktop->controller().shredAndNothing();
    EXPECT_EQ(desktop->tray().state(), desktop::Tray::State::working);
    desktop->controller().shredAndNothing();
    draws.release();
    waitForEnd();
    EXPECT_EQ(list().model()->rowCount(), 1);
    EXPECT_EQ(desktop->tray().state(), desktop::Tray::State::idle);
}

TEST_F(LastRunsTest, TheIconIsAnotherForEachState) {
    using State = desktop::Tray::State;
    QPixmap program(QString::fromStdString(resources + "/icons/dorvanel-x-48.png"));
    QApplication::setWindowIcon(QIcon(program));
    QList<QImage> pictures;
    for (const State state : {State::idle, State::working, State::failure}) {
        pictures << desktop::Tray::iconFor(state).pixmap(48).toImage();
    }
    EXPECT_NE(pictures[0], pictures[1]);
    EXPECT_NE(pictures[0], pictures[2]);
    EXPECT_NE(pictures[1], pictures[2]);
    QApplication::setWindowIcon(QIcon());
}

}  // namespace
}  // namespace dorvanel::test
