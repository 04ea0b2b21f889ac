// SPDX-License-Identifier: MIT
#include <QTableView>
#include <filesystem>

#include "app/desktop/DesktopFixture.h"

namespace dorvanel::test {
namespace {

/// What launchers and file managers hand over to be asked about.
class AskingTest : public DesktopFixture {
  protected:
    AskingTest() { writeFile(file, "x"); }

    /// Answers the question that comes.
    void answer(bool agrees) {
        onQuestion([this, agrees](QDialog& question) {
            isAsked = true;
            const auto* table = question.findChild<QTableView*>("itemsTable");
            EXPECT_TRUE(table->model()->index(0, 0).data().toString().contains("letter.txt"));
            EXPECT_TRUE(window().isVisible());
            press(question, agrees ? "shredPlannedButton" : "cancelButton");
        });
    }
    void waitForQuestion() {
        waitUntil([this] { return isAsked; });
        settle();
    }

    std::string file = home / "letter.txt";
    bool isAsked = false;
};

TEST_F(AskingTest, TheRunningProgramAsksAndShredsOnlyWhenTheAnswerIsYes) {
    ASSERT_TRUE(launch());
    answer(false);
    desktop->instanceHandlers().ask({file});
    EXPECT_FALSE(isAsked) << "who hands the files over waits for no person";
    waitForQuestion();
    EXPECT_EQ(readFile(file), "x");

    isAsked = false;
    answer(true);
    desktop->instanceHandlers().ask({file});
    waitForQuestion();
    waitForEnd();
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_TRUE(desktop->documents().empty());
}

TEST_F(AskingTest, AtAFirstLaunchTheQuestionComesWhenTheLaunchIsThrough) {
    make();
    answer(false);
    desktop->instanceHandlers().ask({file});
    settle();
    EXPECT_FALSE(isAsked);
    ASSERT_TRUE(desktop->launch({}));
    waitForQuestion();
    EXPECT_EQ(readFile(file), "x");
}

TEST_F(AskingTest, AHiddenProgramComesForwardToAsk) {
    ASSERT_TRUE(launch());
    window().hide();
    answer(false);
    desktop->instanceHandlers().ask({file});
    waitForQuestion();
    EXPECT_EQ(readFile(file), "x");
}

TEST_F(AskingTest, WhileARunIsInProgressNothingIsAskedAndTheWindowSaysSo) {
    addSafariCache();
    set("ConfirmShredding", false);
    draws.hold();
    ASSERT_TRUE(launch());
    trigger("shredAndNothingAction");
    desktop->instanceHandlers().ask({file});
    waitUntil([this] {
        return desktop->mainWindow().message() == "Not started: a run is still in progress.";
    });
    draws.release();
    waitForEnd();
    EXPECT_EQ(readFile(file), "x");
}

TEST_F(AskingTest, WhatIsNoFileOfThisMachineIsRefused) {
    ASSERT_TRUE(launch());
    desktop->instanceHandlers().ask({});
    waitUntil([this] { return desktop->mainWindow().failures().count() == 1; });
    EXPECT_EQ(desktop->mainWindow().failures().message(),
              "Only files and folders of this computer can be shredded.");
}

}  // namespace
}  // namespace dorvanel::test
