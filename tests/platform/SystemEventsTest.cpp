// SPDX-License-Identifier: MIT
#include "platform/SystemEvents.h"

#include <gtest/gtest.h>

#include "support/PrivateBus.h"

namespace dorvanel::test {
namespace {

using namespace std::chrono_literals;
using namespace platform;

/// On a private bus only: nothing here can reach the machine's own login manager.
class SystemEventsTest : public ::testing::Test {
  protected:
    PrivateBus bus;
    std::unique_ptr<SystemEvents> events = makeSystemEvents();
};

TEST_F(SystemEventsTest, LoggingOutTerminatesTheCallersSession) {
    bus.startLoginManager();
    EXPECT_EQ(events->send(kAEReallyLogOut), noErr);
    EXPECT_EQ(bus.calls(), "TerminateSession \"auto\"\n");
}

TEST_F(SystemEventsTest, ShuttingDownPowersOffWithoutAskingForAPassword) {
    bus.startLoginManager();
    EXPECT_EQ(events->send(kAEShutDown), noErr);
    EXPECT_EQ(bus.calls(), "PowerOff False\n");
}

TEST_F(SystemEventsTest, RestartingRebootsWithoutAskingForAPassword) {
    bus.startLoginManager();
    EXPECT_EQ(events->send(kAERestart), noErr);
    EXPECT_EQ(bus.calls(), "Reboot False\n");
}

TEST_F(SystemEventsTest, ARequestThatIsRefusedHasACode) {
    bus.startLoginManager();
    bus.setMethod("PowerOff", "b",
                  "raise dbus.exceptions.DBusException('not you', "
                  "name='org.freedesktop.DBus.Error.AccessDenied')");
    EXPECT_EQ(events->send(kAEShutDown), errAEEventNotHandled);
}

TEST_F(SystemEventsTest, ASessionThatIsNotThereHasACode) {
    bus.startLoginManager();
    bus.setMethod("TerminateSession", "s",
                  "raise dbus.exceptions.DBusException('no session', "
                  "name='org.freedesktop.login1.NoSuchSession')");
    EXPECT_EQ(events->send(kAEReallyLogOut), errAEEventNotHandled);
}

TEST_F(SystemEventsTest, AnAnswerThatDoesNotComeIsATimeOut) {
    bus.startLoginManager();
    bus.setMethod("Reboot", "b", "import time; time.sleep(3600)");
    EXPECT_EQ(makeSystemEvents(50ms)->send(kAERestart), errAETimeout);
}

TEST_F(SystemEventsTest, ABusWithoutLoginManagerHasACode) {
    EXPECT_EQ(events->send(kAEShutDown), connectionInvalid);
}

TEST_F(SystemEventsTest, AnyOtherEventIsNotSent) {
    bus.startLoginManager();
    EXPECT_EQ(events->send(fourCharCode("quit")), errAEEventNotHandled);
    EXPECT_EQ(bus.calls(), "");
}

TEST(NoSystemBusTest, HasACode) {
    const TemporaryFolder folder;
    const EnvironmentVariable address("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + folder / "none");
    const auto events = makeSystemEvents();
    EXPECT_EQ(events->send(kAEReallyLogOut), connectionInvalid);
    EXPECT_EQ(events->send(kAEShutDown), connectionInvalid);
    EXPECT_EQ(events->send(kAERestart), connectionInvalid);
}

}  // namespace
}  // namespace dorvanel::test
