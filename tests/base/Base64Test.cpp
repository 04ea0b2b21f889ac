// SPDX-License-Identifier: MIT
#include "base/Base64.h"

#include <gtest/gtest.h>

namespace dorvanel::test {
namespace {

TEST(Base64Test, EveryLengthIsPaddedToFourDigits) {
    EXPECT_EQ(base64Of(""), "");
    EXPECT_EQ(base64Of("f"), "Zg==");
    EXPECT_EQ(base64Of("fo"), "Zm8=");
    EXPECT_EQ(base64Of("foo"), "Zm9v");
    EXPECT_EQ(base64Of("foob"), "Zm9vYg==");
    EXPECT_EQ(base64Of("foobar"), "Zm9vYmFy");
}

TEST(Base64Test, EveryByteHasItsDigits) {
    EXPECT_EQ(base64Of("\xff\xfe\xfb"), "//77");
    EXPECT_EQ(base64Of(std::string_view("\0\x3e\xf8", 3)), "AD74");
}

}  // namespace
}  // namespace dorvanel::test
