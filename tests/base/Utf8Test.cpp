// SPDX-License-Identifier: MIT
#include "base/Utf8.h"

#include <gtest/gtest.h>

namespace dorvanel::test {
namespace {

TEST(Utf8Test, CharactersOfEveryLengthAreRead) {
    EXPECT_EQ(firstCharacter("aé").code, 0x61U);
    EXPECT_EQ(firstCharacter("éa").code, 0xE9U);
    EXPECT_EQ(firstCharacter("日").code, 0x65E5U);
    EXPECT_EQ(firstCharacter("😀").code, 0x1F600U);
    EXPECT_EQ(firstCharacter("😀").length, 4U);
}

TEST(Utf8Test, TextIsValidFromTheFirstByteToTheLastOrNotAtAll) {
    EXPECT_TRUE(isUtf8(""));
    EXPECT_TRUE(isUtf8("/home/jo/Fotos/é日😀"));
    EXPECT_TRUE(isUtf8("\xEF\xBF\xBD"));
    for (const char* broken : {"\xE9", "a\x80", "\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80",
                               "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "a\xE6\x97"}) {
        EXPECT_FALSE(isUtf8(broken)) << broken;
    }
}

}  // namespace
}  // namespace dorvanel::test
