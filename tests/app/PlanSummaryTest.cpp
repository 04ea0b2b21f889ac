// SPDX-License-Identifier: MIT
#include "app/PlanSummary.h"

#include <gtest/gtest.h>

namespace dorvanel::test {
namespace {

using Action = PlanItem::Action;

const PlanItem folder{.path = "/a", .files = 812, .folders = 3, .bytes = 5 << 20};
const PlanItem file{.path = "/f", .files = 1, .bytes = 1};
const PlanItem database{.path = "/b", .action = Action::clean, .rows = 120};
const PlanItem settings{.path = "/c", .action = Action::clean, .keys = 1};
const PlanItem picture{.path = "/d", .action = Action::mention, .files = 1, .bytes = 1 << 20};
const PlanItem list{.path = "/e", .action = Action::mention, .entries = 1};

std::string summaryOf(std::vector<PlanItem> items) {
    return summaryLine({.items = std::move(items), .skipped = {}});
}

TEST(PlanSummaryTest, EverythingIsCountedUnderWhatBecomesOfIt) {
    EXPECT_EQ(
        summaryOf({folder, database, settings, picture, list}),
        "2 items, 813 files, 6.0 MiB would be shredded; 120 rows and 1 key cleaned; 1 mention "
        "removed");
}

TEST(PlanSummaryTest, WhatThereIsNoneOfIsNotSaid) {
    EXPECT_EQ(summaryOf({file}), "1 item, 1 file, 1 byte would be shredded");
    EXPECT_EQ(summaryOf({database}), "120 rows would be cleaned");
    EXPECT_EQ(summaryOf({settings, list}), "1 key would be cleaned; 1 mention removed");
    EXPECT_EQ(summaryOf({list}), "1 mention would be removed");
    EXPECT_EQ(summaryOf({}), "nothing would be shredded");
}

}  // namespace
}  // namespace dorvanel::test
