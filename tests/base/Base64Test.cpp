// SPDX-License-Identifier: MIT
#include "base/Base64.h"

#include <gtest/gtest.h>

namespace dorvanel::test {
namespace {

TEST(Base64Test, EveryLengthIsPaddedToFourDigits) {
    EXPECT_EQ(base64Of(""), "");
    EXPECT_EQ(base64Of("a"), "YQ==");
    EXPECT_EQ(base64Of("ab"), "YWI=");
    EXPECT_EQ(base64Of("abc"), "YWJj");
    EXPECT_EQ(base64Of("abcd"), "YWJjZA==");
    EXPECT_EQ(base64Of("abcdef"), "YWJjZGVm");
}

TEST(Base64Test, EveryByteHasItsDigits) {
    EXPECT_EQ(base64Of("\xff\xfe\xfb"), "//77");
    EXPECT_EQ(base64Of(std::string_view("\0\x3e\xf8", 3)), "AD74");
}

}  // namespace
}  // namespace dorvanel::test
