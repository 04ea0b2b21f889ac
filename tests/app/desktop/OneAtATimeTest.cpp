// SPDX-License-Identifier: MIT
#include <QAccessible>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QProgressBar>
#include <filesystem>

#include "DesktopFixture.h"

namespace dorvanel::test {
namespace {

constexpr const char* atWork = "Not started: a run is still in progress.";

/// Whatever comes while something is being shredded is refused, by every door, and the window shows
/// what goes on.
class OneAtATimeTest : public DesktopFixture {
  protected:
    QString message() { return desktop->mainWindow().message(); }
    std::string makeFile(const char* name) {
        const std::string path = home / name;
        writeFile(path, "secret");
        return path;
    }
    /// Has the window shred a file that was dropped on it, and holds the worker at its first fill.
    void shredDropped(const std::string& file) {
        draws.hold();
        onQuestion(agree);
        desktop->filesDropped({file});
        ASSERT_EQ(desktop->controller().activity(), Activity::shredding);
    }
    bool canBeGiven(const char* action) { return find<QAction>(action)->isEnabled(); }
};

TEST_F(OneAtATimeTest, DroppedFilesAreShreddedByTheWorkerWhileTheWindowSaysSo) {
    const std::string file = makeFile("a.txt");
    ASSERT_TRUE(launch());
    onAlert([](QMessageBox& box) { click(box, "No"); });
    trigger("shredAndNothingAction");
    EXPECT_EQ(message(), "Cancelled. Nothing was shredded.");
    shredDropped(file);
    EXPECT_EQ(message(), "Shredding…");
    settle();
    EXPECT_EQ(message(), "Shredding…");
    EXPECT_TRUE(std::filesystem::exists(home.path()));
    draws.release();
    waitForEnd();
    EXPECT_TRUE(message().startsWith("Shredded: 1 file, 6 bytes"));
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(OneAtATimeTest, FilesOfTheOpenPanelAreShreddedByTheWorkerToo) {
    const std::string file = makeFile("picked.txt");
    ASSERT_TRUE(launch());
    draws.hold();
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [this, &file] {
        auto* panel = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (panel == nullptr) return;
        EXPECT_TRUE(desktop->runLoop().isHeld());
        EXPECT_EQ(message(), "Waiting for your answer…");
        panel->findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(file));
        panel->findChild<QDialogButtonBox*>("buttonBox")->button(QDialogButtonBox::Open)->click();
    });
    answer.start(1);
    trigger("openDocAction");
    EXPECT_EQ(desktop->controller().activity(), Activity::shredding);
    EXPECT_EQ(message(), "Shredding…");
    draws.release();
    waitForEnd();
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(OneAtATimeTest, EveryOtherDoorIsShutWhileFilesAreShredded) {
    const std::string page = addSafariCache(), file = makeFile("a.txt"), other = makeFile("b.txt");
    set("ConfirmShredding", false);
    hasStatusArea = true;
    ASSERT_TRUE(launch());
    shredDropped(file);

    for (const char* action :
         {"shredAndNothingAction", "shredAndLogoutAction", "shredAndShutdownAction",
          "shredAndRestartAction", "openDocAction", "previewAction", "shredTrashAction"}) {
        EXPECT_FALSE(canBeGiven(action)) << action;
        find<QAction>(action)->trigger();
    }
    for (const char* name :
         {"previewButton", "shredNowButton", "shredAndButton", "shredFilesButton"}) {
        auto* button = find<QPushButton>(name);
        EXPECT_FALSE(button->isEnabled()) << name;
        auto* accessible = QAccessible::queryAccessibleInterface(button);
        accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        button->click();
    }
    for (QAction* item : desktop->trayMenu()->actions()) {
        if (!item->text().startsWith("Shred")) continue;
        EXPECT_FALSE(item->isEnabled()) << item->text().toStdString();
        item->trigger();
    }
    EXPECT_EQ(message(), "Shredding…");
    // These cannot be dimmed; they are told.
    desktop->filesDropped({other});
    EXPECT_EQ(message(), atWork);
    for (const char* action : {"shred", "shred-and-shut-down"}) {
        desktop->instanceHandlers().activateAction(action);
        EXPECT_EQ(message(), atWork);
    }
    desktop->openDoc();
    EXPECT_FALSE(desktop->controller().shredFiles(holdAll(*system, {other})));
    EXPECT_EQ(message(), atWork);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);

    draws.release();
    waitForEnd();
    EXPECT_TRUE(message().startsWith("Shredded: 1 file")) << message().toStdString();
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_TRUE(std::filesystem::exists(page));
    EXPECT_TRUE(std::filesystem::exists(other));
    EXPECT_EQ(calls.calls().size(), 0U);
}

TEST_F(OneAtATimeTest, FilesAreRefusedWhileARunIsAtWork) {
    addSafariCache();
    const std::string file = makeFile("a.txt");
    set("ConfirmShredding", false);
    ASSERT_TRUE(launch());
    draws.hold();
    trigger("shredAndNothingAction");
    desktop->filesDropped({file});
    EXPECT_EQ(message(), atWork);
    draws.release();
    waitForEnd();
    EXPECT_EQ(readFile(file), "secret");
}

TEST_F(OneAtATimeTest, WhatWasTypedAndClickedMeanwhileFindsNoCommandAfterTheEnd) {
    addSafariCache();
    set("ConfirmShredding", false);
    ASSERT_TRUE(launch());
    find<QPushButton>("shredNowButton")->setFocus();
    trigger("shredAndNothingAction");
    EXPECT_EQ(window().focusWidget(), &window()) << "a dimmed button hands the keyboard on";
    waitForEnd();
    // What waited in the queue comes now, before anything that is typed from now on.
    EXPECT_FALSE(canBeGiven("shredAndNothingAction"));
    waitUntil([this] { return canBeGiven("shredAndNothingAction"); });
    EXPECT_TRUE(find<QPushButton>("shredNowButton")->isEnabled());
}

TEST_F(OneAtATimeTest, NoDoorOpensBesideAQuestion) {
    const std::string page = addSafariCache(), file = makeFile("a.txt"), other = makeFile("b.txt");
    hasStatusArea = true;
    ASSERT_TRUE(launch());
    onQuestion([&](QDialog& question) {
        EXPECT_EQ(message(), "Waiting for your answer…");
        EXPECT_FALSE(canBeGiven("shredAndNothingAction"));
        desktop->instanceHandlers().activateAction("shred");
        EXPECT_EQ(message(), "Not started: another question waits for your answer.");
        desktop->filesDropped({other});
        desktop->previewRun();
        desktop->shredTrash();
        int dialogs = 0;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            dialogs += qobject_cast<QDialog*>(widget) && widget->isVisible() ? 1 : 0;
        }
        EXPECT_EQ(dialogs, 1);
        agree(question);
    });
    desktop->filesDropped({file});
    waitForEnd();
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_TRUE(std::filesystem::exists(page));
    EXPECT_TRUE(std::filesystem::exists(other));
}

TEST_F(OneAtATimeTest, WhatGoesOnIsShownStepByStep) {
    addSafariCache();
    set("ConfirmShredding", false);
    ASSERT_TRUE(launch());
    processes.add("Safari", "APPL", "sfri");
    QStringList seen;
    const auto note = [&] {
        if (seen.isEmpty() || seen.last() != message()) seen << message();
    };
    listing.onOpen = note;
    processes.onWalk = [&] {
        note();
        if (processes.walks == 4) processes.processes.clear();
    };
    draws.hold();
    desktop->instanceHandlers().activateAction("shred-and-restart");
    note();
    draws.release();
    waitForEnd();
    note();
    EXPECT_EQ(seen.join("|"),
              "Waiting for your answer…|Waiting for browsers and mail programs to quit…|"
              "Looking for what is to be shredded…|Shredding…|" +
                  message());
    EXPECT_TRUE(message().startsWith("Shredded: 1 file"));
}

/// Where the computer has no thread to give.
class NoWorker final : public platform::Worker {
  public:
    Result<Done> start(std::function<void()>) override {
        return Error{0, "start", "a thread", "none left"};
    }
    void wait() override {}
};

TEST_F(OneAtATimeTest, WithoutAThreadNothingIsShreddedAndTheWindowSaysNotStarted) {
    const std::string page = addSafariCache(), file = makeFile("a.txt");
    set("ConfirmShredding", false);
    makeWorker = [] { return std::make_unique<NoWorker>(); };
    ASSERT_TRUE(launch());
    trigger("shredAndNothingAction");
    EXPECT_EQ(desktop->mainWindow().failures().message(),
              "Not started: the computer has no thread to give.");
    EXPECT_EQ(message(), "Not started. Nothing was shredded.");
    EXPECT_EQ(desktop->controller().activity(), Activity::idle);
    onQuestion(agree);
    desktop->filesDropped({file});
    EXPECT_TRUE(std::filesystem::exists(page));
    EXPECT_EQ(readFile(file), "secret");
}

}  // namespace
}  // namespace dorvanel::test
