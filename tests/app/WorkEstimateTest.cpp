// SPDX-License-Identifier: MIT
#include "app/WorkEstimate.h"

#include <gtest/gtest.h>

#include <set>

namespace dorvanel::test {
namespace {

using Unit = TimeLeft::Unit;
using std::chrono::milliseconds;

constexpr std::uint64_t megabyte = 1'000'000;

/// Work on a clock of its own, looked at four times a second.
class WorkEstimateTest : public ::testing::Test {
  protected:
    /// Works on for so many seconds at this speed.
    void work(double seconds, std::uint64_t bytesPerSecond) {
        for (int i = 0; i < static_cast<int>(seconds * 4); ++i) {
            now += milliseconds(250);
            done += bytesPerSecond / 4;
            estimate.add(now, done, total);
        }
    }

    std::uint64_t total = 100'000 * megabyte;
    std::uint64_t done = 0;
    WorkEstimate::Time now{std::chrono::hours(1)};
    WorkEstimate estimate;
};

TEST_F(WorkEstimateTest, SaysNothingBeforeItIsKnown) {
    estimate.add(now, 0, total);
    EXPECT_EQ(estimate.bytesPerSecond(), std::nullopt);
    work(1.5, 100 * megabyte);
    EXPECT_EQ(estimate.bytesPerSecond(), std::nullopt);
    EXPECT_EQ(estimate.timeLeft(), std::nullopt);
    work(1, 100 * megabyte);
    EXPECT_TRUE(estimate.bytesPerSecond());
    EXPECT_TRUE(estimate.timeLeft());
}

TEST_F(WorkEstimateTest, TellsTheSpeedOfSteadyWork) {
    estimate.add(now, 0, total);
    work(10, 100 * megabyte);
    EXPECT_NEAR(*estimate.bytesPerSecond(), 100.0 * megabyte, 0.01 * megabyte);
}

TEST_F(WorkEstimateTest, FollowsAnotherSpeedWithoutJumping) {
    estimate.add(now, 0, total);
    work(20, 100 * megabyte);
    work(0.25, 400 * megabyte);
    EXPECT_LT(*estimate.bytesPerSecond(), 120.0 * megabyte) << "one look says little";
    work(40, 400 * megabyte);
    EXPECT_NEAR(*estimate.bytesPerSecond(), 400.0 * megabyte, 5.0 * megabyte);
}

TEST_F(WorkEstimateTest, TellsMinutesHoursAndTheLastMinute) {
    total = 3600ULL * 2 * 100 * megabyte;
    estimate.add(now, 0, total);
    work(3, 100 * megabyte);
    EXPECT_EQ(estimate.timeLeft(), (TimeLeft{Unit::hours, 2}));
    work(3600 * 1.5, 100 * megabyte);
    EXPECT_EQ(estimate.timeLeft()->unit, Unit::minutes);
    EXPECT_NEAR(estimate.timeLeft()->count, 30, 1);
    work(60 * 27, 100 * megabyte);
    EXPECT_NEAR(estimate.timeLeft()->count, 3, 1);
    work(60 * 2.5, 100 * megabyte);
    EXPECT_EQ(estimate.timeLeft(), (TimeLeft{Unit::lessThanAMinute, 0}));
}

TEST_F(WorkEstimateTest, StaysWithWhatItHasToldThoughTheSpeedWavers) {
    total = 100 * megabyte * 60 * 10;
    estimate.add(now, 0, total);
    work(10, 100 * megabyte);
    std::set<int> told;
    int changes = 0;
    int last = estimate.timeLeft()->count;
    for (int i = 0; i < 30; ++i) {
        work(1, (i % 2 == 0 ? 90 : 110) * megabyte);
        told.insert(estimate.timeLeft()->count);
        changes +=
            estimate.timeLeft()->count == std::exchange(last, estimate.timeLeft()->count) ? 0 : 1;
    }
    EXPECT_LE(told.size(), 2U);
    EXPECT_LE(changes, 1);
}

TEST_F(WorkEstimateTest, CountsDownAndNeverUpAtASteadySpeed) {
    total = 100 * megabyte * 60 * 5;
    estimate.add(now, 0, total);
    work(3, 100 * megabyte);
    int last = estimate.timeLeft()->count;
    EXPECT_EQ(last, 5);
    for (int i = 0; i < 295; ++i) {
        work(1, 100 * megabyte);
        EXPECT_LE(estimate.timeLeft()->count, last);
        last = estimate.timeLeft()->count;
    }
    EXPECT_EQ(last, 0);
}

TEST_F(WorkEstimateTest, OfWorkThatStandsStillNothingIsKnown) {
    estimate.add(now, 0, total);
    work(10, 100 * megabyte);
    work(600, 0);
    EXPECT_EQ(estimate.bytesPerSecond(), std::nullopt);
    EXPECT_EQ(estimate.timeLeft(), std::nullopt);
}

TEST_F(WorkEstimateTest, BeginsAnewWithOtherWork) {
    estimate.add(now, 0, total);
    work(10, 100 * megabyte);
    done = 0;
    estimate.add(now, 0, 50 * megabyte);
    EXPECT_EQ(estimate.timeLeft(), std::nullopt);
    work(10, 100 * megabyte);
    estimate.add(now, 0, total);
    EXPECT_EQ(estimate.bytesPerSecond(), std::nullopt) << "it began again";
}

TEST_F(WorkEstimateTest, WhatGrewBeyondItsSizeIsAlmostDone) {
    total = 100 * megabyte;
    estimate.add(now, 0, total);
    work(10, 100 * megabyte);
    EXPECT_EQ(estimate.timeLeft(), (TimeLeft{Unit::lessThanAMinute, 0}));
}

}  // namespace
}  // namespace dorvanel::test
