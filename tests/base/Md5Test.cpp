// SPDX-License-Identifier: MIT
#include "base/Md5.h"

#include <gtest/gtest.h>

namespace dorvanel {
namespace {

std::string hexMd5(std::string_view bytes) {
    return hexOf(md5(bytes));
}

TEST(Md5Test, TheTestSuiteOfRfc1321IsPassed) {
    EXPECT_EQ(hexMd5(""), "d41d8cd98f00b204e9800998ecf8427e");
    EXPECT_EQ(hexMd5("a"), "0cc175b9c0f1b6a831c399e269772661");
    EXPECT_EQ(hexMd5("abc"), "900150983cd24fb0d6963f7d28e17f72");
    EXPECT_EQ(hexMd5("message digest"), "f96b697d7cb7938d525a2f31aaf161d0");
    EXPECT_EQ(hexMd5("abcdefghijklmnopqrstuvwxyz"), "c3fcd3d76192e4007dfb496cca67e13b");
    EXPECT_EQ(hexMd5("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789"),
              "d174ab98d277d9f5a5611c2c9f419d9f");
    EXPECT_EQ(hexMd5("1234567890123456789012345678901234567890"
                     "1234567890123456789012345678901234567890"),
              "57edf4a22be3c955ac49da2e2107b67a");
}

TEST(Md5Test, LengthsAroundTheEndOfABlockAreWhole) {
    EXPECT_EQ(hexMd5(std::string(55, 'x')), "04364420e25c512fd958a70738aa8f72");
    EXPECT_EQ(hexMd5(std::string(56, 'x')), "668a72d5ba17f08e62dabcafad6db14b");
    EXPECT_EQ(hexMd5(std::string(64, 'x')), "c1bb4f81d892b2d57947682aeb252456");
    EXPECT_EQ(hexMd5(std::string(1000, '\xff')), "23cc517ae5734b068e21c92920a5ee02");
}

}  // namespace
}  // namespace dorvanel
