// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include "app/desktop/DesktopFixture.h"

namespace dorvanel::test {
namespace {

/// What the window says while nothing goes on.
class IdleLineTest : public DesktopFixture {
  protected:
    QString message() { return desktop->mainWindow().message(); }
    /// Lets the line look, as its timer would.
    void beatUntilKnown() {
        for (int i = 0; i < 3; ++i) desktop->plans().idleLine.beat();
        waitUntil([this] { return !desktop->plans().looker.isAtWork(); });
    }
};

TEST_F(IdleLineTest, ItSaysWhatARunWouldTakeOnceThatIsKnown) {
    addSafariCache();
    ASSERT_TRUE(launch());
    EXPECT_EQ(message(), "Ready.");
    beatUntilKnown();
    EXPECT_EQ(message(), "1 item, 6 bytes would be shredded.");
}

TEST_F(IdleLineTest, ItFollowsWhatIsChosenOnceThatStandsStill) {
    addSafariCache();
    ASSERT_TRUE(launch());
    beatUntilKnown();
    set("ShredCache", false);
    desktop->plans().idleLine.beat();
    EXPECT_EQ(message(), "Ready.") << "it is not known yet";
    EXPECT_FALSE(desktop->plans().looker.isAtWork());
    beatUntilKnown();
    EXPECT_EQ(message(), "Nothing to shred now.");
    defaults->setDictionary({{"nobody-describes-it", {"cache"}}}, "Traces");
    desktop->plans().idleLine.beat();
    EXPECT_EQ(message(), "Ready.");
}

TEST_F(IdleLineTest, AResultStaysUntilThePersonDoesSomethingElse) {
    addSafariCache();
    set("ConfirmShredding", false);
    ASSERT_TRUE(launch());
    beatUntilKnown();
    trigger("shredAndNothingAction");
    waitForEnd();
    EXPECT_TRUE(message().startsWith("Shredded: 1 file"));
    beatUntilKnown();
    EXPECT_TRUE(message().startsWith("Shredded: 1 file")) << message().toStdString();
    onQuestion(decline);
    trigger("previewAction");
    EXPECT_EQ(message(), "Nothing to shred now.") << "what the look after the run has found";
}

TEST_F(IdleLineTest, ARequestEndsTheLookAndAnotherFollowsIt) {
    addSafariCache();
    set("ConfirmShredding", false);
    ASSERT_TRUE(launch());
    std::atomic<bool> isHeld = true;
    desktop->plans().services->mountPoints = [] { return std::vector<std::string>(); };
    desktop->plans().services->folders = [&isHeld] {
        while (isHeld) std::this_thread::yield();
        return catalogue::Folders{};
    };
    for (int i = 0; i < 3; ++i) desktop->plans().idleLine.beat();
    EXPECT_TRUE(desktop->plans().looker.isAtWork());
    trigger("shredAndNothingAction");
    waitForEnd();
    EXPECT_TRUE(message().startsWith("Shredded: 1 file")) << "the run did not wait";
    isHeld = false;
    waitUntil([this] { return !desktop->plans().looker.isAtWork(); });
    EXPECT_TRUE(message().startsWith("Shredded: 1 file"));
    beatUntilKnown();
    desktop->plans().idleLine.forget();
}

TEST_F(IdleLineTest, WhileAQuestionWaitsNobodyLooks) {
    addSafariCache();
    ASSERT_TRUE(launch());
    desktop->plans().idleLine.beat();
    onAlert([this](QMessageBox& box) {
        for (int i = 0; i < 3; ++i) desktop->plans().idleLine.beat();
        EXPECT_FALSE(desktop->plans().looker.isAtWork());
        click(box, "No");
    });
    trigger("shredAndNothingAction");
    EXPECT_EQ(message(), "Cancelled. Nothing was shredded.");
}

TEST_F(IdleLineTest, WithoutPreferencesItSaysNothingOfWhatWouldBeShredded) {
    addSafariCache();
    writeFile(userDefaultsPath(), "<plist version=\"1.0\"><dict><key>ShredCache</key><fal");
    preferences.reset();
    defaults = openUserDefaults(userDefaultsPath(), [](const auto&) {});
    preferences = sharedPreferences(*defaults);
    ASSERT_TRUE(launch());
    for (int i = 0; i < 3; ++i) desktop->plans().idleLine.beat();
    EXPECT_FALSE(desktop->plans().looker.isAtWork());
}

}  // namespace
}  // namespace dorvanel::test
