// SPDX-License-Identifier: MIT
#include "app/desktop/StatusArea.h"

#include <gtest/gtest.h>

#include <QDBusConnection>

namespace dorvanel::test {
namespace {

TEST(StatusAreaTest, AProgramThatIsDrawnOnNoScreenHasNoTrayThere) {
    if (QDBusConnection::sessionBus().isConnected()) GTEST_SKIP() << "the session may have one";
    EXPECT_FALSE(desktop::StatusArea().isThere());
}

}  // namespace
}  // namespace dorvanel::test
