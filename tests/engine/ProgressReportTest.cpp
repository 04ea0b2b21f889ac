// SPDX-License-Identifier: MIT
#include "engine/ProgressReport.h"

#include <gtest/gtest.h>

#include "support/FakeClock.h"
#include "support/FakeOutlets.h"

namespace dorvanel::test {
namespace {

using std::chrono::microseconds;

class ProgressReportTest : public ::testing::Test {
  protected:
    FakeClock clock;
    FakeProgressIndicator bar;
    FakeTextField name;
    ProgressReport report{bar, name, clock};
};

TEST_F(ProgressReportTest, TheNameIsShownWithTheFirstValueAndBothAreRedrawn) {
    report.setName("file");
    EXPECT_EQ(name.displays, 0);
    report.setPercent(7);
    EXPECT_EQ(name.texts, std::vector<std::string>{"file"});
    EXPECT_EQ(name.displays, 1);
    EXPECT_EQ(bar.values, std::vector<double>{7});
    EXPECT_EQ(bar.displays, 1);
}

TEST_F(ProgressReportTest, ASlowBlockAfterAQuickOneDoesNotShowTheFileBefore) {
    report.setName("slow");
    report.setPercent(1);
    clock.advance(std::chrono::seconds(3));
    report.setName("quick");
    report.setPercent(2);
    clock.advance(microseconds(10));
    report.setName("slow again");
    report.setPercent(3);
    EXPECT_EQ(name.texts.back(), "slow again");
    EXPECT_EQ(bar.values.back(), 3);
}

TEST_F(ProgressReportTest, AFlushIsNoSlowBlock) {
    report.setPercent(1);
    report.flush();
    clock.advance(std::chrono::seconds(3));
    report.setPercent(2);
    report.setPercent(3);
    EXPECT_EQ(bar.values, (std::vector<double>{1, 2}));
}

TEST_F(ProgressReportTest, AtMostSixtyValuesASecondAreShown) {
    for (int i = 0; i < 100'000; ++i) {
        report.setPercent(i / 1000.0);
        clock.advance(microseconds(10));
    }
    EXPECT_LE(bar.values.size(), 61U) << "in one second";
    EXPECT_GE(bar.values.size(), 58U);
    EXPECT_EQ(static_cast<int>(bar.values.size()), bar.displays);
}

TEST_F(ProgressReportTest, AValueThatWasHeldBackIsShownByTheNextFlush) {
    report.setPercent(1);
    report.setPercent(2);
    report.setName("late");
    EXPECT_EQ(bar.values, std::vector<double>{1});
    report.flush();
    EXPECT_EQ(bar.values, (std::vector<double>{1, 2}));
    EXPECT_EQ(name.texts, std::vector<std::string>{"late"});
    report.flush();
    EXPECT_EQ(bar.displays, 2) << "nothing new, nothing drawn";
}

TEST_F(ProgressReportTest, OfTheValuesHeldBackOnlyTheLastIsShown) {
    report.setPercent(1);
    for (int i = 2; i <= 50; ++i) report.setPercent(i);
    clock.advance(std::chrono::milliseconds(17));
    report.setName("next");
    report.setPercent(51);
    EXPECT_EQ(bar.values, (std::vector<double>{1, 51}));
    EXPECT_EQ(name.texts, std::vector<std::string>{"next"});
}

TEST_F(ProgressReportTest, TheBeginningAndTheEndAreShownWithoutWaiting) {
    report.setPercent(1);
    report.showNow(0.0);
    report.showNow(std::string_view());
    EXPECT_EQ(bar.values, (std::vector<double>{1, 0}));
    EXPECT_EQ(name.texts, std::vector<std::string>{""});
}

/// Remembers the states.
class FakeWorkProgress final : public ui::WorkProgress {
  public:
    void show(const ui::WorkState& state) override { states.push_back(state); }
    std::vector<ui::WorkState> states;
};

TEST(WorkStateTest, IsToldAsOftenAsTheBarWithItemBytesAndPhase) {
    FakeProgressIndicator bar;
    FakeTextField name;
    FakeClock clock;
    FakeWorkProgress work;
    ProgressReport report(bar, name, clock, &work);
    report.enter(ui::WorkPhase::measuring);
    ASSERT_EQ(work.states.size(), 1U);
    EXPECT_EQ(work.states[0].phase, ui::WorkPhase::measuring);
    report.setItem(2, 5, "/a/b");
    report.setBytes(30, 100);
    EXPECT_EQ(work.states.size(), 1U) << "the next percentage brings them";
    for (int i = 0; i < 1000; ++i) {
        report.setBytes(30, 100);
        report.setPercent(30);
    }
    EXPECT_EQ(work.states.size(), 2U) << "no time has passed";
    EXPECT_EQ(work.states[1].phase, ui::WorkPhase::overwriting);
    EXPECT_EQ(work.states[1].done, 30U);
    EXPECT_EQ(work.states[1].total, 100U);
    EXPECT_EQ(work.states[1].item, 2U);
    EXPECT_EQ(work.states[1].items, 5U);
    EXPECT_EQ(work.states[1].path, "/a/b");
    report.enter(ui::WorkPhase::flushing);
    EXPECT_EQ(work.states.back().phase, ui::WorkPhase::flushing);
    EXPECT_EQ(work.states.back().done, 30U);
    report.enter(ui::WorkPhase::none);
    EXPECT_EQ(work.states.back().item, 0U) << "nothing stays of a request that has ended";
}

}  // namespace
}  // namespace dorvanel::test
