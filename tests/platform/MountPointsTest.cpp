// SPDX-License-Identifier: MIT
#include "platform/MountPoints.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>

namespace dorvanel::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;

TEST(MountPointsTest, AreTheFifthFieldOfEachLine) {
    EXPECT_THAT(platform::parseMountTable(
                    "22 1 254:0 / / rw,relatime shared:1 - ext4 /dev/vda rw\n"
                    "23 22 0:21 /sub/tree /home/jo rw - btrfs /dev/vdb rw,subvol=/sub/tree\n"
                    "24 22 0:22 / /proc rw - proc proc rw\n"),
                ElementsAre("/", "/home/jo", "/proc"));
}

TEST(MountPointsTest, EscapedCharactersAreTheirBytesAgain) {
    EXPECT_THAT(platform::parseMountTable("1 2 0:1 / /a\\040b\\011c\\012d\\134e rw - x y z\n"
                                          "1 2 0:1 /x\\040y /\\303\\251\\351 rw - x y z\n"
                                          "1 2 0:1 / /odd\\04 rw - x y z\n"
                                          "1 2 0:1 / /odd\\999 rw - x y z\n"),
                ElementsAre("/a b\tc\nd\\e", "/\xC3\xA9\xE9", "/odd\\04", "/odd\\999"));
}

TEST(MountPointsTest, BrokenLinesAreNone) {
    EXPECT_THAT(platform::parseMountTable(""), ElementsAre());
    EXPECT_THAT(platform::parseMountTable("\n\nnonsense\n1 2 3\n1 2 3 4 \n"), ElementsAre());
    EXPECT_THAT(platform::parseMountTable("1 2 3 4 /end"), ElementsAre("/end"));
}

TEST(MountPointsTest, ATableThatCannotBeReadIsAnErrorAndNotAnEmptyOne) {
    // A folder can be opened but not read; a process's memory has nothing at its beginning.
    for (const auto& [table, code] :
         {std::pair{"/proc/self/no such table", ENOENT}, std::pair{"/proc/self", EISDIR},
          std::pair{"/proc/self/mem", EIO}, std::pair{"/dev/null", ENODATA}}) {
        const auto points = platform::mountPoints(table);
        ASSERT_FALSE(points) << table;
        EXPECT_EQ(points.error().code, code) << table;
        EXPECT_EQ(points.error().path, table);
    }
}

TEST(MountPointsTest, OfThisMachineHoldTheRootAndTheProcesses) {
    const auto points = platform::mountPoints();
    ASSERT_TRUE(points) << points.error().message();
    EXPECT_THAT(points.value(), Contains("/proc"));
}

}  // namespace
}  // namespace dorvanel::test
