// SPDX-License-Identifier: MIT
#include "run/ItemSummary.h"

#include <gtest/gtest.h>

#include "support/FakePreferences.h"

namespace dorvanel::test {
namespace {

std::string summaryOf(std::initializer_list<const char*> keys) {
    FakePreferences preferences;
    for (const char* key : keys) preferences.set(key, true);
    return itemSummary(preferences);
}

TEST(ItemSummaryTest, IsEmptyWithNothingSelected) {
    EXPECT_EQ(summaryOf({}), "");
}

TEST(ItemSummaryTest, NamesAllGroupsInTheirOrder) {
    EXPECT_EQ(summaryOf({"shredSafariFavicon", "ShredMailsmithSpam", "ShredAppleMailJunk",
                         "ShredMailTrash", "ShredMailCache", "ShredIEDownloadCache", "ShredHistory",
                         "ShredCache"}),
              "Browser Cache, Browser History, Download Cache, Mail Cache, Mail Trash, Apple Mail "
              "Junk, Mailsmith Spam, Browser Icons");
}

TEST(ItemSummaryTest, PutsNothingBetweenMailTrashAndAppleMailJunkAlone) {
    EXPECT_EQ(summaryOf({"ShredMailTrash", "ShredAppleMailJunk"}), "Mail TrashApple Mail Junk");
}

TEST(ItemSummaryTest, PutsNothingBetweenMailTrashAndBrowserIconsAlone) {
    EXPECT_EQ(summaryOf({"ShredMailTrash", "shredSafariFavicon"}), "Mail TrashBrowser Icons");
}

TEST(ItemSummaryTest, KeepsTheSeparatorThatAnEarlierGroupAskedFor) {
    EXPECT_EQ(summaryOf({"ShredCache", "ShredMailTrash", "shredSafariFavicon"}),
              "Browser Cache, Mail Trash, Browser Icons");
}

TEST(ItemSummaryTest, LeavesTheQuickTimeCacheUnnamed) {
    EXPECT_EQ(summaryOf({"ShredQuicktimeCache"}), "");
}

}  // namespace
}  // namespace dorvanel::test
