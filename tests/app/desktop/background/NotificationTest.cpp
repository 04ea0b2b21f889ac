// SPDX-License-Identifier: MIT
#include <QDBusMessage>

#include "app/desktop/DesktopFixture.h"
#include "app/desktop/background/RunNotifier.h"
#include "app/desktop/background/SessionServices.h"

namespace dorvanel::test {
namespace {

using desktop::RunNotifier;

/// What the desktop is told of runs.
class RunNotifierTest : public ::testing::Test {
  protected:
    RunNotifier& make() {
        notifier = std::make_unique<RunNotifier>(services.program,
                                                 [this](quint64 run) { shownRuns << run; });
        return *notifier;
    }
    const FakeNotifications::Notification& waitForOne(qsizetype number = 1) {
        waitUntil([this, number] { return services.notifications.shown.size() >= number; });
        // The answer with the notification's number is on its way, before that to a later question.
        QCoreApplication::processEvents();
        QDBusMessage question = QDBusMessage::createMethodCall("org.freedesktop.DBus", "/",
                                                               "org.freedesktop.DBus", "GetId");
        services.program.call(question);
        for (int i = 0; i < 20; ++i) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
        }
        return services.notifications.shown.last();
    }

    SessionServices services;
    QList<quint64> shownRuns;
    std::unique_ptr<RunNotifier> notifier;
};

TEST_F(RunNotifierTest, AGoodEndIsToldQuietly) {
    ASSERT_TRUE(services.haveNotifications());
    make().tell(1, "Shredded: 3 files, 12 bytes overwritten.", {});
    const auto& shown = waitForOne();
    EXPECT_EQ(shown.summary, "Shredding is done");
    EXPECT_EQ(shown.body, "Shredded: 3 files, 12 bytes overwritten.");
    EXPECT_EQ(shown.hints["urgency"].value<uchar>(), 1);
    EXPECT_FALSE(shown.hints.contains("resident"));
}

TEST_F(RunNotifierTest, AFailureIsUrgentAndStays) {
    ASSERT_TRUE(services.haveNotifications());
    make().tell(1, "Shredded: 3 files, 12 bytes overwritten.", "1 item is still there.");
    const auto& shown = waitForOne();
    EXPECT_EQ(shown.summary, "Shredding did not go as it should");
    EXPECT_TRUE(shown.body.startsWith("1 item is still there."));
    EXPECT_EQ(shown.hints["urgency"].value<uchar>(), 2);
    EXPECT_TRUE(shown.hints["resident"].toBool());
    EXPECT_EQ(shown.actions, QStringList({"details", "Details"}));
}

TEST_F(RunNotifierTest, TheNextTakesThePlaceOfTheLast) {
    ASSERT_TRUE(services.haveNotifications());
    make().tell(1, "one", {});
    EXPECT_EQ(waitForOne().replaced, 0U);
    notifier->tell(2, "two", {});
    EXPECT_EQ(waitForOne(2).replaced, 41U);
    emit services.notifications.NotificationClosed(41, 2);
    waitForOne(2);
    notifier->tell(3, "three", {});
    EXPECT_EQ(waitForOne(3).replaced, 0U) << "one that was closed is not replaced";
}

TEST_F(RunNotifierTest, ItsActionLeadsToTheRunAndThoseOfOthersDoNot) {
    ASSERT_TRUE(services.haveNotifications());
    make().tell(7, "seven", {});
    waitForOne();
    emit services.notifications.ActionInvoked(99, "details");
    emit services.notifications.ActionInvoked(41, "default");
    emit services.notifications.ActionInvoked(41, "details");
    waitUntil([this] { return !shownRuns.isEmpty(); });
    EXPECT_EQ(shownRuns, QList<quint64>{7});
}

TEST_F(RunNotifierTest, WithoutAServiceNothingHappens) {
    make().tell(1, "one", {});
    RunNotifier alone(QDBusConnection("no such connection"), [](quint64) {});
    alone.tell(1, "one", "failure");
    for (int i = 0; i < 20; ++i) QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    EXPECT_TRUE(services.notifications.shown.isEmpty());
}

/// The same of the whole program.
class NotificationTest : public DesktopFixture {
  protected:
    NotificationTest() {
        sessionBus = services.program;
        set("ConfirmShredding", false);
    }
    void shredWhileHidden() {
        trigger("hideAction");
        desktop->controller().shredAndNothing();
        waitForEnd();
    }
    SessionServices services;
};

TEST_F(NotificationTest, ARunThatNobodyWatchesIsToldWithoutAName) {
    ASSERT_TRUE(services.haveNotifications());
    hasStatusArea = true;
    addSafariCache();
    ASSERT_TRUE(launch());
    shredWhileHidden();
    waitUntil([this] { return !services.notifications.shown.isEmpty(); });
    const auto shown = services.notifications.shown.last();
    EXPECT_TRUE(shown.body.startsWith("Shredded: 1 file, 6 bytes")) << shown.body.toStdString();
    EXPECT_FALSE((shown.summary + shown.body).contains("page.cache"));
    EXPECT_FALSE((shown.summary + shown.body).contains('/'));
}

TEST_F(NotificationTest, ItsDetailsBringTheHiddenWindowAndTheRun) {
    ASSERT_TRUE(services.haveNotifications());
    hasStatusArea = true;
    addSafariCache();
    ASSERT_TRUE(launch());
    shredWhileHidden();
    waitUntil([this] { return !services.notifications.shown.isEmpty(); });
    for (int i = 0; i < 20; ++i) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
    }
    emit services.notifications.ActionInvoked(41, "details");
    waitUntil([this] { return window().isVisible(); });
    EXPECT_NE(window().findChild<QDialog*>("runDetails"), nullptr);
}

TEST_F(NotificationTest, ARunThatIsWatchedIsNotTold) {
    ASSERT_TRUE(services.haveNotifications());
    addSafariCache();
    ASSERT_TRUE(launch());
    window().activateWindow();
    waitUntil([] { return QApplication::activeWindow() != nullptr; });
    desktop->controller().shredAndNothing();
    waitForEnd();
    for (int i = 0; i < 20; ++i) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
    }
    EXPECT_TRUE(services.notifications.shown.isEmpty());
}

TEST_F(NotificationTest, WhereNothingWasShreddedNothingIsTold) {
    ASSERT_TRUE(services.haveNotifications());
    hasStatusArea = true;
    ASSERT_TRUE(launch());
    shredWhileHidden();
    for (int i = 0; i < 20; ++i) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
    }
    EXPECT_TRUE(services.notifications.shown.isEmpty());
}

}  // namespace
}  // namespace dorvanel::test
