// SPDX-License-Identifier: MIT
#include "platform/FolderLock.h"

#include <gtest/gtest.h>

#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

using platform::FolderLock;

TEST(FolderLock, IsTakenWithoutWaitingOnlyWhereItIsFree) {
    const TemporaryFolder folder;
    {
        const auto first = FolderLock::takeIfFree(folder.path());
        ASSERT_TRUE(first.ok());
        ASSERT_TRUE(first.value().has_value());
        EXPECT_TRUE(first.value()->isHeld());
        const auto second = FolderLock::takeIfFree(folder.path());
        ASSERT_TRUE(second.ok());
        EXPECT_FALSE(second.value().has_value());
    }
    const auto third = FolderLock::takeIfFree(folder.path());
    EXPECT_TRUE(third.ok() && third.value().has_value());
}

TEST(FolderLock, OfAFolderThatIsNotThereIsAnError) {
    const TemporaryFolder folder;
    EXPECT_FALSE(FolderLock::takeIfFree(folder / "missing").ok());
}

}  // namespace
}  // namespace dorvanel::test
