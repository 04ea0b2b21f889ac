// SPDX-License-Identifier: MIT
#include <QKeyEvent>
#include <QProgressBar>
#include <filesystem>

#include "DesktopFixture.h"

namespace dorvanel::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr const char* quitMessage =
    "Quitting Dorvanel will interrupt Browser Watch™ and Dorvanel will not run automatically when "
    "you quit from your web browser or email application. Would you prefer to hide Dorvanel in the "
    "Dock?";

class LaunchAndQuitTest : public DesktopFixture {};

TEST_F(LaunchAndQuitTest, LaunchingShowsTheWindowAndWaitsForTheFirstPass) {
    ASSERT_TRUE(launch());
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(find<QLabel>("browserWatchStatusTextbox")->text(),
              "Enabled and waiting for the first timer event to occur...");
}

TEST_F(LaunchAndQuitTest, WithoutBrowserWatchTheQuitCommandQuitsAtOnce) {
    set("BrowserWatch", false);
    ASSERT_TRUE(launch());
    onAlert([](QMessageBox& box) {
        ADD_FAILURE() << "a sheet was shown";
        box.close();
    });
    QTimer::singleShot(0, &window(), [this] { trigger("reallyQuitAction"); });
    desktop->run();  // returns when the program has quit
}

TEST_F(LaunchAndQuitTest, WithBrowserWatchTheQuitCommandAsksAndCancelLeavesEverythingRunning) {
    ASSERT_TRUE(launch());
    bool asked = false;
    onAlert([&asked](QMessageBox& box) {
        asked = true;
        EXPECT_EQ(box.text(), "Quit");
        EXPECT_EQ(box.informativeText(), quitMessage);
        EXPECT_EQ(titlesOf(box), QStringList({"Hide", "Quit", "Cancel"}));
        EXPECT_EQ(box.windowModality(), Qt::WindowModal);
        click(box, "Cancel");
    });
    trigger("reallyQuitAction");
    waitUntil([&asked] { return asked; });
    for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
    EXPECT_TRUE(window().isVisible());
    EXPECT_FALSE(window().isMinimized());
    EXPECT_TRUE(desktop->controller().browserWatch().isWatching());
    EXPECT_EQ(desktop->controller().run().appNeedsToTerminate(), 0);
}

TEST_F(LaunchAndQuitTest, HideInTheQuitSheetPutsTheWindowAwayAndKeepsWatching) {
    ASSERT_TRUE(launch());
    onAlert([](QMessageBox& box) { click(box, "Hide"); });
    trigger("reallyQuitAction");
    // There is no tray here to come back from, so the window is minimised.
    waitUntil([this] { return window().isMinimized() || !window().isVisible(); });
    EXPECT_TRUE(desktop->controller().browserWatch().isWatching());
    desktop->activate();
    EXPECT_TRUE(window().isVisible());
    EXPECT_FALSE(window().isMinimized());
}

TEST_F(LaunchAndQuitTest, QuitInTheQuitSheetQuits) {
    ASSERT_TRUE(launch());
    onAlert([](QMessageBox& box) { click(box, "Quit"); });
    QTimer::singleShot(0, &window(), [this] { trigger("reallyQuitAction"); });
    desktop->run();
}

TEST_F(LaunchAndQuitTest, EachFurtherQuitCommandBringsTheOneSheetForward) {
    ASSERT_TRUE(launch());
    const auto sheets = [] {
        QList<QMessageBox*> found;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* box = qobject_cast<QMessageBox*>(widget);
            if (box != nullptr && box->isVisible()) found << box;
        }
        return found;
    };
    for (int i = 0; i < 3; ++i) desktop->controller().reallyQuit();
    ASSERT_EQ(sheets().size(), 1);
    click(*sheets().first(), "Cancel");
    waitUntil([&sheets] { return sheets().isEmpty(); });
    desktop->controller().reallyQuit();
    EXPECT_EQ(sheets().size(), 1) << "answered, it can be asked again";
}

TEST_F(LaunchAndQuitTest, NoKeyAfterTheLaunchFindsAButtonThatShreds) {
    const std::string page = addSafariCache();
    set("ConfirmShredding", false);
    ASSERT_TRUE(launch());
    window().activateWindow();
    for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
    EXPECT_EQ(window().focusWidget(), &window());
    for (const int key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        QWidget* target = QApplication::focusWidget() ? QApplication::focusWidget() : &window();
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier);
        QCoreApplication::sendEvent(target, &press);
        QCoreApplication::sendEvent(target, &release);
    }
    desktop->controller().run().waitForWorker();
    EXPECT_TRUE(std::filesystem::exists(page));
}

TEST_F(LaunchAndQuitTest, ClosingTheWindowIsTheQuitCommand) {
    set("BrowserWatch", false);
    ASSERT_TRUE(launch());
    QTimer::singleShot(0, &window(), [this] { window().close(); });
    desktop->run();
}

TEST_F(LaunchAndQuitTest, QuittingWhileAWorkerShredsWaitsForTheEndOfTheRun) {
    const std::string page = addSafariCache();
    set("ConfirmShredding", false);
    set("ActivityLog", true);
    draws.hold();
    ASSERT_TRUE(launch());
    trigger("shredAndNothingAction");
    ASSERT_EQ(desktop->controller().run().threadCount(), 1);

    desktop->application().terminate();
    EXPECT_FALSE(desktop->controller().browserWatch().isWatching());
    EXPECT_EQ(desktop->mainWindow().message(), "Dorvanel quits when shredding has ended.");
    for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
    EXPECT_TRUE(std::filesystem::exists(home.path() / "Library/Caches"));
    EXPECT_THAT(LogCapture::linesNow(), Not(Contains("Dorvanel Completed Successfully")));

    QTimer::singleShot(0, &window(), [this] { draws.release(); });
    desktop->run();
    EXPECT_THAT(LogCapture::linesNow(), Contains("Dorvanel Completed Successfully"));
    EXPECT_FALSE(std::filesystem::exists(page));
}

TEST_F(LaunchAndQuitTest, WhileFilesOfSomeMegabytesAreShreddedTheWindowIsPaintedAndQuitIsTaken) {
    const std::string folder = home / "Library/Caches/Safari";
    for (int i = 0; i < 12; ++i) {
        writeFile(folder + "/" + std::to_string(i), std::string(2 << 20, 'x'));
    }
    set("ConfirmShredding", false);
    set("ActivityLog", true);
    clock.step = std::chrono::milliseconds(20);  // progress is due at each look
    draws.hold(10);
    ASSERT_TRUE(launch());
    trigger("shredAndNothingAction");
    auto* bar = find<QProgressBar>("shreddingProgress");
    waitUntil([bar] { return bar->value() > 0; });  // the worker is in the midst of it

    onAlert([](QMessageBox& box) { click(box, "Quit"); });
    trigger("reallyQuitAction");
    waitUntil([this] { return desktop->controller().run().appNeedsToTerminate() == 1; });
    EXPECT_FALSE(desktop->controller().browserWatch().isWatching());
    EXPECT_EQ(desktop->controller().run().threadCount(), 1);

    int painted = 0;
    QTimer paint;
    QObject::connect(&paint, &QTimer::timeout, [this, &painted] {
        window().repaint();
        if (++painted == 1) draws.release();  // from now on the worker runs beside this loop
    });
    paint.start(1);
    desktop->run();  // returns when the program has quit
    EXPECT_GT(painted, 0);
    EXPECT_THAT(LogCapture::linesNow(), Contains("Dorvanel Completed Successfully"));
    EXPECT_FALSE(std::filesystem::exists(folder));
}

TEST_F(LaunchAndQuitTest, QuittingWhileTheConfirmationIsOpenQuitsAtOnce) {
    const std::string page = addSafariCache();
    set("ActivityLog", true);
    ASSERT_TRUE(launch());
    onAlert([this](QMessageBox&) { desktop->application().terminate(); });
    QTimer::singleShot(0, &window(), [this] { trigger("shredAndNothingAction"); });
    desktop->run();
    EXPECT_TRUE(std::filesystem::exists(page));
    EXPECT_THAT(LogCapture::linesNow(), ElementsAre("Dorvanel Initiated", ""))
        << "nobody answered the alert";
}

TEST_F(LaunchAndQuitTest, TheTimersStandStillBehindTheConfirmation) {
    addSafariCache();
    set("ActivityLog", true);
    ASSERT_TRUE(launch());
    bool held = false;
    onAlert([this, &held](QMessageBox& box) {
        held = desktop->runLoop().isHeld();
        // A second one does nothing and writes nothing.
        desktop->controller().shredAndNothing();
        click(box, "No");
    });
    trigger("shredAndNothingAction");
    EXPECT_TRUE(held);
    EXPECT_FALSE(desktop->runLoop().isHeld());
    EXPECT_THAT(LogCapture::linesNow(),
                ElementsAre("Dorvanel Initiated", "",
                            "User selected NO in Confirm dialog - Dorvanel Cancelled"));
    EXPECT_EQ(desktop->mainWindow().message(), "Cancelled. Nothing was shredded.");
}

TEST_F(LaunchAndQuitTest, TheConfirmationSaysWhatIsShreddedAndItsDefaultIsNo) {
    ASSERT_TRUE(launch());
    onAlert([](QMessageBox& box) {
        EXPECT_EQ(box.text(), "Dorvanel Confirmation");
        EXPECT_EQ(box.informativeText(),
                  "Are you sure you want to shred these items: Browser Cache, Mail Trash ?");
        EXPECT_EQ(titlesOf(box), QStringList({"No", "Yes"}));
        EXPECT_EQ(box.defaultButton()->text(), "No");
        EXPECT_EQ(box.escapeButton()->text(), "No");
        box.close();
    });
    trigger("shredAndNothingAction");
    EXPECT_EQ(desktop->mainWindow().message(), "Cancelled. Nothing was shredded.");
}

TEST_F(LaunchAndQuitTest, AFileOpenedThroughTheSystemIsAcknowledgedAndNothingHappensToIt) {
    const std::string file = home / "letter.txt";
    writeFile(file, "dear");
    ASSERT_TRUE(launch());
    EXPECT_TRUE(desktop->controller().applicationOpenFile(file));
    desktop->instanceHandlers().open({file});
    EXPECT_EQ(readFile(file), "dear");
    EXPECT_EQ(desktop->controller().run().threadCount(), 0);
}

TEST_F(LaunchAndQuitTest, ABackgroundElementStartsHidden) {
    bundle.values["NSUIElement"] = "1";
    ASSERT_TRUE(launch());
    EXPECT_FALSE(window().isVisible());
    desktop->instanceHandlers().activate();  // as a second launch does
    EXPECT_TRUE(window().isVisible());
}

TEST_F(LaunchAndQuitTest, TheBundleThatIsShippedShowsTheWindow) {
    const BundleInformationFile shipped(resources + "/Info.plist");
    EXPECT_EQ(shipped.objectForInfoDictionaryKey("NSUIElement"), "0");
}

TEST_F(LaunchAndQuitTest, ItemsOfTheLaunchAreShreddedAtOnce) {
    const std::string file = home / "old.txt";
    writeFile(file, "secret");
    ASSERT_TRUE(launch({file}));
    waitUntil([this] { return desktop->controller().run().threadCount() == 0; });
    desktop->controller().run().waitForWorker();
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(LaunchAndQuitTest, TheHomeFolderIsNoItemOfALaunch) {
    const std::string page = addSafariCache();
    ASSERT_TRUE(launch({home.path().native()}));
    EXPECT_EQ(desktop->controller().run().threadCount(), 0);
    EXPECT_TRUE(std::filesystem::exists(page));
    EXPECT_TRUE(desktop->mainWindow().failures().message().startsWith("Nothing was shredded: "));
}

TEST_F(LaunchAndQuitTest, WithoutAnInterfaceFileTheLogSaysSoAndNothingStarts) {
    resources = home / "nowhere";
    EXPECT_FALSE(launch());
    EXPECT_THAT(log.lines, ElementsAre("Failed to load MainMenu.nib"));
}

TEST_F(LaunchAndQuitTest, QuittingSavesThePreferences) {
    ASSERT_TRUE(launch());
    preferences->revertToDefault();
    set("ShredHistory", true);
    set("BrowserWatch", false);
    QTimer::singleShot(0, &window(), [this] { trigger("reallyQuitAction"); });
    desktop->run();
    const auto stored = openUserDefaults(userDefaultsPath(), [](auto&) {});
    EXPECT_TRUE(stored->boolForKey("ShredHistory"));
}

TEST_F(LaunchAndQuitTest, TheFrameOfTheWindowIsKeptUnderItsName) {
    ASSERT_TRUE(launch());
    window().resize(640, 480);
    window().hide();
    const auto stored = openUserDefaults(userDefaultsPath(), [](auto&) {});
    const auto frame = stored->arrayForKey("NSWindow Frame My Window");
    ASSERT_TRUE(frame && frame->size() == 4);
    EXPECT_EQ((*frame)[2], "640");
    EXPECT_EQ((*frame)[3], "480");
    desktop.reset();
    ASSERT_TRUE(launch());
    EXPECT_EQ(window().size(), QSize(640, 480));
}

}  // namespace
}  // namespace dorvanel::test
