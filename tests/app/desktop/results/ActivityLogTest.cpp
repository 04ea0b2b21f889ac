// SPDX-License-Identifier: MIT
#include <sys/stat.h>

#include <QPlainTextEdit>
#include <filesystem>

#include "app/desktop/DesktopFixture.h"
#include "app/desktop/results/LogDialog.h"
#include "app/desktop/results/LogTail.h"
#include "log/ActivityLog.h"

namespace dorvanel::test {
namespace {

using desktop::LogDialog;
using desktop::LogTail;
using desktop::readLogTail;

class LogTailTest : public ::testing::Test {
  protected:
    TemporaryFolder folder;
    const std::string path = folder / "log";
};

TEST_F(LogTailTest, AShortLogIsReadWhole) {
    writeFile(path, "one\ntwo\n");
    const LogTail tail = readLogTail(path, 100);
    EXPECT_EQ(tail.text, "one\ntwo");
    EXPECT_FALSE(tail.isOnlyTheEnd);
}

TEST_F(LogTailTest, OfALongOneTheLastWholeLinesAreRead) {
    writeFile(path, "first line\nsecond\nthird\n");
    const LogTail tail = readLogTail(path, 15);
    EXPECT_EQ(tail.text, "second\nthird");
    EXPECT_TRUE(tail.isOnlyTheEnd);
}

TEST_F(LogTailTest, BytesThatAreNoTextDoNoHarm) {
    writeFile(path, "a\xff\x1b[31mb\n\xe2\x80\xaeright\n");
    const LogTail tail = readLogTail(path, 100);
    EXPECT_EQ(tail.text, QString::fromUtf8("a\xef\xbf\xbd\xef\xbf\xbd[31mb\n\xef\xbf\xbdright"));
}

TEST_F(LogTailTest, AVeryLongLineIsBroken) {
    writeFile(path, std::string(10'000, 'x') + "\n");
    EXPECT_EQ(readLogTail(path, 100'000).text.count('\n'), 2);
}

TEST_F(LogTailTest, WhatCannotBeReadIsTold) {
    EXPECT_TRUE(readLogTail(path, 100).isMissing);
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(readLogTail(path, 100).trouble,
              "The activity log cannot be read: it is no regular file.");
    std::filesystem::remove(path);
    std::filesystem::create_symlink(path, path);
    EXPECT_TRUE(readLogTail(path, 100).trouble.startsWith("The activity log cannot be read: "));
}

/// The log in the program itself.
class ActivityLogTest : public DesktopFixture {
  protected:
    /// Gives the command, and waits until the log has been read.
    LogDialog& show() {
        trigger("showLogAction");
        auto* dialog = window().findChild<LogDialog*>("logDialog");
        auto* note = dialog->findChild<QLabel*>("logNote");
        waitUntil([note] { return !note->text().isEmpty(); });
        return *dialog;
    }
    static QString note(LogDialog& dialog) {
        auto* label = dialog.findChild<QLabel*>("logNote");
        return label->accessibleName().isEmpty() ? label->text() : label->accessibleName();
    }
    static QString text(LogDialog& dialog) {
        return dialog.findChild<QPlainTextEdit*>("logText")->toPlainText();
    }
    static QPushButton& preferencesButton(LogDialog& dialog) {
        return *dialog.findChild<QPushButton*>("logPreferencesButton");
    }
};

TEST_F(ActivityLogTest, ALogThatIsOffIsSaidToBeAndThePreferencesAreOneClickAway) {
    ASSERT_TRUE(launch());
    LogDialog& dialog = show();
    EXPECT_TRUE(note(dialog).startsWith("The activity log is off: runs write nothing down."));
    preferencesButton(dialog).click();
    EXPECT_TRUE(desktop->panel().window()->isVisible());
}

TEST_F(ActivityLogTest, ARunIsReadInIt) {
    set("ActivityLog", true);
    set("ConfirmShredding", false);
    addSafariCache();
    ASSERT_TRUE(launch());
    EXPECT_TRUE(note(show()).startsWith("There is no activity log yet."));
    trigger("shredAndNothingAction");
    waitForEnd();
    LogDialog& dialog = show();
    waitUntil([&dialog] { return text(dialog).contains("Dorvanel Completed Successfully"); });
    EXPECT_FALSE(preferencesButton(dialog).isVisible());
    EXPECT_TRUE(dialog.findChild<QPlainTextEdit*>("logText")->isReadOnly());
}

TEST_F(ActivityLogTest, OfALargeLogOnlyTheEndIsShownAndThatIsSaid) {
    writeFile(activityLogPath(), std::string(3 * LogDialog::limit, '\n') + "the end\n");
    set("ActivityLog", true);
    ASSERT_TRUE(launch());
    LogDialog& dialog = show();
    EXPECT_TRUE(note(dialog).contains("Only the end of the log is shown"));
    EXPECT_TRUE(text(dialog).endsWith("the end"));
}

TEST_F(ActivityLogTest, ClosingWhileItIsReadWaitsForNothingElse) {
    writeFile(activityLogPath(), std::string(LogDialog::limit, 'x'));
    ASSERT_TRUE(launch());
    trigger("showLogAction");
    delete window().findChild<LogDialog*>("logDialog");
    settle();
    EXPECT_FALSE(desktop->controller().isBusy());
}

}  // namespace
}  // namespace dorvanel::test
