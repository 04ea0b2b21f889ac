// SPDX-License-Identifier: MIT
#include "engine/PassPlan.h"

#include <gtest/gtest.h>

#include <limits>

#include <array>

#include "engine/OverwriteBuffer.h"

namespace dorvanel::test {
namespace {

TEST(PassPlanTest, IndexZeroTakesOneToFourPassesOfTheTwoLowestBits) {
    for (std::uint32_t draw = 0; draw < 16; ++draw) {
        EXPECT_EQ(passCount({}, draw), draw % 4 + 1);
    }
    EXPECT_EQ(passCount({}, 0x7FFFFFFF), 4);
}

TEST(PassPlanTest, OtherIndexesAreACountWhateverIsDrawn) {
    const int counts[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 15, 20, 25, 30, 35};
    for (int index = 2; index <= 16; ++index) {
        EXPECT_EQ(passCount({.numberOfWrites = index}, 3), counts[index - 2]) << index;
    }
}

TEST(PassPlanTest, IndexOneGivesACountOfZero) {
    EXPECT_EQ(passCount({.numberOfWrites = 1}, 3), 0);
}

TEST(PassPlanTest, OneStandardAsksForThreePassesAtLeast) {
    for (const int index : {1, 2, 3, 4}) {
        EXPECT_EQ(passCount({.numberOfWrites = index, .doDSanitize = true}, 0), 3) << index;
        EXPECT_EQ(passCount({.numberOfWrites = index, .nsa = true}, 0), 3) << index;
    }
    EXPECT_EQ(passCount({.numberOfWrites = 5, .doDSanitize = true}, 0), 4);
    EXPECT_EQ(passCount({.numberOfWrites = 12, .doDSanitize = true}, 0), 15);
    EXPECT_EQ(passCount({.nsa = true}, 3), 4) << "a random count above the minimum stays";
}

TEST(PassPlanTest, BothStandardsAskForFivePassesAtLeast) {
    for (const int index : {1, 2, 3, 4, 5, 6}) {
        EXPECT_EQ(passCount({.numberOfWrites = index, .doDSanitize = true, .nsa = true}, 0), 5);
    }
    EXPECT_EQ(passCount({.numberOfWrites = 7, .doDSanitize = true, .nsa = true}, 0), 6);
}

TEST(PassPlanTest, TheStandardsSetTheLastThreePasses) {
    EXPECT_EQ(doDPattern(3), pattern::fives);
    EXPECT_EQ(doDPattern(2), pattern::tens);
    EXPECT_EQ(doDPattern(1), pattern::randomToo);
    EXPECT_EQ(nsaPattern(3), pattern::randomToo);
    EXPECT_EQ(nsaPattern(2), pattern::randomToo);
    EXPECT_EQ(nsaPattern(1), pattern::zeros);
    for (const std::uint16_t counter : std::to_array<std::uint16_t>({0, 4, 35, 65535})) {
        EXPECT_EQ(doDPattern(counter), std::nullopt) << counter;
        EXPECT_EQ(nsaPattern(counter), std::nullopt) << counter;
    }
}

TEST(PassPlanTest, NoStoredNumberOverflows) {
    OverwriteSettings settings;
    settings.numberOfWrites = std::numeric_limits<int>::min();
    EXPECT_EQ(passCount(settings, 0), 65535U);
}

}  // namespace
}  // namespace dorvanel::test
