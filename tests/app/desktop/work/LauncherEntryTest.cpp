// SPDX-License-Identifier: MIT
#include "app/desktop/work/LauncherEntry.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <memory>

#include "app/desktop/DesktopFixture.h"
#include "app/desktop/work/Dock.h"
#include "support/PrivateBus.h"

namespace dorvanel::test {

namespace {

QDBusConnection connectionTo(const char* name) {
    return QDBusConnection::connectToBus(QString::fromLocal8Bit(qgetenv("DBUS_SYSTEM_BUS_ADDRESS")),
                                         QLatin1String(name));
}

class LauncherEntryTest : public DesktopFixture {
  protected:
    ~LauncherEntryTest() override {
        QDBusConnection::disconnectFromBus(QStringLiteral("program"));
        QDBusConnection::disconnectFromBus(QStringLiteral("dock"));
    }
    void waitForUpdates(std::size_t count) {
        waitUntil([&] { return dock.updates.size() >= count; });
    }
    double progress(std::size_t update) {
        return dock.updates.at(update).second.value("progress").toDouble();
    }
    bool isShown(std::size_t update) {
        return dock.updates.at(update).second.value("progress-visible").toBool();
    }

    PrivateBus bus;
    Dock dock{connectionTo("dock")};
};

TEST_F(LauncherEntryTest, TellsTheDockHowFarItIsAndTakesThatAway) {
    ASSERT_TRUE(dock.isListening);
    {
        desktop::LauncherEntry entry(connectionTo("program"));
        entry.show({.percent = 41});
        waitForUpdates(1);
        EXPECT_EQ(dock.updates[0].first, "application://dorvanel-x.desktop");
        EXPECT_DOUBLE_EQ(progress(0), 0.41);
        EXPECT_TRUE(isShown(0));
        EXPECT_FALSE(dock.updates[0].second.value("urgent").toBool());
        entry.show({.urgent = true});
        waitForUpdates(2);
        EXPECT_FALSE(isShown(1));
        EXPECT_TRUE(dock.updates[1].second.value("urgent").toBool());
        entry.show({.percent = 50});
        waitForUpdates(3);
    }
    waitForUpdates(4);
    EXPECT_FALSE(isShown(3)) << "with the program its progress goes";
}

TEST_F(LauncherEntryTest, WhatComesCloseTogetherIsTheFirstAndTheLast) {
    desktop::LauncherEntry entry(connectionTo("program"));
    for (int percent = 1; percent <= 100; ++percent) entry.show({.percent = percent});
    waitForUpdates(2);
    EXPECT_EQ(dock.updates.size(), 2U);
    EXPECT_DOUBLE_EQ(progress(0), 0.01);
    EXPECT_DOUBLE_EQ(progress(1), 1.0);
}

TEST_F(LauncherEntryTest, AShreddingIsShownWhileItIsAtWork) {
    const std::string file = home / "a";
    writeFile(file, std::string(4 * 131072, 'x'));
    desktop::LauncherEntry entry(connectionTo("program"));
    launcher = &entry;
    ASSERT_TRUE(launch());
    draws.hold(1);
    ASSERT_TRUE(desktop->controller().shredFiles(holdAll(*system, {file})));
    waitForUpdates(1);
    EXPECT_DOUBLE_EQ(progress(0), 0.25);
    EXPECT_TRUE(isShown(0));
    draws.release();
    waitForEnd();
    waitUntil([this] { return !isShown(dock.updates.size() - 1); });
    desktop.reset();
}

}  // namespace
}  // namespace dorvanel::test
