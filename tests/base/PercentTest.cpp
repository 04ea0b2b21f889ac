// SPDX-License-Identifier: MIT
#include "base/Percent.h"

#include <gtest/gtest.h>

namespace dorvanel {
namespace {

TEST(PercentTest, ACodeIsDecodedOnceAndAnyByteCanBeOne) {
    EXPECT_EQ(percentDecoded("a%20b%2fc%C3%A9%ff"), "a b/c\xC3\xA9\xFF");
    EXPECT_EQ(percentDecoded("%2541"), "%41");
}

TEST(PercentTest, APercentSignThatBeginsNoCodeStaysAsItIs) {
    EXPECT_EQ(percentDecoded("100%"), "100%");
    EXPECT_EQ(percentDecoded("%4"), "%4");
    EXPECT_EQ(percentDecoded("%zz%4g"), "%zz%4g");
}

}  // namespace
}  // namespace dorvanel
