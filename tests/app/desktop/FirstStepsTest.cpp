// SPDX-License-Identifier: MIT
#include "DesktopFixture.h"
#include "app/desktop/help/MediumSentence.h"

namespace dorvanel::test {
namespace {

using Kind = platform::Medium::Kind;

class FirstStepsTest : public DesktopFixture {
  protected:
    QString text(const char* label) { return find<QLabel>(label)->text(); }
    bool isShown() { return find<QWidget>("welcomeBox")->isVisible(); }
};

TEST_F(FirstStepsTest, TheyAreShownUntilSomebodyHasReadThem) {
    ASSERT_TRUE(launch());
    EXPECT_TRUE(isShown());
    desktop.reset();
    ASSERT_TRUE(launch());
    EXPECT_TRUE(isShown()) << "nobody has said that it was read";
    find<QPushButton>("welcomeDismissButton")->click();
    EXPECT_FALSE(isShown());
    EXPECT_TRUE(
        openUserDefaults(userDefaultsPath(), [](const auto&) {})->boolForKey("WelcomeDismissed"));
    desktop.reset();
    ASSERT_TRUE(launch());
    EXPECT_FALSE(isShown());
}

TEST_F(FirstStepsTest, TheHelpMenuBringsThemBack) {
    defaults->setBool(true, "WelcomeDismissed");
    ASSERT_TRUE(launch());
    EXPECT_FALSE(isShown());
    trigger("firstStepsAction");
    EXPECT_TRUE(isShown());
}

TEST_F(FirstStepsTest, TheyTakeNoKeyboardAndLeaveItToNoCommand) {
    ASSERT_TRUE(launch());
    EXPECT_EQ(qobject_cast<QAbstractButton*>(window().focusWidget()), nullptr);
    auto* button = find<QPushButton>("welcomeDismissButton");
    button->setFocus();
    button->click();
    EXPECT_EQ(qobject_cast<QAbstractButton*>(window().focusWidget()), nullptr);
}

TEST_F(FirstStepsTest, TheySayWhatStartsByItselfAsThePreferencesAre) {
    ASSERT_TRUE(launch());
    EXPECT_TRUE(text("welcomeWatch").endsWith("you are asked first."));
    set("ConfirmShredding", false);
    trigger("firstStepsAction");
    EXPECT_TRUE(text("welcomeWatch").contains("without a question"));
    set("BrowserWatch", false);
    trigger("firstStepsAction");
    EXPECT_TRUE(text("welcomeWatch").startsWith("Nothing starts by itself"));
}

TEST_F(FirstStepsTest, TheySayWhatTheHomeFolderLiesOn) {
    medium.media[platform::homeDirectory()] = {Kind::solidState, ""};
    ASSERT_TRUE(launch());
    EXPECT_TRUE(text("welcomeMedium").startsWith("Your home folder is on a solid-state drive"));
    medium.media[platform::homeDirectory()] = {Kind::copyOnWrite, "btrfs"};
    trigger("firstStepsAction");
    EXPECT_TRUE(text("welcomeMedium").startsWith("Your home folder is on btrfs"));
    medium.media.clear();
    trigger("firstStepsAction");
    EXPECT_TRUE(text("welcomeMedium").startsWith("In your home folder, as far as can be seen"));
}

TEST_F(FirstStepsTest, EveryMediumHasASentenceOfItsOwn) {
    QStringList sentences;
    for (const Kind kind : {Kind::overwritable, Kind::copyOnWrite, Kind::overlay, Kind::network,
                            Kind::userSpace, Kind::solidState}) {
        sentences << desktop::sentenceAboutHome({kind, "somefs"});
        const bool isNamed = kind != Kind::overwritable && kind != Kind::solidState;
        EXPECT_EQ(sentences.last().contains("somefs"), isNamed) << sentences.last().toStdString();
    }
    EXPECT_EQ(sentences.removeDuplicates(), 0);
}

TEST_F(FirstStepsTest, TheirLinkOpensThePageAboutIt) {
    ASSERT_TRUE(launch());
    find<QPushButton>("welcomeLimitsButton")->click();
    EXPECT_TRUE(desktop->help().isVisible());
    EXPECT_EQ(desktop->help().page(), "limits.html");
}

}  // namespace
}  // namespace dorvanel::test
