// SPDX-License-Identifier: MIT
#include <csignal>
#include <filesystem>
#include <thread>

#include "DesktopFixture.h"
#include "platform/QuitSignals.h"

namespace dorvanel::test {
namespace {

using ::testing::Contains;
using ::testing::IsEmpty;
using ::testing::Not;

/// A quit request at any moment: nothing that has not begun is shredded, no session ends, and the
/// program does.
class QuitRequestTest : public DesktopFixture {
  protected:
    QuitRequestTest() {
        set("ActivityLog", true);
        set("ConfirmShredding", false);
        make();
    }
    /// Runs the program to its end; `onLaunch` is called once it has launched.
    void runProgram(const std::string& action, std::function<void()> onLaunch = {}) {
        auto* timer = new QTimer(&context_);
        QObject::connect(timer, &QTimer::timeout, [this, timer, onLaunch = std::move(onLaunch)] {
            if (desktop->documents().empty()) return;
            timer->stop();
            if (onLaunch) onLaunch();
        });
        desktop->instanceHandlers().open({home / "a sign that the launch is through"});
        timer->start(1);
        EXPECT_TRUE(desktop->runFromLaunch({}, action));
    }
    /// Quits as a signal does: another thread asks.
    void quitByAnotherThread() {
        std::thread([this] { desktop->askToQuit(); }).join();
    }
    /// Calls `quit` in the midst of the wait for an application that does not go.
    void onWait(std::function<void()> quit) {
        processes.add("Safari", "APPL", "sfri");
        processes.onWalk = [this, quit = std::move(quit)] {
            if (processes.walks == 4) QTimer::singleShot(0, &context_, quit);
        };
    }
    void expectNothingHappened(const std::string& page) {
        EXPECT_TRUE(std::filesystem::exists(page));
        EXPECT_THAT(calls.calls(), IsEmpty()) << "no session has ended";
        EXPECT_THAT(LogCapture::linesNow(), Not(Contains("Start Shredding Now")));
        EXPECT_LT(processes.walks, 20) << "the wait has ended early";
    }

  private:
    QObject context_;
};

TEST_F(QuitRequestTest, ASignalDuringTheWaitForApplicationsGivesTheRequestUp) {
    const std::string page = addSafariCache();
    const auto caught = platform::catchQuitSignals([this] { desktop->askToQuit(); });
    onWait([] { std::raise(SIGTERM); });
    runProgram("shred-and-shut-down");
    expectNothingHappened(page);
}

TEST_F(QuitRequestTest, TheQuitSheetDuringTheWaitGivesTheRequestUp) {
    const std::string page = addSafariCache();
    onWait([this] {
        onAlert([](QMessageBox& box) { click(box, "Quit"); });
        desktop->controller().reallyQuit();  // as the icon's menu, the window's and its close box
    });
    runProgram("shred-and-restart");
    expectNothingHappened(page);
}

TEST_F(QuitRequestTest, TheSessionsQuitRequestDuringTheWaitGivesTheRequestUp) {
    const std::string page = addSafariCache();
    onWait([] {
        QEvent quit(QEvent::Quit);
        QCoreApplication::sendEvent(qApp, &quit);
    });
    runProgram("shred-and-log-out");
    expectNothingHappened(page);
}

TEST_F(QuitRequestTest, AQuitThatIsTakenBackDuringTheWaitLeavesTheRequest) {
    const std::string page = addSafariCache();
    onWait([this] {
        onAlert([this](QMessageBox& box) {
            click(box, "Cancel");
            processes.processes.clear();
        });
        desktop->controller().reallyQuit();
    });
    QTimer quit;
    QObject::connect(&quit, &QTimer::timeout, [&] {
        if (calls.calls().empty()) return;
        quit.stop();
        desktop->application().terminate();
    });
    quit.start(1);
    runProgram("shred-and-shut-down");
    EXPECT_FALSE(std::filesystem::exists(page));
    EXPECT_THAT(calls.calls(), ::testing::ElementsAre("event shut"));
}

TEST_F(QuitRequestTest, ASignalAtTheLaunchAlertEndsTheProgram) {
    for (const char* name : {"one", "two"}) {
        std::filesystem::create_directories(home.path() / "Library/Mozilla/Profiles" / name);
    }
    const std::string page = addSafariCache();
    const auto caught = platform::catchQuitSignals([this] { desktop->askToQuit(); });
    bool asked = false;
    onAlert([&asked](QMessageBox& box) {
        asked = true;
        EXPECT_EQ(box.text(), "Multiple Mozilla Profiles");
        std::raise(SIGTERM);
    });
    EXPECT_TRUE(desktop->runFromLaunch({}, "shred"));
    EXPECT_TRUE(asked);
    EXPECT_TRUE(std::filesystem::exists(page)) << "nor was the action performed";
}

TEST_F(QuitRequestTest, ASignalAtTheConfirmationOfTheLaunchersActionEndsTheProgram) {
    const std::string page = addSafariCache();
    set("ConfirmShredding", true);
    const auto caught = platform::catchQuitSignals([this] { desktop->askToQuit(); });
    onAlert([](QMessageBox&) { std::raise(SIGTERM); });
    EXPECT_TRUE(desktop->runFromLaunch({}, "shred"));
    EXPECT_TRUE(std::filesystem::exists(page));
    EXPECT_THAT(LogCapture::linesNow(), Not(Contains("Start Shredding Now")));
}

TEST_F(QuitRequestTest, ASignalAtTheQuestionAboutDroppedFilesAnswersNo) {
    const std::string file = home / "letter.txt";
    writeFile(file, "dear");
    onQuestion([this](QDialog&) { quitByAnotherThread(); });
    runProgram("", [this, file] { desktop->filesDropped({file}); });
    EXPECT_EQ(readFile(file), "dear");
}

TEST_F(QuitRequestTest, AYesThatComesAfterTheSignalIsNoneAnyMore) {
    const std::string page = addSafariCache();
    set("ConfirmShredding", true);
    onAlert([this](QMessageBox& box) {
        quitByAnotherThread();
        click(box, "Yes");
    });
    EXPECT_TRUE(desktop->runFromLaunch({}, "shred-and-shut-down"));
    expectNothingHappened(page);
}

TEST_F(QuitRequestTest, ASignalBeforeTheLaunchShredsNothingOfIt) {
    const std::string file = home / "old.txt";
    writeFile(file, "secret");
    quitByAnotherThread();
    EXPECT_TRUE(desktop->runFromLaunch({file}, "shred"));
    EXPECT_EQ(readFile(file), "secret");
}

TEST_F(QuitRequestTest, AStopBeforeTheLoopBeginsEndsItAtOnceAndOnlyThatOnce) {
    desktop::QtRunLoop loop;
    loop.stop();
    loop.run();
    int beats = 0;
    const auto timer = loop.scheduleRepeatingTimer(std::chrono::milliseconds(1), [&](ui::Timer&) {
        if (++beats == 3) loop.stop();
    });
    loop.run();
    EXPECT_EQ(beats, 3);
}

TEST_F(QuitRequestTest, ASignalWhileTheWorkerShredsStrikesTheShutdownAndLetsTheWorkEnd) {
    const std::string page = addSafariCache();
    bool asked = false;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        if (desktop->documents().empty()) return;  // not launched yet
        if (!asked && desktop->controller().activity() == Activity::shredding) {
            asked = true;
            quitByAnotherThread();
        }
        if (desktop->mainWindow().message() == "Dorvanel quits when shredding has ended.") {
            draws.release();
        }
    });
    draws.hold();
    look.start(1);
    runProgram("shred-and-shut-down");
    EXPECT_FALSE(std::filesystem::exists(page));
    EXPECT_THAT(calls.calls(), IsEmpty());
}

}  // namespace
}  // namespace dorvanel::test
