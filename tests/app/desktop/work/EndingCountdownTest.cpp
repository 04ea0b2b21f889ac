// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <QDialog>
#include <filesystem>
#include <thread>

#include "app/desktop/DesktopFixture.h"

namespace dorvanel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct EndingCase {
    const char* action;
    const char* event;
    const char* text;
    const char* button;
    const char* struck;
};

constexpr EndingCase endings[] = {
    {"shredAndLogoutAction", "event rlgo", "Logging out in 10 s…", "&Log Out Now",
     "You are not logged out."},
    {"shredAndShutdownAction", "event shut", "Shutting down in 10 s…", "&Shut Down Now",
     "The computer is not shut down."},
    {"shredAndRestartAction", "event rest", "Restarting in 10 s…", "&Restart Now",
     "The computer is not restarted."},
};

/// The countdown between a run and its ending, on the test's clock.
class EndingCountdownTest : public DesktopFixture {
  protected:
    EndingCountdownTest() {
        set("ConfirmShredding", false);
        hasStatusArea = true;
        countdown = std::chrono::seconds(10);
    }
    QDialog* dialog() {
        for (auto* found : window().findChildren<QDialog*>("endingCountdown")) {
            if (found->isVisible()) return found;
        }
        return nullptr;
    }
    QString text() { return dialog()->findChild<QLabel*>("countdownText")->text(); }
    QPushButton* button(const char* name) { return dialog()->findChild<QPushButton*>(name); }
    QString message() { return desktop->mainWindow().message(); }
    /// Runs until the countdown is up.
    void countDown(const char* action) {
        page = addSafariCache();
        trigger(action);
        waitUntil([this] { return dialog() != nullptr; });
        EXPECT_FALSE(std::filesystem::exists(page)) << "the shredding is over";
        EXPECT_THAT(calls.calls(), IsEmpty());
    }

    std::string page;
};

TEST_F(EndingCountdownTest, WhoWaitsLetsEachEndingCome) {
    ASSERT_TRUE(launch());
    for (const EndingCase& ending : endings) {
        countDown(ending.action);
        EXPECT_EQ(text(), ending.text);
        EXPECT_EQ(message(), ending.text);
        EXPECT_EQ(button("endNowButton")->text(), ending.button);
        clock.advance(std::chrono::seconds(7));
        waitUntil([this] { return text().contains("3 s"); });
        EXPECT_THAT(calls.calls(), IsEmpty());
        clock.advance(std::chrono::seconds(4));
        waitForEnd();
        EXPECT_THAT(calls.calls(), ElementsAre(ending.event));
        EXPECT_EQ(dialog(), nullptr);
        calls.clear();
    }
}

TEST_F(EndingCountdownTest, NowEndsAtOnce) {
    ASSERT_TRUE(launch());
    for (const EndingCase& ending : endings) {
        countDown(ending.action);
        button("endNowButton")->click();
        waitForEnd();
        EXPECT_THAT(calls.calls(), ElementsAre(ending.event));
        calls.clear();
    }
}

TEST_F(EndingCountdownTest, CancelStrikesEachEndingAndSaysSo) {
    ASSERT_TRUE(launch());
    for (const EndingCase& ending : endings) {
        countDown(ending.action);
        EXPECT_TRUE(button("cancelEndingButton")->isDefault());
        EXPECT_EQ(dialog()->focusWidget(), button("cancelEndingButton"));
        button("cancelEndingButton")->click();
        waitForEnd();
        EXPECT_THAT(calls.calls(), IsEmpty());
        EXPECT_TRUE(message().startsWith("Shredded: 1 file")) << message().toStdString();
        EXPECT_TRUE(message().endsWith(ending.struck)) << message().toStdString();
        EXPECT_EQ(dialog(), nullptr);
    }
}

TEST_F(EndingCountdownTest, EscapeAndTheCloseBoxAreCancel) {
    ASSERT_TRUE(launch());
    countDown("shredAndLogoutAction");
    dialog()->reject();
    waitForEnd();
    EXPECT_THAT(calls.calls(), IsEmpty());
    countDown("shredAndLogoutAction");
    dialog()->close();
    waitForEnd();
    EXPECT_THAT(calls.calls(), IsEmpty());
}

TEST_F(EndingCountdownTest, AQuitRequestStrikesIt) {
    ASSERT_TRUE(launch());
    countDown("shredAndShutdownAction");
    desktop->application().terminate();
    desktop->controller().run().waitForWorker();
    settle();
    EXPECT_THAT(calls.calls(), IsEmpty());
    EXPECT_EQ(dialog(), nullptr);
}

TEST_F(EndingCountdownTest, ASignalStrikesItOnAnyThread) {
    ASSERT_TRUE(launch());
    countDown("shredAndRestartAction");
    std::thread([this] { desktop->askToQuit(); }).join();
    desktop->controller().run().waitForWorker();
    settle();
    EXPECT_THAT(calls.calls(), IsEmpty());
}

TEST_F(EndingCountdownTest, AProgramThatGoesStrikesIt) {
    ASSERT_TRUE(launch());
    countDown("shredAndRestartAction");
    desktop.reset();
    EXPECT_THAT(calls.calls(), IsEmpty());
}

TEST_F(EndingCountdownTest, AQuitRequestBeforeItLetsNoneBegin) {
    addSafariCache();
    ASSERT_TRUE(launch());
    draws.hold();
    trigger("shredAndShutdownAction");
    std::thread([this] { desktop->controller().giveUp(); }).join();
    draws.release();
    waitForEnd();
    EXPECT_THAT(calls.calls(), IsEmpty());
    EXPECT_EQ(dialog(), nullptr);
}

TEST_F(EndingCountdownTest, AHiddenWindowComesUpForIt) {
    set("HideAfterShredding", true);
    ASSERT_TRUE(launch());
    desktop->application().hide();
    ASSERT_FALSE(window().isVisible());
    countDown("shredAndLogoutAction");
    EXPECT_TRUE(window().isVisible());
    button("cancelEndingButton")->click();
    waitForEnd();
}

TEST_F(EndingCountdownTest, ARequestMeanwhileIsRefusedWithoutWaiting) {
    ASSERT_TRUE(launch());
    countDown("shredAndLogoutAction");
    for (const char* action : {"shred", "shred-and-restart"}) {
        desktop->instanceHandlers().activateAction(action);
        EXPECT_EQ(message(), "Not started: a run is still in progress.");
    }
    EXPECT_FALSE(desktop->controller().shredFiles({}));
    EXPECT_NE(dialog(), nullptr);
    button("cancelEndingButton")->click();
    waitForEnd();
    EXPECT_THAT(calls.calls(), IsEmpty());
}

TEST_F(EndingCountdownTest, AfterAStrikeTheNextCountsDownAgain) {
    ASSERT_TRUE(launch());
    countDown("shredAndLogoutAction");
    button("cancelEndingButton")->click();
    waitForEnd();
    countDown("shredAndRestartAction");
    EXPECT_EQ(text(), "Restarting in 10 s…");
    button("endNowButton")->click();
    waitForEnd();
    EXPECT_THAT(calls.calls(), ElementsAre("event rest"));
}

}  // namespace
}  // namespace dorvanel::test
