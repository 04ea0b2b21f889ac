// SPDX-License-Identifier: MIT
#include <QAccessible>
#include <QKeyEvent>
#include <filesystem>

#include "DesktopFixture.h"

namespace dorvanel::test {
namespace {

/// Failures stay in the window until somebody has taken note of them.
class FailuresTest : public DesktopFixture {
  protected:
    QWidget& box() { return *find<QWidget>("failureBox"); }
    QString text() {
        return box().isVisible() ? find<QLabel>("failureMessage")->text() : QString();
    }
    void dismiss() { find<QPushButton>("dismissButton")->click(); }
    /// Has the window refuse a request, for a reason that names `path`.
    void fail(const std::string& path) { desktop->filesDropped({path}); }
};

TEST_F(FailuresTest, AFailureIsShownWithTheTimeAndItsDetails) {
    ASSERT_TRUE(launch());
    EXPECT_EQ(text(), "");
    fail("/no/such file");
    EXPECT_TRUE(text().contains(": Nothing was shredded: “/no/such file” does not exist"))
        << text().toStdString();
    EXPECT_EQ(desktop->mainWindow().message(), "Nothing was shredded.");
    onAlert([](QMessageBox& box) {
        EXPECT_TRUE(box.detailedText().contains("“/no/such file” does not exist"));
        box.close();
    });
    find<QPushButton>("detailsButton")->click();
    waitUntil([] { return QApplication::activeModalWidget() == nullptr; });
}

TEST_F(FailuresTest, WhatAnEarlierRunHasLeftIsSaidAtTheStart) {
    unfinishedFolders = 2;
    ASSERT_TRUE(launch());
    EXPECT_TRUE(text().contains("2 holding folders of an unfinished shredding are left."))
        << text().toStdString();
    EXPECT_TRUE(desktop->mainWindow().failures().allDetails().contains("dorvanel recover"));
}

TEST_F(FailuresTest, WhatARunLeavesStaysThroughTheNextRun) {
    // A holding folder cannot be made where a file has its name for every second to come.
    const std::string page = addSafariCache();
    const std::string holding =
        home / ("Library/Caches/Dorvanel X Items (" + std::to_string(clock.time()) + ")");
    writeFile(holding, "in the way");
    set("ConfirmShredding", false);
    ASSERT_TRUE(launch());
    trigger("shredAndNothingAction");
    waitUntil([this] { return text() != ""; });
    EXPECT_TRUE(text().contains("is still there.")) << text().toStdString();
    EXPECT_TRUE(std::filesystem::exists(page));
    desktop->controller().run().waitForWorker();
    std::filesystem::remove_all(home.path() / "Library/Caches/Safari");
    const QString before = text();
    desktop->controller().shredAndNothing();
    waitUntil([this] { return desktop->mainWindow().message() == "There was nothing to shred."; });
    EXPECT_EQ(text(), before);
    EXPECT_TRUE(desktop->mainWindow().failures().allDetails().contains("Library/Caches/Safari"));
}

TEST_F(FailuresTest, ARunOfBrowserWatchThatFindsNothingLeavesTheFailureInTheWindow) {
    set("ConfirmShredding", false);
    ASSERT_TRUE(launch());
    fail("/no/such/file");
    const QString before = text();
    desktop->controller().shredAndNothing();
    waitUntil([this] { return desktop->mainWindow().message() == "There was nothing to shred."; });
    EXPECT_EQ(text(), before);
    EXPECT_NE(before, "");
}

TEST_F(FailuresTest, OlderFailuresComeUpAgainAsTheNewerAreDismissed) {
    ASSERT_TRUE(launch());
    fail("/one");
    fail("/two");
    fail("/three");
    EXPECT_TRUE(text().contains("/three"));
    EXPECT_TRUE(text().endsWith("(2 older failures are in the details.)"));
    EXPECT_TRUE(desktop->mainWindow().failures().allDetails().contains("/one"));
    dismiss();
    EXPECT_TRUE(text().contains("/two"));
    EXPECT_TRUE(text().endsWith("(One older failure is in the details.)"));
    dismiss();
    EXPECT_TRUE(text().contains("/one"));
    dismiss();
    EXPECT_FALSE(box().isVisible());
    dismiss();  // nothing is there to dismiss
    EXPECT_FALSE(box().isVisible());
}

TEST_F(FailuresTest, OneThatSaysWhatAnOlderOneSaysTakesItsPlace) {
    ASSERT_TRUE(launch());
    fail("/one");
    fail("/two");
    clock.advance(std::chrono::hours(1));
    fail("/one");
    EXPECT_EQ(desktop->mainWindow().failures().count(), 2U);
    EXPECT_TRUE(text().contains("/one"));
}

TEST_F(FailuresTest, ThousandsOfThemDoNotFillTheMemory) {
    ASSERT_TRUE(launch());
    for (int i = 0; i < 2000; ++i) fail("/" + std::to_string(i));
    EXPECT_EQ(desktop->mainWindow().failures().count(), 100U);
    EXPECT_TRUE(text().contains("/1999"));
}

TEST_F(FailuresTest, TheyAreDismissedByKeyAndByAssistiveTechnology) {
    ASSERT_TRUE(launch());
    fail("/one");
    fail("/two");
    auto& button = *find<QPushButton>("dismissButton");
    EXPECT_FALSE(button.shortcut().isEmpty());
    EXPECT_NE(button.focusPolicy() & Qt::TabFocus, 0);
    auto* accessible = QAccessible::queryAccessibleInterface(&button);
    EXPECT_EQ(accessible->text(QAccessible::Name), "Dismiss");
    EXPECT_NE(accessible->text(QAccessible::Description), "");
    accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    waitUntil([this] { return text().contains("/one"); });
    button.setFocus();
    QKeyEvent space(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier);
    QKeyEvent released(QEvent::KeyRelease, Qt::Key_Space, Qt::NoModifier);
    QCoreApplication::sendEvent(&button, &space);
    QCoreApplication::sendEvent(&button, &released);
    EXPECT_FALSE(box().isVisible());
    EXPECT_EQ(window().focusWidget(), &window()) << "not on a button that shreds";
}

TEST_F(FailuresTest, ALongNameDoesNotMakeTheWindowWider) {
    ASSERT_TRUE(launch());
    const int width = window().width();
    const std::string name = "/" + std::string(240, 'n');
    fail(name);
    for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
    EXPECT_EQ(window().width(), width);
    EXPECT_LE(window().minimumSizeHint().width(), width);
    EXPECT_TRUE(text().contains(QStringLiteral("…")));
    EXPECT_TRUE(
        desktop->mainWindow().failures().allDetails().contains(QString::fromStdString(name)));
}

}  // namespace
}  // namespace dorvanel::test
