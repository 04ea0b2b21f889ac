// SPDX-License-Identifier: MIT
#include "simulator/Simulation.h"

#include <gtest/gtest.h>

namespace dorvanel::simulator {
namespace {

/// So many sequences in each of ten tests; `./dev simulate SECONDS` goes on from there.
constexpr std::uint64_t share = 300;

class SimulationTest : public ::testing::TestWithParam<std::uint64_t> {};

TEST_P(SimulationTest, WhateverHappensNothingIsShreddedOrEndedThatNobodyAskedFor) {
    Findings sum;
    for (std::uint64_t seed = GetParam() * share; seed < (GetParam() + 1) * share; ++seed) {
        const Findings findings = simulate(sequenceOf(seed));
        if (findings.broken.empty()) {
            sum.runsStarted += findings.runsStarted;
            sum.runsRefused += findings.runsRefused;
            sum.runsGivenUp += findings.runsGivenUp;
            sum.systemEvents += findings.systemEvents;
            continue;
        }
        FAIL() << "seed " << seed << ": " << findings.broken.front() << "\n"
               << described(shortened(sequenceOf(seed)));
    }
    // A simulation in which nothing goes on would find nothing either.
    EXPECT_GT(sum.runsStarted, 0);
    EXPECT_GT(sum.runsRefused, 0);
    EXPECT_GT(sum.runsGivenUp, 0);
    EXPECT_GT(sum.systemEvents, 0);
}

INSTANTIATE_TEST_SUITE_P(Seeds, SimulationTest, ::testing::Range<std::uint64_t>(0, 10));

TEST(SequenceTest, OneSeedIsAlwaysTheSameSequence) {
    EXPECT_EQ(described(sequenceOf(7)), described(sequenceOf(7)));
    EXPECT_NE(described(sequenceOf(7)), described(sequenceOf(8)));
}

}  // namespace
}  // namespace dorvanel::simulator
