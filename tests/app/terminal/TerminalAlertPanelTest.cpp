// SPDX-License-Identifier: MIT
#include "app/terminal/TerminalAlertPanel.h"

#include <gtest/gtest.h>

#include <sstream>

#include "support/FakeAnswers.h"

namespace dorvanel::test {
namespace {

using terminal::TerminalAlertPanel;
using ui::AlertButton;

class TerminalAlertPanelTest : public ::testing::Test {
  protected:
    /// Asks "No" (the default one) or "Yes" and gives these lines to the person's hand.
    AlertButton answer(const std::string& lines,
                       TerminalAlertPanel::Answers answers = TerminalAlertPanel::Answers::asked) {
        in.str(lines);
        TerminalAlertPanel panel(in, err, answers);
        return panel.runAlertPanel("Title", "Sure?", "No", "Yes", "");
    }

    FakeAnswers in;
    std::ostringstream err;
};

TEST_F(TerminalAlertPanelTest, TitleMessageAndButtonsAreShownTheDefaultOneInBrackets) {
    answer("yes\n");
    EXPECT_EQ(err.str(), "Title\nSure?\n[No] Yes: ");
}

TEST_F(TerminalAlertPanelTest, AnAnswerIsATitleOrItsFirstLetterInAnyCase) {
    for (const char* yes : {"Yes\n", "yes\n", "YES\n", "y\n", "Y\n", " y \r\n", "y"}) {
        EXPECT_EQ(answer(yes), AlertButton::alternateButton) << yes;
    }
    for (const char* no : {"No\n", "nO\n", "n\n", "N\n"}) {
        EXPECT_EQ(answer(no), AlertButton::defaultButton) << no;
    }
}

TEST_F(TerminalAlertPanelTest, AnEmptyLineAndTheEndOfTheInputMeanTheDefaultButton) {
    EXPECT_EQ(answer("\nyes\n"), AlertButton::defaultButton);
    EXPECT_EQ(answer("  \nyes\n"), AlertButton::defaultButton);
    EXPECT_EQ(answer(""), AlertButton::defaultButton);
}

TEST_F(TerminalAlertPanelTest, AnythingElseIsAskedAgain) {
    EXPECT_EQ(answer("yep\nye\nmaybe\nyes\n"), AlertButton::alternateButton);
    EXPECT_EQ(err.str(), "Title\nSure?\n[No] Yes: [No] Yes: [No] Yes: [No] Yes: ");
    EXPECT_EQ(answer("nope"), AlertButton::defaultButton);
}

TEST_F(TerminalAlertPanelTest, OneAnswerTakesOneLine) {
    EXPECT_EQ(answer("y\nnext\n"), AlertButton::alternateButton);
    std::string rest;
    in.readLine(rest);
    EXPECT_EQ(rest, "next");
}

TEST_F(TerminalAlertPanelTest, AssumedAnswersAreYesAndOkAndReadNothing) {
    EXPECT_EQ(answer("n\n", TerminalAlertPanel::Answers::assumed), AlertButton::alternateButton);
    EXPECT_EQ(err.str(), "Title\nSure?\n");
    TerminalAlertPanel panel(in, err, TerminalAlertPanel::Answers::assumed);
    EXPECT_EQ(panel.runAlertPanel("T", "M", "Cancel", "OK", ""), AlertButton::alternateButton);
    EXPECT_EQ(panel.runAlertPanel("T", "M", "OK", "", ""), AlertButton::defaultButton);
    EXPECT_EQ(panel.runAlertPanel("T", "M", "Quit", "Hide", ""), AlertButton::defaultButton);
    std::string rest;
    in.readLine(rest);
    EXPECT_EQ(rest, "n");
}

TEST_F(TerminalAlertPanelTest, AnAlertWithOneButtonTakesAnyLine) {
    in.str("whatever\n");
    TerminalAlertPanel panel(in, err, TerminalAlertPanel::Answers::asked);
    EXPECT_EQ(panel.runAlertPanel("T", "M", "OK", "", ""), AlertButton::defaultButton);
    EXPECT_EQ(err.str(), "T\nM\n[OK]: ");
}

TEST_F(TerminalAlertPanelTest, AThirdButtonCanBeChosen) {
    in.str("c\n");
    TerminalAlertPanel panel(in, err, TerminalAlertPanel::Answers::asked);
    EXPECT_EQ(panel.runAlertPanel("T", "M", "Quit", "Hide", "Cancel"), AlertButton::otherButton);
}

}  // namespace
}  // namespace dorvanel::test
