// SPDX-License-Identifier: MIT
#include "targets/trash/DirectorySizes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace dorvanel::trash {
namespace {

const std::string list =
    "16384 1331666513 a%20b\n4096 1331666514 caf%C3%A9\nnonsense\n"
    "12 13 x/y\n8192 1331666515 last";

TEST(DirectorySizesTest, NamesAreDecodedAndLinesThatAreNoneArePassedOver) {
    EXPECT_THAT(namesInSizes(list), ::testing::ElementsAre("a b", "caf\xC3\xA9", "last"));
    EXPECT_THAT(namesInSizes(""), ::testing::IsEmpty());
}

TEST(DirectorySizesTest, OnlyTheLinesOfTheNamesGo) {
    std::uint64_t count = 0;
    const auto without = [&](const std::string& gone) {
        return withoutSizes(
            list, [&](const std::string& name) { return name == gone; }, count);
    };
    EXPECT_EQ(without("caf\xC3\xA9"),
              "16384 1331666513 a%20b\nnonsense\n12 13 x/y\n8192 1331666515 last");
    EXPECT_EQ(count, 1U);
    EXPECT_EQ(without("last"),
              "16384 1331666513 a%20b\n4096 1331666514 caf%C3%A9\nnonsense\n12 13 x/y\n");
    EXPECT_EQ(without("nobody"), list);
    EXPECT_EQ(count, 0U);
}

}  // namespace
}  // namespace dorvanel::trash
