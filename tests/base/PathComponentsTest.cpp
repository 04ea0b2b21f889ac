// SPDX-License-Identifier: MIT
#include "base/PathComponents.h"

#include <gtest/gtest.h>

namespace dorvanel::test {
namespace {

TEST(PathComponentsTest, ExactlyOneSlashStandsBetweenComponents) {
    EXPECT_EQ(appendingPathComponent("/a", "b"), "/a/b");
    EXPECT_EQ(appendingPathComponent("/a/", "b"), "/a/b");
    EXPECT_EQ(appendingPathComponent("/a//", "//b"), "/a/b");
    EXPECT_EQ(appendingPathComponent("/a", "b/c"), "/a/b/c");
    EXPECT_EQ(appendingPathComponent("/", "b"), "/b");
}

TEST(PathComponentsTest, AnEmptyComponentAddsNothing) {
    EXPECT_EQ(appendingPathComponent("/a", ""), "/a");
    EXPECT_EQ(appendingPathComponent("/a", "/"), "/a");
}

TEST(PathComponentsTest, ATrailingSlashIsDropped) {
    EXPECT_EQ(appendingPathComponent("/a", "b/"), "/a/b");
}

TEST(PathComponentsTest, AnExtensionFollowsAFullStop) {
    EXPECT_EQ(appendingPathExtension("/a/b", "mbox"), "/a/b.mbox");
}

TEST(PathComponentsTest, ThePathExtensionFollowsTheLastFullStop) {
    EXPECT_EQ(pathExtension("x.y.default"), "default");
    EXPECT_EQ(pathExtension("plain"), "");
    EXPECT_EQ(pathExtension("end."), "");
}

}  // namespace
}  // namespace dorvanel::test
