// SPDX-License-Identifier: MIT
#include <QComboBox>
#include <QKeyEvent>
#include <QLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QScreen>
#include <QTabWidget>
#include <cstdlib>

#include "DesktopFixture.h"
#include "app/desktop/preferences/PanelPlace.h"

namespace dorvanel::test {
namespace {

class PanelPagesTest : public DesktopFixture {
  protected:
    void SetUp() override {
        ASSERT_TRUE(launch());
        open();
    }
    void open() {
        trigger("showPanelAction");
        settle();
    }
    QDialog& panel() { return *desktop->panel().window(); }
    template <typename Control>
    Control& control(const char* name) {
        return *panel().findChild<Control*>(QLatin1String(name));
    }
    void clickBox(const char* name) { control<QAbstractButton>(name).click(); }
    bool isOn(const char* name) { return control<QAbstractButton>(name).isChecked(); }
    QString page() { return desktop->panel().pages()->currentWidget()->objectName(); }
    QString passes() { return control<QLabel>("passText").text(); }
    QString message() {
        auto& label = control<QLabel>("preferencesMessage");
        return label.isVisible() ? label.text() : QString();
    }
    void press(QWidget& widget, Qt::Key key) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&widget, &event);
        settle();
    }
    QStringList found() {
        QStringList texts;
        auto& list = control<QListWidget>("searchResults");
        for (int row = 0; row < list.count(); ++row) texts << list.item(row)->text();
        return texts;
    }
    void search(const QString& text) { control<QLineEdit>("preferencesSearch").setText(text); }
    static std::unique_ptr<platform::UserDefaults> stored() {
        return openUserDefaults(userDefaultsPath(), [](const auto&) {});
    }
};

TEST_F(PanelPagesTest, EveryPreferenceIsOnOneOfFourPages) {
    QTabWidget& pages = *desktop->panel().pages();
    QStringList titles;
    for (int i = 0; i < pages.count(); ++i) titles << pages.tabText(i);
    EXPECT_EQ(titles, QStringList({"What", "How", "Watching", "Applications"}));
    const auto isOn = [this](const char* page, const char* name) {
        return control<QWidget>(page).isAncestorOf(&control<QWidget>(name));
    };
    EXPECT_TRUE(isOn("whatPage", "shredMentionsCheckbox"));
    EXPECT_TRUE(isOn("howPage", "NSAButton"));
    EXPECT_TRUE(isOn("watchingPage", "hideCheckbox"));
    EXPECT_TRUE(isOn("enablePage", "enableMailsmithCheckbox"));
    for (const char* place : {"backgroundLayout", "todayChoiceLayout"}) {
        EXPECT_NE(panel().findChild<QLayout*>(QLatin1String(place)), nullptr) << place;
    }
}

TEST_F(PanelPagesTest, ASearchListsWhatSaysTheWordsOnWhateverPage) {
    search("trash");
    EXPECT_EQ(found(), QStringList({"What: Trash mailboxes"}));
    EXPECT_FALSE(desktop->panel().pages()->isVisible());
    search("OPERA watched");
    EXPECT_EQ(found(), QStringList({"Applications: Opera"}));
    search("35 passes");
    EXPECT_EQ(found(), QStringList({"How: Passes"}));
    search("nothing says this");
    EXPECT_EQ(found(), QStringList({"No preference says “nothing says this”."}));
    search("");
    EXPECT_TRUE(desktop->panel().pages()->isVisible());
    EXPECT_FALSE(control<QListWidget>("searchResults").isVisible());
}

TEST_F(PanelPagesTest, ReturnShowsWhatWasFoundAndChangesNothing) {
    const PreferenceValues before = *preferences->preferences();
    search("nsa");
    press(control<QLineEdit>("preferencesSearch"), Qt::Key_Return);
    EXPECT_EQ(page(), "howPage");
    EXPECT_EQ(panel().focusWidget(), &control<QWidget>("NSAButton"));
    EXPECT_EQ(control<QLineEdit>("preferencesSearch").text(), "");
    EXPECT_EQ(*preferences->preferences(), before);
    EXPECT_TRUE(panel().isVisible());
}

TEST_F(PanelPagesTest, TheListIsWithinReachOfTheArrowKeys) {
    search("mail");
    ASSERT_GT(found().size(), 1);
    control<QLineEdit>("preferencesSearch").setFocus();
    press(control<QLineEdit>("preferencesSearch"), Qt::Key_Down);
    auto& list = control<QListWidget>("searchResults");
    EXPECT_EQ(panel().focusWidget(), &list);
    press(list, Qt::Key_Down);
    const QString chosen = list.currentItem()->text();
    press(list, Qt::Key_Return);
    auto* shown = qobject_cast<QAbstractButton*>(panel().focusWidget());
    ASSERT_NE(shown, nullptr);
    EXPECT_TRUE(chosen.endsWith(shown->text().remove('&'))) << chosen.toStdString();
}

TEST_F(PanelPagesTest, EscapeClearsTheSearchFirstAndClosesThePanelThen) {
    search("cache");
    press(control<QLineEdit>("preferencesSearch"), Qt::Key_Escape);
    EXPECT_EQ(control<QLineEdit>("preferencesSearch").text(), "");
    EXPECT_TRUE(panel().isVisible());
    search("cache");
    press(control<QListWidget>("searchResults"), Qt::Key_Escape);
    EXPECT_EQ(control<QLineEdit>("preferencesSearch").text(), "");
    EXPECT_TRUE(panel().isVisible());
    press(control<QLineEdit>("preferencesSearch"), Qt::Key_Escape);
    EXPECT_FALSE(panel().isVisible());
}

TEST_F(PanelPagesTest, ThePassesAreSaidAnewWithEveryChoice) {
    EXPECT_EQ(passes(),
              "Each file: 1 to 4 passes of random data, the number drawn anew for each block.");
    control<QComboBox>("numberOfWritesPopUp").setCurrentIndex(4);
    control<QComboBox>("overwritePatternPopUp").setCurrentIndex(3);
    EXPECT_EQ(passes(), "Each file: 3 passes of zeros (0x00).");
    clickBox("DoDSanitizeButton");
    EXPECT_EQ(passes(),
              "Each file: 3 passes: 0x55, 0xAA, random data. (DoD overrules the pattern of the "
              "last passes.)");
    clickBox("revertToDefaultButton");
    EXPECT_TRUE(passes().startsWith("Each file: 1 to 4 passes"));
}

TEST_F(PanelPagesTest, FactorySettingsCanBeUndoneInMemoryAndOnDisk) {
    clickBox("shredHistoryCheckbox");
    control<QComboBox>("numberOfWritesPopUp").setCurrentIndex(5);
    const PreferenceValues before = *preferences->preferences();
    clickBox("revertToDefaultButton");
    EXPECT_EQ(message(), "The factory settings are set.");
    EXPECT_TRUE(control<QPushButton>("undoButton").isVisible());
    ASSERT_TRUE(preferences->saveDefaults());
    EXPECT_FALSE(stored()->boolForKey("ShredHistory"));
    clickBox("undoButton");
    EXPECT_EQ(*preferences->preferences(), before);
    EXPECT_TRUE(isOn("shredHistoryCheckbox"));
    EXPECT_TRUE(stored()->boolForKey("ShredHistory"));
    EXPECT_EQ(stored()->integerForKey("NumberOfWrites"), 5);
    EXPECT_EQ(message(), "");
    EXPECT_FALSE(control<QPushButton>("undoButton").isVisible());
}

TEST_F(PanelPagesTest, UndoGoesWithTheNextChangeAndWithThePanel) {
    clickBox("shredHistoryCheckbox");
    clickBox("revertToDefaultButton");
    ASSERT_TRUE(control<QPushButton>("undoButton").isVisible());
    clickBox("activityLogCheckbox");
    EXPECT_FALSE(control<QPushButton>("undoButton").isVisible());
    clickBox("revertToDefaultButton");
    ASSERT_TRUE(control<QPushButton>("undoButton").isVisible());
    panel().close();
    open();
    EXPECT_EQ(message(), "");
    EXPECT_FALSE(control<QPushButton>("undoButton").isVisible());
}

TEST_F(PanelPagesTest, FactorySettingsThatAreInForceAlreadyOfferNoUndo) {
    clickBox("revertToDefaultButton");
    EXPECT_EQ(message(), "");
    EXPECT_FALSE(control<QPushButton>("undoButton").isVisible());
}

TEST_F(PanelPagesTest, RevertBringsBackWhatWasWhenThePanelWasOpened) {
    panel().close();
    set("ShredHistory", true);
    open();
    EXPECT_FALSE(control<QPushButton>("revertButton").isEnabled());
    clickBox("shredHistoryCheckbox");
    clickBox("enableOperaCheckbox");
    clickBox("enableMozillaCheckbox");
    EXPECT_TRUE(control<QPushButton>("revertButton").isEnabled());
    clickBox("revertButton");
    EXPECT_TRUE(isOn("shredHistoryCheckbox"));
    for (const char* box :
         {"enableOperaCheckbox", "enableMozillaCheckbox", "enableNetscapeCheckbox"}) {
        EXPECT_TRUE(isOn(box)) << box;
    }
    EXPECT_TRUE(stored()->boolForKey("ShredHistory"));
    EXPECT_FALSE(stored()->hasObjectForKey("EnabledBrowsers")) << "as if it had never been changed";
    EXPECT_FALSE(control<QPushButton>("revertButton").isEnabled());
}

TEST_F(PanelPagesTest, RevertBringsBackTheStoredListInItsOrder) {
    ASSERT_TRUE(preferences->enableChanged("Safari"));
    ASSERT_TRUE(preferences->enableChanged("Safari"));
    const auto before = *stored()->arrayForKey("EnabledBrowsers");
    panel().close();
    open();
    clickBox("enableCaminoCheckbox");
    clickBox("revertButton");
    EXPECT_EQ(*stored()->arrayForKey("EnabledBrowsers"), before);
}

TEST_F(PanelPagesTest, ChangingSomethingBackLeavesNothingToRevert) {
    clickBox("shredHistoryCheckbox");
    EXPECT_TRUE(control<QPushButton>("revertButton").isEnabled());
    clickBox("shredHistoryCheckbox");
    EXPECT_FALSE(control<QPushButton>("revertButton").isEnabled());
    clickBox("enableOperaCheckbox");
    clickBox("enableOperaCheckbox");
    EXPECT_FALSE(control<QPushButton>("revertButton").isEnabled());
}

TEST_F(PanelPagesTest, TheWindowsProgressStaysVisibleBesideThePanel) {
    panel().close();
    find<QPushButton>("welcomeDismissButton")->click();
    window().move(0, 150);  // the middle of the screen is below its progress
    settle();
    open();
    const QRect frame = panel().frameGeometry();
    for (const char* name : {"runMessage", "shreddingProgress"}) {
        auto* widget = find<QWidget>(name);
        const QRect place(widget->mapToGlobal(QPoint()), widget->size());
        EXPECT_FALSE(frame.intersects(place)) << name;
    }
    const QRect screen = panel().screen()->availableGeometry();
    EXPECT_TRUE(screen.contains(frame));
    EXPECT_LE(std::abs(frame.center().x() - screen.center().x()), 1) << "no further than needed";
}

TEST(PanelPlaceTest, ItMovesTheShortestWayThatCoversNothing) {
    const QRect screen(0, 0, 1600, 1000), keep(400, 200, 600, 60);
    const auto shifted = [&](const QRect& frame) {
        return frame.translated(desktop::shiftToKeepVisible(frame, keep, screen));
    };
    EXPECT_EQ(shifted({400, 300, 500, 400}), QRect(400, 300, 500, 400)) << "covers nothing";
    EXPECT_EQ(shifted({400, 230, 500, 400}), QRect(400, 260, 500, 400)) << "down";
    EXPECT_EQ(shifted({400, 100, 500, 110}), QRect(400, 90, 500, 110)) << "up";
    EXPECT_EQ(shifted({950, 10, 500, 900}), QRect(1000, 10, 500, 900)) << "to the right";
}

TEST(PanelPlaceTest, ItStaysWhereTheScreenIsTooSmall) {
    EXPECT_EQ(desktop::shiftToKeepVisible({50, 20, 540, 344}, {0, 60, 683, 60}, {0, 0, 683, 384}),
              QPoint());
}

}  // namespace
}  // namespace dorvanel::test
