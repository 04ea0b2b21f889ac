// SPDX-License-Identifier: MIT
#include "engine/Plan.h"

#include <gtest/gtest.h>

namespace dorvanel::test {
namespace {

using Action = PlanItem::Action;

PlanItem shred(const std::string& path) {
    return {.path = path, .files = 1, .bytes = 10};
}

TEST(PlanTest, TotalsAreTheSumsOfWhatEachActionCounts) {
    Plan plan;
    plan.items = {
        {.path = "/a", .action = Action::shred, .files = 3, .folders = 2, .bytes = 100},
        {.path = "/b", .action = Action::clean, .rows = 7, .keys = 1},
        {.path = "/c", .action = Action::clean, .keys = 4},
        {.path = "/d", .action = Action::mention, .files = 1, .bytes = 20},
        {.path = "/e", .action = Action::mention, .entries = 6},
    };
    const Totals totals = totalsOf(plan);
    EXPECT_EQ(totals.items, 5U);
    EXPECT_EQ(totals.files, 4U);
    EXPECT_EQ(totals.folders, 2U);
    EXPECT_EQ(totals.bytes, 120U);
    EXPECT_EQ(totals.rows, 7U);
    EXPECT_EQ(totals.keys, 5U);
    EXPECT_EQ(totals.entries, 6U);
}

TEST(PlanTest, TheSizeOfAFileThatStaysCountsForNothing) {
    Plan plan;
    plan.items = {
        {.path = "/b", .action = Action::clean, .files = 1, .bytes = 4096, .rows = 7},
        {.path = "/e", .action = Action::mention, .files = 1, .bytes = 300, .entries = 2}};
    EXPECT_EQ(totalsOf(plan).files, 0U);
    EXPECT_EQ(totalsOf(plan).bytes, 0U);
}

TEST(PlanTest, AnOutcomeGoesToTheItemOfItsPath) {
    Plan plan;
    plan.items = {shred("/a"), shred("/b"), shred("/c")};
    Outcome outcome;
    outcome.perItem = {{.path = "/c", .overwritten = 3}, {.path = "/a", .overwritten = 1}};
    addOutcome(plan, outcome);
    ASSERT_EQ(plan.items.size(), 3U);
    EXPECT_EQ(plan.items[0].outcome->overwritten, 1U);
    EXPECT_FALSE(plan.items[1].outcome);
    EXPECT_EQ(plan.items[2].outcome->overwritten, 3U);
}

TEST(PlanTest, ItemsOfOnePathTakeTheirOutcomesInTurn) {
    Plan plan;
    plan.items = {{.path = "/db", .action = Action::clean, .trace = "history", .rows = 5},
                  {.path = "/db", .action = Action::clean, .trace = "downloads", .rows = 2}};
    Outcome outcome;
    outcome.perItem = {{.path = "/db", .rows = 5}, {.path = "/db", .rows = 2}};
    addOutcome(plan, outcome);
    ASSERT_EQ(plan.items.size(), 2U);
    EXPECT_EQ(plan.items[0].outcome->rows, 5U);
    EXPECT_EQ(plan.items[1].outcome->rows, 2U);
}

TEST(PlanTest, AnOutcomeThatWasNotPlannedIsAnItemOfItsOwn) {
    Plan plan;
    plan.items = {shred("/a")};
    Outcome outcome;
    outcome.perItem = {{.path = "/new", .overwritten = 2, .bytes = 30},
                       {.path = "/a", .overwritten = 1},
                       {.path = "/db", .rows = 4}};
    addOutcome(plan, outcome);
    ASSERT_EQ(plan.items.size(), 3U);
    EXPECT_EQ(plan.items[0].outcome->overwritten, 1U);
    EXPECT_EQ(plan.items[1].path, "/new");
    EXPECT_EQ(plan.items[1].action, Action::shred);
    EXPECT_EQ(plan.items[1].files, 2U);
    EXPECT_EQ(plan.items[1].bytes, 30U);
    EXPECT_EQ(plan.items[1].outcome->bytes, 30U);
    EXPECT_EQ(plan.items[2].action, Action::clean);
    EXPECT_EQ(plan.items[2].rows, 4U);
}

TEST(PlanTest, ALargeListFindsItsOutcomes) {
    Plan plan;
    Outcome outcome;
    constexpr std::uint64_t many = 20'000;
    for (std::uint64_t i = 0; i < many; ++i) {
        plan.items.push_back(shred("/folder/" + std::to_string(i)));
        const std::uint64_t other = many - 1 - i;
        outcome.perItem.push_back({.path = "/folder/" + std::to_string(other), .bytes = other});
    }
    addOutcome(plan, outcome);
    ASSERT_EQ(plan.items.size(), many);
    for (std::uint64_t i = 0; i < many; ++i) ASSERT_EQ(plan.items[i].outcome->bytes, i);
}

}  // namespace
}  // namespace dorvanel::test
