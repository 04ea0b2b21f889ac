// SPDX-License-Identifier: MIT
#include "targets/SqlLiteral.h"

#include <gtest/gtest.h>

namespace dorvanel::test {
namespace {

TEST(SqlLiteralTest, NumbersTextsBlobsAndNullAreLiterals) {
    for (const char* text : {"1",       "-1",   "+7",      "007",      "9223372036854775808",
                             "1.5",     "1.",   ".5",      "-.5e3",    "1e9",
                             "1E+9",    "2e-3", "0x1F",    "0Xab",     "''",
                             "'a'",     "''''", "'it''s'", "'1 or 1'", "x''",
                             "X'0aFF'", "NULL", "null",    " 5 ",      "\t'a'\n"}) {
        EXPECT_TRUE(isSqlLiteral(text)) << text;
    }
}

TEST(SqlLiteralTest, WhateverMayDoMoreThanStandForAValueIsNone) {
    for (const char* text :
         {"",       " ",           "mailbox",    "ROWID",     "true",      "current_date",
          "1 or 1", "1;",          "1--",        "--1",       "- 1",       "1+1",
          "(1)",    "\"mailbox\"", "[mailbox]",  "`mailbox`", "'a",        "a'",
          "'",      "'a'b'",       "'a' or 'b'", "'a'';",     "x'0'",      "x'0g'",
          "x",      "x'00''00'",   "0x",         "0xg",       "1e",        "1e+",
          ".",      "+",           "e5",         "1_000",     "null or 1", "nul",
          "?",      ":a",          "'a'||'b'",   "1 2",       "-'a'"}) {
        EXPECT_FALSE(isSqlLiteral(text)) << text;
    }
}

}  // namespace
}  // namespace dorvanel::test
