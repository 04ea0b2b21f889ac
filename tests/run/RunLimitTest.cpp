// SPDX-License-Identifier: MIT
#include "run/RunLimit.h"

#include <gtest/gtest.h>

namespace dorvanel::test {
namespace {

using Action = PlanItem::Action;

RunLimit limitOf(std::vector<PlanItem> items, std::vector<PlanSkip> skipped = {}) {
    return RunLimit({.items = std::move(items), .skipped = std::move(skipped)});
}

TEST(RunLimitTest, APathIsAllowedForTheKindThatWasShownAndForNoOther) {
    const RunLimit limit = limitOf({{.path = "/h/db", .action = Action::clean, .trace = "history"},
                                    {.path = "/h/old", .files = 1}});
    EXPECT_TRUE(limit.allows("/h/db", "history"));
    EXPECT_FALSE(limit.allows("/h/db", "downloads"));
    EXPECT_FALSE(limit.allows("/h/db"));
    EXPECT_TRUE(limit.allows("/h/old"));
    EXPECT_FALSE(limit.allows("/h/older"));
    EXPECT_FALSE(limit.allows("/h"));
}

TEST(RunLimitTest, WhatLiesInAFolderThatGoesIsAllowedWithIt) {
    const RunLimit limit = limitOf({{.path = "/h/cache", .files = 3, .folders = 1},
                                    {.path = "/h/link", .files = 1},
                                    {.path = "/h/db", .action = Action::clean, .folders = 1}});
    EXPECT_TRUE(limit.allows("/h/cache/a/b", "icons"));
    EXPECT_FALSE(limit.allows("/h/cache2/a"));
    EXPECT_FALSE(limit.allows("/h/link/a")) << "only the link itself goes";
    EXPECT_FALSE(limit.allows("/h/db/a")) << "it stays";
}

TEST(RunLimitTest, WhatWasShownAsPassedOverIsKnownAndNotAllowed) {
    const RunLimit limit = limitOf({}, {{.path = "/h/locked"}, {.application = "lynx"}});
    EXPECT_TRUE(limit.isKnown("/h/locked"));
    EXPECT_FALSE(limit.allows("/h/locked"));
    EXPECT_FALSE(limit.isKnown("/h/new"));
}

TEST(RunLimitTest, APlanThatHoldsNothingAllowsNothing) {
    EXPECT_FALSE(limitOf({}).allows("/"));
    EXPECT_FALSE(limitOf({}).allows(""));
}

}  // namespace
}  // namespace dorvanel::test
