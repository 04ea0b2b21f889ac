// SPDX-License-Identifier: MIT
#include <QAccessible>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTreeView>
#include <filesystem>
#include <thread>

#include "app/desktop/DesktopFixture.h"
#include "app/desktop/plan/PlanDialog.h"
#include "support/EnvironmentVariable.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;

void type(QWidget* widget, int key, const QString& text = {}) {
    for (const QEvent::Type kind : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(kind, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(widget, &event);
    }
}

/// Looking at what would be shredded, in the window, before it is.
class PreviewTest : public DesktopFixture {
  protected:
    QString message() { return desktop->mainWindow().message(); }
    static QString textOf(QDialog& dialog, const char* label) {
        return dialog.findChild<QLabel*>(QLatin1String(label))->text();
    }
    static QPushButton* shredButton(QDialog& dialog) {
        return dialog.findChild<QPushButton*>("shredPlannedButton");
    }
    /// Puts an item into the trash of the test's home.
    std::string addToTrash(const std::string& name) {
        const std::string bin = home / "data/Trash";
        writeFile(bin + "/info/" + name + ".trashinfo", "[Trash Info]\nPath=/x\n");
        writeFile(bin + "/files/" + name, "secret");
        return bin + "/files/" + name;
    }
    int openDialogs() {
        int dialogs = 0;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            dialogs += qobject_cast<QDialog*>(widget) && widget->isVisible() ? 1 : 0;
        }
        return dialogs;
    }

    const EnvironmentVariable data{"XDG_DATA_HOME", home / "data"};
};

TEST_F(PreviewTest, ItShowsWhatARunWouldTakeAndCancelLeavesEverything) {
    const std::string page = addSafariCache();
    ASSERT_TRUE(launch());
    onQuestion([this](QDialog& question) {
        EXPECT_EQ(message(), "Waiting for your answer…");
        EXPECT_EQ(question.windowTitle(), "Preview");
        EXPECT_EQ(textOf(question, "planTotals"), "1 item, 1 file, 6 bytes would be shredded.");
        EXPECT_EQ(shredButton(question)->text(), "Shred 1 Item");
        const auto* tree = question.findChild<QTreeView*>("planTree");
        EXPECT_EQ(tree->model()->index(0, 0).data().toString(), "Safari");
        EXPECT_TRUE(tree->isExpanded(tree->model()->index(0, 0)));
        decline(question);
    });
    trigger("previewAction");
    EXPECT_EQ(readFile(page), "secret");
    EXPECT_EQ(message(), "Ready.");
    EXPECT_EQ(desktop->controller().activity(), Activity::idle);
}

TEST_F(PreviewTest, ShredCarriesThePlanOutWithoutAskingAgainAndTakesNothingThatCameSince) {
    const std::string page = addSafariCache();
    const std::string later = home / "Library/Caches/Mail/later";
    ASSERT_TRUE(launch());
    onQuestion([&](QDialog& question) {
        writeFile(later, "new");
        agree(question);
    });
    trigger("previewAction");
    waitForEnd();
    EXPECT_FALSE(fs::exists(page));
    EXPECT_EQ(readFile(later), "new");
    EXPECT_TRUE(message().startsWith("Shredded: 1 file, 6 bytes")) << message().toStdString();
    EXPECT_TRUE(message().contains("1 item that came after the preview is left for the next run."))
        << message().toStdString();
}

TEST_F(PreviewTest, CancelHasTheKeyboardAndReturnAndEscapeShredNothing) {
    const std::string page = addSafariCache();
    ASSERT_TRUE(launch());
    for (const int key : {Qt::Key_Return, Qt::Key_Escape}) {
        onQuestion([key](QDialog& question) {
            auto* cancel = question.findChild<QPushButton*>("cancelButton");
            EXPECT_TRUE(cancel->isDefault());
            EXPECT_EQ(question.focusWidget(), cancel);
            EXPECT_FALSE(shredButton(question)->isDefault());
            EXPECT_FALSE(shredButton(question)->autoDefault());
            type(&question, key);
        });
        trigger("previewAction");
    }
    EXPECT_EQ(readFile(page), "secret");
}

TEST_F(PreviewTest, TheKeyboardGoesFromTheFilterToTheTreeToShredAndSpaceShreds) {
    const std::string page = addSafariCache();
    ASSERT_TRUE(launch());
    onQuestion([](QDialog& question) {
        auto* filter = question.findChild<QLineEdit*>("planFilter");
        const std::vector<QWidget*> order = {question.findChild<QTreeView*>("planTree"),
                                             shredButton(question),
                                             question.findChild<QPushButton*>("cancelButton")};
        std::size_t met = 0;
        for (QWidget* next = filter->nextInFocusChain(); next != filter && met < order.size();
             next = next->nextInFocusChain()) {
            if (next == order[met]) ++met;
        }
        EXPECT_EQ(met, order.size());
        shredButton(question)->setFocus();
        type(shredButton(question), Qt::Key_Space, " ");
    });
    trigger("previewAction");
    waitForEnd();
    EXPECT_FALSE(fs::exists(page));
}

TEST_F(PreviewTest, EveryControlOfItHasANameForAssistiveTechnology) {
    addSafariCache();
    ASSERT_TRUE(launch());
    onQuestion([](QDialog& question) {
        for (const char* name :
             {"planFilter", "planTree", "shredPlannedButton", "cancelButton", "planTotals"}) {
            auto* control = question.findChild<QWidget*>(QLatin1String(name));
            auto* accessible = QAccessible::queryAccessibleInterface(control);
            EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty()) << name;
        }
        decline(question);
    });
    trigger("previewAction");
}

TEST_F(PreviewTest, ThereIsNothingToAgreeToWhereNothingWouldBeShredded) {
    set("ShredCache", false);
    set("ShredMailTrash", false);
    ASSERT_TRUE(launch());
    onQuestion([](QDialog& question) {
        EXPECT_EQ(textOf(question, "planLead"), "There is nothing to shred now.");
        EXPECT_FALSE(shredButton(question)->isVisible());
        EXPECT_EQ(question.findChild<QPushButton*>("cancelButton")->text(), "Close");
        decline(question);
    });
    trigger("previewAction");
}

TEST_F(PreviewTest, ItSaysThatItLooksUntilItHasSeenAllAndCanBeCancelledMeanwhile) {
    addSafariCache();
    ASSERT_TRUE(launch());
    std::atomic<bool> isHeld = true;
    desktop->plans().services->folders = [&isHeld] {
        while (isHeld) std::this_thread::yield();
        return catalogue::Folders{};
    };
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr) return;
        EXPECT_EQ(textOf(*dialog, "planLead"), "Looking…");
        EXPECT_TRUE(dialog->findChild<QWidget*>("busyBar")->isVisible());
        EXPECT_FALSE(shredButton(*dialog)->isEnabled());
        desktop->performAction("shred");
        EXPECT_EQ(message(), "Not started: another question waits for your answer.");
        decline(*dialog);
    });
    answer.start(1);
    trigger("previewAction");
    EXPECT_TRUE(desktop->plans().looker.isAtWork()) << "the window does not wait for it";
    isHeld = false;
    waitUntil([this] { return !desktop->plans().looker.isAtWork(); });
    EXPECT_EQ(openDialogs(), 0);
}

TEST_F(PreviewTest, AQuitWhileItLooksEndsTheProgramAndTheLook) {
    addSafariCache();
    ASSERT_TRUE(launch());
    std::atomic<bool> isAsked = false;
    desktop->plans().services->folders = [&isAsked] {
        while (!isAsked) std::this_thread::yield();
        return catalogue::Folders{};
    };
    QTimer quit;
    QObject::connect(&quit, &QTimer::timeout, [&] {
        if (QApplication::activeModalWidget() == nullptr) return;
        quit.stop();
        desktop->askToQuit();
        isAsked = true;
    });
    quit.start(1);
    desktop->runLoop().performOnMainThread([this] { desktop->previewRun(); });
    desktop->run();
    EXPECT_EQ(openDialogs(), 0);
    EXPECT_TRUE(fs::exists(home / "Library/Caches/Safari/page.cache"));
}

TEST_F(PreviewTest, WithoutPreferencesThereIsNoPreviewEither) {
    writeFile(userDefaultsPath(), "<plist version=\"1.0\"><dict><key>ShredCache</key><fal");
    preferences.reset();
    defaults = openUserDefaults(userDefaultsPath(), [](const auto&) {});
    preferences = sharedPreferences(*defaults);
    ASSERT_TRUE(launch());
    desktop->previewRun();
    desktop->shredTrash();
    EXPECT_EQ(openDialogs(), 0);
    EXPECT_TRUE(desktop->mainWindow().failures().message().startsWith(
        "Not started: the preferences cannot be read."));
}

TEST_F(PreviewTest, TheTrashIsShownAndShreddedByTheWorker) {
    const std::string old = addToTrash("old letter");
    ASSERT_TRUE(launch());
    onQuestion([](QDialog& question) {
        EXPECT_EQ(question.windowTitle(), "Shred Trash");
        EXPECT_EQ(shredButton(question)->text(), "Shred 2 Items") << "with what is known of it";
        agree(question);
    });
    draws.hold();
    trigger("shredTrashAction");
    EXPECT_EQ(desktop->controller().activity(), Activity::shredding);
    EXPECT_EQ(message(), "Shredding…");
    draws.release();
    waitForEnd();
    EXPECT_FALSE(fs::exists(old));
    EXPECT_THAT(fs::directory_iterator(home.path() / "data/Trash/info"), fs::directory_iterator());
    EXPECT_TRUE(message().startsWith("Shredded: 2 files")) << message().toStdString();
}

TEST_F(PreviewTest, ATrashThatIsDeclinedStaysAndAnEmptyOneSaysSo) {
    ASSERT_TRUE(launch());
    onQuestion([](QDialog& question) {
        EXPECT_EQ(textOf(question, "planLead"), "The trash is empty.");
        EXPECT_FALSE(shredButton(question)->isVisible());
        decline(question);
    });
    trigger("shredTrashAction");
    const std::string old = addToTrash("old letter");
    onQuestion(decline);
    trigger("shredTrashAction");
    EXPECT_EQ(readFile(old), "secret");
}

TEST_F(PreviewTest, WhereTheTrashCannotBeLookedIntoItSaysWhy) {
    ASSERT_TRUE(launch());
    desktop->plans().services->mountPoints = []() -> Result<std::vector<std::string>> {
        return Error{5, "read", "/proc/self/mountinfo", {}};
    };
    onQuestion([](QDialog& question) {
        EXPECT_TRUE(textOf(question, "planLead").contains("/proc/self/mountinfo"));
        EXPECT_FALSE(shredButton(question)->isVisible());
        decline(question);
    });
    trigger("shredTrashAction");
}

TEST_F(PreviewTest, WhileSomethingIsShreddedThereIsNoPreview) {
    addSafariCache();
    set("ConfirmShredding", false);
    ASSERT_TRUE(launch());
    draws.hold();
    trigger("shredAndNothingAction");
    desktop->previewRun();
    EXPECT_EQ(message(), "Not started: a run is still in progress.");
    desktop->shredTrash();
    EXPECT_EQ(openDialogs(), 0);
    draws.release();
    waitForEnd();
}

}  // namespace
}  // namespace dorvanel::test
