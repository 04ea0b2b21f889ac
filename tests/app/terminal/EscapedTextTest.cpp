// SPDX-License-Identifier: MIT
#include "app/terminal/EscapedText.h"

#include <gtest/gtest.h>

namespace dorvanel::test {
namespace {

using terminal::displayWidth;
using terminal::escapedForTerminal;
using terminal::shortenedInMiddle;

TEST(EscapedTextTest, APlainNameStaysAsItIs) {
    for (const char* name :
         {"", "a.txt", "-rf", "100%", "it's \"quoted\"", "café", "日本", "😀", "a b", "Cache ƒ"}) {
        EXPECT_EQ(escapedForTerminal(name), name);
    }
}

TEST(EscapedTextTest, WhatCouldMoveTheCursorOrPassForOtherTextIsSpelledOut) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"a\nb", "a\\nb"},
        {"a\rb\tc", "a\\rb\\tc"},
        {"\x1b[31m", "\\x1b[31m"},
        {"\x07\x7f", "\\x07\\x7f"},
        {std::string("a\0b", 3), "a\\x00b"},
        {"back\\slash", "back\\\\slash"},
        {"\xC2\x9B"
         "31m",
         "\\u{9b}31m"},  // a control sequence in one character
        {"\xE2\x80\xAE"
         "txt.exe",
         "\\u{202e}txt.exe"},  // written from right to left
        {"a\xE2\x80\x8B"
         "b",
         "a\\u{200b}b"},                // no width
        {"\xE2\x80\xA8", "\\u{2028}"},  // a line separator
        {"\xEF\xBB\xBF", "\\u{feff}"},
        {"\xEE\x80\x80", "\\u{e000}"},       // private use
        {"\xF3\xA0\x81\x81", "\\u{e0041}"},  // a tag
        {"\xEF\xBF\xBE", "\\u{fffe}"},       // no character
    };
    for (const auto& [bytes, text] : cases) EXPECT_EQ(escapedForTerminal(bytes), text);
}

TEST(EscapedTextTest, BytesThatAreNotUtf8AreSpelledOut) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"caf\xE9", "caf\\xe9"},
        {"\xE9t\xE9", "\\xe9t\\xe9"},
        {"\xC0\xAF", "\\xc0\\xaf"},                    // an overlong slash
        {"\xE0\x80\x8A", "\\xe0\\x80\\x8a"},           // an overlong line feed
        {"\xED\xA0\x80", "\\xed\\xa0\\x80"},           // half of a pair
        {"\xF4\x90\x80\x80", "\\xf4\\x90\\x80\\x80"},  // beyond the last character
        {"\xFF\xFE", "\\xff\\xfe"},
        {"\x80", "\\x80"},
        {"\xF0\x9F\x98", "\\xf0\\x9f\\x98"},  // broken off
        {"\xE6\x97"
         "x",
         "\\xe6\\x97x"},
    };
    for (const auto& [bytes, text] : cases) EXPECT_EQ(escapedForTerminal(bytes), text);
}

TEST(EscapedTextTest, EveryByteAloneBecomesPrintable) {
    for (int byte = 0; byte < 256; ++byte) {
        for (const char c : escapedForTerminal(std::string(1, static_cast<char>(byte)))) {
            EXPECT_TRUE(c >= 0x20 && c < 0x7F) << byte;
        }
    }
}

TEST(EscapedTextTest, WideCharactersTakeTwoColumns) {
    EXPECT_EQ(displayWidth(""), 0);
    EXPECT_EQ(displayWidth("abc"), 3);
    EXPECT_EQ(displayWidth("café"), 4);
    EXPECT_EQ(displayWidth("日本"), 4);
    EXPECT_EQ(displayWidth("😀"), 2);
}

TEST(EscapedTextTest, AWideTextLosesItsMiddle) {
    EXPECT_EQ(shortenedInMiddle("abcdefghij", 10), "abcdefghij");
    EXPECT_EQ(shortenedInMiddle("abcdefghij", 9), "abc...hij");
    EXPECT_EQ(shortenedInMiddle("abcdefghij", 8), "abc...ij");
    EXPECT_EQ(shortenedInMiddle("abcdefghij", 3), "...");
    EXPECT_EQ(shortenedInMiddle("abcdefghij", 2), "ab");
    EXPECT_EQ(shortenedInMiddle("abcdefghij", 0), "");
    EXPECT_EQ(shortenedInMiddle("日本日本日本", 9), "日...本");
}

TEST(EscapedTextTest, AShortenedTextIsNeverWiderThanAsked) {
    const std::string text = "a日b😀cé日本語のファイル.txt";
    for (int columns = 0; columns < 40; ++columns) {
        const std::string shortened = shortenedInMiddle(text, columns);
        EXPECT_LE(displayWidth(shortened), columns);
        EXPECT_EQ(escapedForTerminal(shortened), shortened) << "no character is cut in two";
    }
}

}  // namespace
}  // namespace dorvanel::test
