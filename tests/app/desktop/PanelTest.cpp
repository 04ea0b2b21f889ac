// SPDX-License-Identifier: MIT
#include <QAccessible>
#include <QComboBox>
#include <QScrollArea>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QWheelEvent>
#include <filesystem>
#include <map>
#include <tuple>

#include "DesktopFixture.h"
#include "app/desktop/PanelControls.h"

namespace dorvanel::test {
namespace {

using ::testing::ElementsAre;

class PanelTest : public DesktopFixture {
  protected:
    void SetUp() override {
        ASSERT_TRUE(launch());
        trigger("showPanelAction");
        ASSERT_NE(desktop->panel().window(), nullptr);
    }
    template <typename Control>
    Control& control(const char* name) {
        return *desktop->panel().window()->findChild<Control*>(QLatin1String(name));
    }
    void showPage(const char* name) {
        desktop->panel().pages()->setCurrentWidget(&control<QWidget>(name));
        settle();
    }
    void clickBox(const char* name) { control<QAbstractButton>(name).click(); }
    bool isOn(const char* name) { return control<QAbstractButton>(name).isChecked(); }
    /// The file as it is now, read anew.
    static std::unique_ptr<platform::UserDefaults> stored() {
        return openUserDefaults(userDefaultsPath(), [](const auto&) {});
    }
    void storeNumber(IndexKey key, int number) {
        preferences->displayedValues.insert_or_assign(key, Number::fromInt(number));
        ASSERT_TRUE(preferences->commitDisplayedValues());
        desktop->panel().reallyupdateUI();
    }
    void choose(const char* popUp, int index) { control<QComboBox>(popUp).setCurrentIndex(index); }
};

TEST_F(PanelTest, AClickIsInTheUsersDefaultsBeforeItReturns) {
    clickBox("shredHistoryCheckbox");
    EXPECT_TRUE(stored()->boolForKey("ShredHistory"));
    EXPECT_TRUE(preferences->boolForKey("ShredHistory"));
    clickBox("shredHistoryCheckbox");
    EXPECT_FALSE(stored()->hasObjectForKey("ShredHistory"));
}

TEST_F(PanelTest, ABoxThatAssistiveTechnologyTogglesIsSavedToo) {
    const auto toggle = [this](const char* name) {
        auto* box = QAccessible::queryAccessibleInterface(&control<QAbstractButton>(name));
        box->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    };
    toggle("activityLogCheckbox");
    EXPECT_TRUE(stored()->boolForKey("ActivityLog"));
    toggle("enableSafariCheckbox");
    EXPECT_EQ(stored()->arrayForKey("EnabledBrowsers")->front(), "Internet Explorer");
}

TEST_F(PanelTest, EveryButtonShowsAndChangesItsOwnPreference) {
    for (const auto& each : desktop::panelButtons) {
        const bool before = preferences->boolForKey(each.key);
        EXPECT_EQ(isOn(each.outlet), before) << each.outlet;
        control<QAbstractButton>(each.outlet).setEnabled(true);
        const PreferenceValues others = *preferences->preferences();
        clickBox(each.outlet);
        PreferenceValues expected = others;
        expected.insert_or_assign(each.key, Number::fromBool(!before));
        EXPECT_EQ(*preferences->preferences(), expected) << each.outlet;
    }
}

TEST_F(PanelTest, EveryEnableBoxIsTitledAsItsApplication) {
    std::vector<std::string> titles;
    for (const SupportedApplication* application : listOrder) {
        titles.push_back(
            control<QAbstractButton>(application->checkBox.data()).text().toStdString());
    }
    EXPECT_THAT(titles,
                ElementsAre("Safari", "Internet Explorer", "Mozilla", "Netscape", "iCab", "Omniweb",
                            "Opera", "Camino", "Firefox", "Apple Mail", "Eudora", "Mailsmith"));
}

TEST_F(PanelTest, MozillaAndNetscapeMoveTogether) {
    clickBox("enableMozillaCheckbox");
    EXPECT_FALSE(isOn("enableMozillaCheckbox"));
    EXPECT_FALSE(isOn("enableNetscapeCheckbox"));
    EXPECT_THAT(*stored()->arrayForKey("EnabledBrowsers"),
                ElementsAre("Safari", "Internet Explorer", "iCab", "Omniweb", "Opera", "Camino",
                            "Firefox", "Apple Mail", "Eudora", "Mailsmith"));
    clickBox("enableNetscapeCheckbox");
    EXPECT_TRUE(isOn("enableMozillaCheckbox"));
    EXPECT_TRUE(isOn("enableNetscapeCheckbox"));
    EXPECT_THAT(*stored()->arrayForKey("EnabledBrowsers"),
                ElementsAre("Safari", "Internet Explorer", "iCab", "Omniweb", "Opera", "Camino",
                            "Firefox", "Apple Mail", "Eudora", "Mailsmith", "Netscape", "Mozilla"));
}

TEST_F(PanelTest, AnApplicationThatIsEnabledAgainGoesToTheEndOfTheList) {
    clickBox("enableSafariCheckbox");
    EXPECT_THAT(*stored()->arrayForKey("EnabledBrowsers"),
                ElementsAre("Internet Explorer", "Mozilla", "Netscape", "iCab", "Omniweb", "Opera",
                            "Camino", "Firefox", "Apple Mail", "Eudora", "Mailsmith"));
    clickBox("enableSafariCheckbox");
    EXPECT_EQ(stored()->arrayForKey("EnabledBrowsers")->back(), "Safari");
    EXPECT_EQ(stored()->arrayForKey("EnabledBrowsers")->size(), 12U);
}

TEST_F(PanelTest, MailsmithsBoxWaitsForTheTemplateAndKeepsItsState) {
    const auto color = [this](const char* name) {
        QLabel& label = control<QLabel>(name);
        return label.palette().color(label.foregroundRole());
    };
    EXPECT_FALSE(control<QAbstractButton>("shredMailsmithSpamCheckbox").isEnabled());
    const QColor greyText = color("shredMailsmith1Textbox");
    EXPECT_EQ(greyText.saturation(), 0);
    EXPECT_EQ(color("shredMailsmith2Textbox").saturation(), 0);
    EXPECT_NE(color("shredMailsmith2Textbox"), greyText) << "dark grey among light grey";
    EXPECT_EQ(color("shredMailsmith3Textbox"), greyText);

    set("ShredMailsmithSpam", true);
    desktop->panel().reallyupdateUI();
    EXPECT_TRUE(isOn("shredMailsmithSpamCheckbox")) << "disabled, it still shows what is stored";
    EXPECT_FALSE(control<QAbstractButton>("shredMailsmithSpamCheckbox").isEnabled());

    std::filesystem::create_directories(home.path() / "Mail/Mailsmith User Data/Mail/(dorvanelx)");
    desktop->panel().window()->close();
    trigger("showPanelAction");
    EXPECT_TRUE(control<QAbstractButton>("shredMailsmithSpamCheckbox").isEnabled());
    const QColor middle = color("shredMailsmith2Textbox");
    EXPECT_GT(middle.red(), middle.green() + middle.blue()) << "red";
    const QColor text = desktop->panel().window()->palette().color(QPalette::WindowText);
    EXPECT_EQ(color("shredMailsmith1Textbox"), text);
    EXPECT_EQ(color("shredMailsmith3Textbox"), text);
}

TEST_F(PanelTest, FactorySettingsBringBackEverythingButTheApplications) {
    for (const char* name : {"shredCacheCheckbox", "shredHistoryCheckbox", "DoDSanitizeButton",
                             "browserWatchCheckbox", "enableOperaCheckbox"}) {
        clickBox(name);
    }
    choose("numberOfWritesPopUp", 5);
    choose("overwritePatternPopUp", 3);
    clickBox("revertToDefaultButton");
    for (const auto& each : desktop::panelButtons) {
        const std::string key(each.key.name());
        const bool on = key == "ShredCache" || key == "ShredMailTrash" || key == "BrowserWatch" ||
                        key == "ConfirmShredding";
        EXPECT_EQ(isOn(each.outlet), on) << each.outlet;
    }
    EXPECT_EQ(control<QComboBox>("numberOfWritesPopUp").currentIndex(), 0);
    EXPECT_EQ(control<QComboBox>("overwritePatternPopUp").currentIndex(), 0);
    EXPECT_FALSE(isOn("enableOperaCheckbox"));
    EXPECT_TRUE(preferences->boolForKey("ShredCache"));
}

TEST_F(PanelTest, RevertTakesBackValuesThatWereOnlyShown) {
    preferences->displayedValues.insert_or_assign("ShredCache", Number::fromBool(false));
    desktop->panel().reallyupdateUI();
    ASSERT_FALSE(isOn("shredCacheCheckbox"));
    clickBox("revertButton");
    EXPECT_TRUE(isOn("shredCacheCheckbox"));
}

TEST_F(PanelTest, SwitchingBrowserWatchOffIsSeenByTheNextPoll) {
    ASSERT_TRUE(desktop->controller().browserWatch().isWatching());
    clickBox("browserWatchCheckbox");
    desktop->controller().browserWatch().HandleTimer(nullptr);
    EXPECT_FALSE(desktop->controller().browserWatch().isWatching());
    EXPECT_EQ(find<QLabel>("browserWatchStatusTextbox")->text(),
              "Not enabled. Use preferences to enable...");
}

TEST_F(PanelTest, ThePopUpsHaveAnItemForEachIndexAndASeparatorThatCannotBeChosen) {
    const std::pair<const char*, int> popUps[] = {{"numberOfWritesPopUp", 17},
                                                  {"overwritePatternPopUp", 7}};
    for (const auto& [name, items] : popUps) {
        auto& box = control<QComboBox>(name);
        EXPECT_EQ(box.count(), items) << name;
        const auto* model = qobject_cast<QStandardItemModel*>(box.model());
        ASSERT_NE(model, nullptr);
        EXPECT_FALSE(model->item(1)->isEnabled()) << name;
        box.setFocus();
        QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
        QCoreApplication::sendEvent(&box, &down);
        EXPECT_EQ(box.currentIndex(), 2) << name;
    }
    EXPECT_EQ(preferences->intForKey("NumberOfWrites"), 2);
    const auto& passes = control<QComboBox>("numberOfWritesPopUp");
    EXPECT_EQ(passes.itemText(2), "1 pass");
    EXPECT_EQ(passes.itemText(11), "10 passes");
    EXPECT_EQ(passes.itemText(12), "15 passes");
    EXPECT_EQ(passes.itemText(16), "35 passes");
}

TEST_F(PanelTest, AStoredNumberThatIsNoItemShowsWhatWillBeDoneAndIsKeptByOtherClicks) {
    struct Case {
        const char* popUp;
        IndexKey key;
        int number;
        const char* text;
    };
    const Case cases[] = {
        {"numberOfWritesPopUp", "NumberOfWrites", 1, "65536 passes (stored: 1)"},
        {"numberOfWritesPopUp", "NumberOfWrites", 17, "16 passes (stored: 17)"},
        {"numberOfWritesPopUp", "NumberOfWrites", -3, "65532 passes (stored: -3)"},
        {"numberOfWritesPopUp", "NumberOfWrites", 65538, "1 pass (stored: 65538)"},
        {"overwritePatternPopUp", "OverwritePattern", 9, "As used last, or zeros (stored: 9)"},
        {"overwritePatternPopUp", "OverwritePattern", 1, "As used last, or zeros (stored: 1)"},
    };
    for (const auto& [name, key, number, text] : cases) {
        storeNumber(key, number);
        auto& popUp = control<QComboBox>(name);
        EXPECT_EQ(popUp.currentText(), text);
        clickBox("shredHistoryCheckbox");
        EXPECT_EQ(preferences->intForKey(key), number);
        EXPECT_EQ(stored()->integerForKey(std::string(key.name())), number);
    }
}

TEST_F(PanelTest, TheItemOfAnUnknownNumberCannotBeChosenAndGoesWithTheNumber) {
    storeNumber("OverwritePattern", 9);
    storeNumber("NumberOfWrites", 1);
    auto& popUp = control<QComboBox>("overwritePatternPopUp");
    const auto* model = qobject_cast<QStandardItemModel*>(popUp.model());
    EXPECT_FALSE(model->item(popUp.count() - 1)->isEnabled());
    choose("overwritePatternPopUp", 3);
    EXPECT_EQ(stored()->integerForKey("OverwritePattern"), 3);
    EXPECT_EQ(stored()->integerForKey("NumberOfWrites"), 1) << "the other was not clicked";
    trigger("showPanelAction");
    EXPECT_EQ(popUp.count(), 7);
    EXPECT_EQ(popUp.currentIndex(), 3);
}

TEST_F(PanelTest, TheWheelChangesNoPopUp) {
    auto& box = control<QComboBox>("numberOfWritesPopUp");
    QWheelEvent wheel(QPointF(5, 5), box.mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&box, &wheel);
    EXPECT_EQ(box.currentIndex(), 0);
}

TEST_F(PanelTest, TheFourWaysOfOverwritingAreIndependent) {
    clickBox("DoDSanitizeButton");
    clickBox("NSAButton");
    choose("numberOfWritesPopUp", 16);
    choose("overwritePatternPopUp", 6);
    EXPECT_TRUE(preferences->prefsDoDSanitize());
    EXPECT_TRUE(preferences->prefsNSA());
    EXPECT_EQ(stored()->integerForKey("NumberOfWrites"), 16);
    EXPECT_EQ(stored()->integerForKey("OverwritePattern"), 6);
    for (const char* name : {"numberOfWritesPopUp", "overwritePatternPopUp"}) {
        EXPECT_TRUE(control<QComboBox>(name).isEnabled());
    }
}

TEST_F(PanelTest, TheEnableBoxesStandInTwoColumns) {
    showPage("enablePage");
    std::map<int, int> columns;
    for (const SupportedApplication& application : applications) {
        ++columns[control<QAbstractButton>(application.checkBox.data()).x()];
    }
    ASSERT_EQ(columns.size(), 2U);
    EXPECT_EQ(columns.begin()->second, 6);
}

TEST_F(PanelTest, TheFocusGoesDownThePagesThenAlongTheButtons) {
    clickBox("shredHistoryCheckbox");  // there is something to revert
    std::vector<std::string> order;
    QWidget* first = &control<QWidget>("shredCacheCheckbox");
    QWidget* at = first;
    do {
        const bool takesFocus =
            (at->focusPolicy() & Qt::TabFocus) != 0 && at->isEnabled() && !at->isHidden();
        const bool isControl = qobject_cast<QAbstractButton*>(at) || qobject_cast<QComboBox*>(at);
        if (takesFocus && isControl) order.push_back(at->objectName().toStdString());
        at = at->nextInFocusChain();
    } while (at != first);
    std::vector<std::string> expected = {"shredCacheCheckbox",
                                         "shredHistoryCheckbox",
                                         "shredIEDownloadCacheCheckbox",
                                         "shredSafariFaviconCheckbox",
                                         "shredMailTrashCheckbox",
                                         "shredAppleMailJunkCheckbox",
                                         "shredMailCacheCheckbox",
                                         "shredQuicktimeCheckbox",
                                         "shredMentionsCheckbox",
                                         "numberOfWritesPopUp",
                                         "overwritePatternPopUp",
                                         "DoDSanitizeButton",
                                         "NSAButton",
                                         "browserWatchCheckbox",
                                         "confirmShreddingCheckbox",
                                         "activityLogCheckbox",
                                         "hideCheckbox",
                                         "autostartCheckbox"};
    for (const SupportedApplication* application : listOrder) {
        expected.push_back(application->checkBox.data());
    }
    expected.emplace_back("chooseRecommendedButton");  // where there is something to offer
    expected.emplace_back("lookAgainButton");
    for (const char* button : {"revertToDefaultButton", "revertButton", "closeButton"}) {
        expected.emplace_back(button);
    }
    EXPECT_EQ(order, expected);
}

TEST_F(PanelTest, EveryMnemonicOfThePanelIsItsOwn) {
    QStringList keys;
    const auto collect = [&keys](const QString& text) {
        const qsizetype mark = text.indexOf('&');
        if (mark >= 0) keys << text.mid(mark + 1, 1).toLower();
    };
    for (auto* each : desktop->panel().window()->findChildren<QAbstractButton*>()) {
        collect(each->text());
    }
    for (auto* each : desktop->panel().window()->findChildren<QLabel*>()) collect(each->text());
    QStringList unique = keys;
    unique.removeDuplicates();
    EXPECT_EQ(keys, unique);
    EXPECT_EQ(keys.size(), 21);
}

TEST_F(PanelTest, NoPageScrollsOnAScreenOf768Lines) {
    EXPECT_LE(desktop->panel().window()->height(), 700);
    for (const char* name : {"whatPage", "howPage", "watchingPage", "enablePage"}) {
        showPage(name);
        const auto& page = control<QScrollArea>(name);
        EXPECT_EQ(page.verticalScrollBar()->maximum(), 0) << name;
        EXPECT_EQ(page.horizontalScrollBar()->maximum(), 0) << name;
    }
}

TEST_F(PanelTest, ThePanelFitsASmallScreenByScrolling) {
    EXPECT_LE(desktop->panel().window()->minimumSizeHint().height(), 384);
    EXPECT_LE(desktop->panel().window()->minimumSizeHint().width(), 683);
}

TEST_F(PanelTest, ClosingEndsEditing) {
    QDialog& panel = *desktop->panel().window();
    control<QComboBox>("numberOfWritesPopUp").setFocus();
    panel.close();
    EXPECT_FALSE(control<QComboBox>("numberOfWritesPopUp").hasFocus());
}

}  // namespace
}  // namespace dorvanel::test
