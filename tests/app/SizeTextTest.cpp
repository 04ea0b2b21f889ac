// SPDX-License-Identifier: MIT
#include "app/SizeText.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace dorvanel::test {
namespace {

TEST(SizeTextTest, SizesHaveTheUnitThatKeepsThemShort) {
    EXPECT_EQ(sizeText(0), "0 bytes");
    EXPECT_EQ(sizeText(1), "1 byte");
    EXPECT_EQ(sizeText(1023), "1023 bytes");
    EXPECT_EQ(sizeText(1024), "1.0 KiB");
    EXPECT_EQ(sizeText(1536), "1.5 KiB");
    EXPECT_EQ(sizeText((std::uint64_t{1} << 20) - 1), "1.0 MiB");
    EXPECT_EQ(sizeText(std::uint64_t{5} << 30), "5.0 GiB");
    EXPECT_EQ(sizeText(UINT64_MAX), "16.0 EiB");
}

TEST(SizeTextTest, CountsAgreeWithTheirNoun) {
    EXPECT_EQ(counted(0, "file"), "0 files");
    EXPECT_EQ(counted(1, "file"), "1 file");
    EXPECT_EQ(counted(2, "row"), "2 rows");
}

}  // namespace
}  // namespace dorvanel::test
