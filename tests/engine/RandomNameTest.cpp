// SPDX-License-Identifier: MIT
#include "engine/RandomName.h"

#include <gtest/gtest.h>

#include <cstring>
#include <deque>
#include <set>
#include <string>

#include "engine/random/FeedbackSequence.h"
#include "engine/random/LibrarySequence.h"
#include "support/PlainOverwrite.h"

namespace dorvanel::test {
namespace {

/// A name made of chosen draws: the length's first, then one a character, the last one first.
std::string nameOf(std::uint32_t lengthDraw, std::uint32_t characterDraw) {
    bool first = true;
    LibrarySequence draws(
        [&] {
            const std::uint32_t draw = first ? lengthDraw : characterDraw;
            first = false;
            return static_cast<long>(draw);
        },
        {});
    RandomName name(draws);
    name.randomizeName();
    return name.mName.data();
}

TEST(RandomNameTest, IsEmptyAtFirst) {
    FeedbackSequence draws;
    EXPECT_STREQ(RandomName(draws).mName.data(), "");
}

TEST(RandomNameTest, HasFromNineToThirtyTwoCharacters) {
    EXPECT_EQ(nameOf(0, 0).size(), 9U);
    EXPECT_EQ(nameOf(23, 0).size(), 32U);
    EXPECT_EQ(nameOf(24, 0).size(), 9U);
    EXPECT_EQ(nameOf(0x10000, 0).size(), 9U) << "only the low 16 bits count";
}

TEST(RandomNameTest, TakesSixBitsForACharacterSoThatAAndBComeTwice) {
    EXPECT_EQ(nameOf(0, 0), "AAAAAAAAA");
    EXPECT_EQ(nameOf(0, 25), "ZZZZZZZZZ");
    EXPECT_EQ(nameOf(0, 26), "aaaaaaaaa");
    EXPECT_EQ(nameOf(0, 61), "999999999");
    EXPECT_EQ(nameOf(0, 62), "AAAAAAAAA");
    EXPECT_EQ(nameOf(0, 63), "BBBBBBBBB");
    EXPECT_EQ(nameOf(0, 64), "AAAAAAAAA");
}

TEST(RandomNameTest, ANamePutBackIsTheNextOneAndDrawsNothing) {
    FeedbackSequence draws;
    FeedbackSequence others;
    RandomName name(draws);
    RandomName plain(others);
    for (int i = 0; i < 3; ++i) {
        name.randomizeName();
        name.putBack();
        name.randomizeName();
        plain.randomizeName();
        EXPECT_EQ(name.mName, plain.mName);
    }
    EXPECT_EQ(draws.next(), others.next());
}

TEST(RandomNameTest, EqualsTheNamesOfThePlainProgram) {
    const auto expected = linesOf(plainOverwrite({}, {"n2000"})[0], "name");
    FeedbackSequence draws;
    RandomName name(draws);
    std::set<std::size_t> lengths;
    for (const std::string& each : expected) {
        name.randomizeName();
        ASSERT_EQ(name.mName.data(), each);
        lengths.insert(each.size());
    }
    EXPECT_EQ(lengths.size(), 24U);
}

}  // namespace
}  // namespace dorvanel::test
