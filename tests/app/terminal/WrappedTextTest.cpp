// SPDX-License-Identifier: MIT
#include "app/terminal/WrappedText.h"

#include <gtest/gtest.h>

namespace dorvanel::test {
namespace {

using terminal::wrappedLines;
using Lines = std::vector<std::string>;

TEST(WrappedTextTest, LinesAreAsLongAsTheyMayBe) {
    EXPECT_EQ(wrappedLines("one two three", 7), (Lines{"one two", "three"}));
    EXPECT_EQ(wrappedLines("one two three", 6), (Lines{"one", "two", "three"}));
    EXPECT_EQ(wrappedLines("one two three", 13), (Lines{"one two three"}));
}

TEST(WrappedTextTest, AWordThatIsTooWideStandsAlone) {
    EXPECT_EQ(wrappedLines("a longer b", 3), (Lines{"a", "longer", "b"}));
    EXPECT_EQ(wrappedLines("日本 日本", 5), (Lines{"日本", "日本"}));
}

TEST(WrappedTextTest, NoLineIsEmpty) {
    EXPECT_EQ(wrappedLines("", 10), Lines{});
    EXPECT_EQ(wrappedLines("  a  b ", 10), Lines{"a b"});
}

}  // namespace
}  // namespace dorvanel::test
