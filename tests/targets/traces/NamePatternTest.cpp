// SPDX-License-Identifier: MIT
#include "targets/traces/NamePattern.h"

#include <gtest/gtest.h>

#include <string>

namespace dorvanel::traces {
namespace {

TEST(NamePatternTest, AStarStandsForAnyBytesAndForNone) {
    EXPECT_TRUE(matchesName("*", ""));
    EXPECT_TRUE(matchesName("*", ".hidden"));
    EXPECT_TRUE(matchesName("cookies.sqlite*", "cookies.sqlite"));
    EXPECT_TRUE(matchesName("cookies.sqlite*", "cookies.sqlite-wal"));
    EXPECT_FALSE(matchesName("cookies.sqlite*", "my-cookies.sqlite"));
    EXPECT_TRUE(matchesName("*.db", "visited-1.db"));
    EXPECT_FALSE(matchesName("*.db", "visited-1.db-wal"));
    EXPECT_TRUE(matchesName("a*b*c", "a-b-b-c"));
    EXPECT_FALSE(matchesName("a*b*c", "a-c-b"));
}

TEST(NamePatternTest, AQuestionMarkStandsForOneByte) {
    EXPECT_TRUE(matchesName("Profile ?", "Profile 1"));
    EXPECT_FALSE(matchesName("Profile ?", "Profile 12"));
    EXPECT_FALSE(matchesName("Profile ?", "Profile "));
    EXPECT_TRUE(matchesName("??", "\xC3\xA4"));
}

TEST(NamePatternTest, WithoutEitherOnlyTheNameItselfMatches) {
    EXPECT_TRUE(matchesName("places.sqlite", "places.sqlite"));
    EXPECT_FALSE(matchesName("places.sqlite", "places_sqlite"));
    EXPECT_FALSE(matchesName("", "a"));
    EXPECT_TRUE(matchesName("", ""));
    EXPECT_FALSE(isNamePattern("places.sqlite"));
    EXPECT_TRUE(isNamePattern("places.*"));
    EXPECT_TRUE(isNamePattern("p?"));
}

TEST(NamePatternTest, ManyStarsOverALongNameTakeNoTime) {
    std::string pattern;
    for (int i = 0; i < 60; ++i) pattern += "a*";
    EXPECT_FALSE(matchesName(pattern + "b", std::string(250, 'a')));
    EXPECT_TRUE(matchesName(pattern, std::string(250, 'a')));
}

}  // namespace
}  // namespace dorvanel::traces
