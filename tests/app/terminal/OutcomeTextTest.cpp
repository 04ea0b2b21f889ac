// SPDX-License-Identifier: MIT
#include "app/terminal/OutcomeText.h"

#include <gtest/gtest.h>

#include <cerrno>

#include "app/terminal/TestTerminal.h"

namespace dorvanel::test {
namespace {

TEST(OutcomeTextTest, WhatVanishedIsNamedAndIsNoSuccess) {
    TestTerminal console;
    Outcome outcome;
    outcome.items = 2;
    outcome.vanished = 1;
    outcome.note("/tmp/letter", "find", ENOENT);
    terminal::tellOutcome(outcome, console.terminal);
    EXPECT_EQ(console.err.str(),
              "dorvanel: /tmp/letter: could not find: No such file or directory\n"
              "dorvanel: 1 item vanished before its turn\n");
    EXPECT_EQ(terminal::statusOf(outcome), terminal::ExitStatus::incomplete);
}

TEST(OutcomeTextTest, AReasonInWordsStandsForTheSystems) {
    TestTerminal console;
    Outcome outcome;
    outcome.notRemoved = 1;
    outcome.note("/tmp/letter", "move", EEXIST, "\"Dorvanel X Items (1)\" is in the way");
    terminal::tellOutcome(outcome, console.terminal);
    EXPECT_EQ(console.err.str(),
              "dorvanel: /tmp/letter: could not move: \"Dorvanel X Items (1)\" is in the way\n"
              "dorvanel: 1 item still there\n");
}

TEST(OutcomeTextTest, WhatReadBackIsCountedAndWhatDidNotIsNoSuccess) {
    TestTerminal console;
    Outcome outcome;
    outcome.filesVerified = 3;
    terminal::tellOutcome(outcome, console.terminal);
    EXPECT_EQ(terminal::statusOf(outcome), terminal::ExitStatus::done);
    EXPECT_TRUE(console.out.str().ends_with("\n3 files verified\n")) << console.out.str();
    outcome.notVerified = 2;
    terminal::tellOutcome(outcome, console.terminal);
    EXPECT_EQ(terminal::statusOf(outcome), terminal::ExitStatus::incomplete);
    EXPECT_EQ(console.err.str(), "dorvanel: 2 files read back otherwise or not at all\n");
}

}  // namespace
}  // namespace dorvanel::test
