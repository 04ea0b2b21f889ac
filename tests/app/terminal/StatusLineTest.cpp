// SPDX-License-Identifier: MIT
#include "app/terminal/StatusLine.h"

#include <gtest/gtest.h>

#include "app/terminal/TestTerminal.h"

namespace dorvanel::test {
namespace {

TEST(StatusLineTest, EachNewTextIsOneLineAndTheSameAgainIsNone) {
    TestTerminal memory;
    terminal::StatusLine status(memory.terminal);
    for (const char* text : {"one", "one", "two", "one"}) {
        status.setStringValue(text);
        status.display();
    }
    EXPECT_EQ(memory.out.str(), "one\ntwo\none\n");
    EXPECT_EQ(memory.err.str(), "");
}

}  // namespace
}  // namespace dorvanel::test
