// SPDX-License-Identifier: MIT
#include "app/desktop/applications/ApplicationsView.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QTest>

#include "SmallCatalogue.h"
#include "support/FakeUserDefaults.h"

namespace dorvanel::test {
namespace {

using desktop::ApplicationsModel;
using desktop::ApplicationsView;
using desktop::SurveyNews;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

class ApplicationsViewTest : public ::testing::Test {
  protected:
    template <typename Widget>
    Widget* find(const char* name) {
        return view.findChild<Widget*>(QLatin1String(name));
    }
    void show(const std::vector<std::string>& ids) {
        SurveyNews news = catalogue.found(ids);
        for (const std::string& id : ids) {
            news.sizes.push_back(SmallCatalogue::counted(
                id, id == "ibis" ? std::vector<TraceSize>{{.files = 1, .bytes = 2048}, {}, {}}
                                 : std::vector<TraceSize>{{}}));
        }
        news.isOver = true;
        model.take(news);
        view.resize(600, 400);
        view.show();
        QCoreApplication::processEvents();
    }

    SmallCatalogue catalogue;
    FakeUserDefaults defaults;
    TraceChoice choice{defaults};
    int looks = 0;
    ApplicationsModel model{{.defaults = defaults, .tellFailure = {}}};
    ApplicationsView view{model, [this] { ++looks; }};
    QTreeView* tree = find<QTreeView>("todayTree");
};

TEST_F(ApplicationsViewTest, TheKeyboardOpensAnApplicationAndTogglesItsBoxes) {
    show({"ibis"});
    tree->setFocus();
    tree->setCurrentIndex(model.index(0, 0));
    QTest::keyClick(tree, Qt::Key_Space);
    EXPECT_THAT(choice.chosen(), ElementsAre(Pair("ibis", ElementsAre("cache", "history"))));
    QTest::keyClick(tree, Qt::Key_Right);
    EXPECT_TRUE(tree->isExpanded(model.index(0, 0)));
    QTest::keyClick(tree, Qt::Key_Down);
    QTest::keyClick(tree, Qt::Key_Space);
    EXPECT_THAT(choice.chosen(), ElementsAre(Pair("ibis", ElementsAre("history"))));
    QTest::keyClick(tree, Qt::Key_Up);
    QTest::keyClick(tree, Qt::Key_Space);
    EXPECT_THAT(choice.chosen(), IsEmpty());
}

TEST_F(ApplicationsViewTest, ABoxIsToggledByAClickOnItAndANameIsNot) {
    show({"ibis"});
    const QRect row = tree->visualRect(model.index(0, 0));
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, row.center());
    EXPECT_THAT(choice.chosen(), IsEmpty());
    QStyleOptionViewItem option;
    option.initFrom(tree);
    option.rect = row;
    option.features = QStyleOptionViewItem::HasCheckIndicator;
    const QRect box =
        tree->style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, tree);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, box.center());
    EXPECT_THAT(choice.chosen(), ElementsAre(Pair("ibis", ElementsAre("cache", "history"))));
}

TEST_F(ApplicationsViewTest, TheOfferStandsAboveTheTreeIsNoDefaultAndGoesWhenItIsTaken) {
    show({"ibis"});
    auto* button = find<QPushButton>("chooseRecommendedButton");
    ASSERT_TRUE(button->isVisible());
    EXPECT_FALSE(button->isDefault() || button->autoDefault());
    EXPECT_EQ(find<QLabel>("offerText")->text(), "Ibis has left 2.0 KiB here.");
    button->setFocus();
    button->click();
    EXPECT_THAT(choice.chosen(), ElementsAre(Pair("ibis", ElementsAre("cache", "history"))));
    EXPECT_FALSE(button->isVisible());
    EXPECT_TRUE(tree->hasFocus()) << "and not what comes next, which may shred";
}

TEST_F(ApplicationsViewTest, WhereNothingWasFoundASentenceTakesTheTreesPlace) {
    show({});
    EXPECT_FALSE(tree->isVisible());
    auto* sentence = find<QLabel>("todayEmptyText");
    EXPECT_TRUE(sentence->isVisible());
    EXPECT_TRUE(sentence->text().startsWith("No application that Dorvanel knows"));
    show({"ibis"});
    EXPECT_TRUE(tree->isVisible());
    EXPECT_FALSE(sentence->isVisible());
}

TEST_F(ApplicationsViewTest, LookingAgainIsAButtonAndAKey) {
    show({"ibis"});
    find<QPushButton>("lookAgainButton")->click();
    EXPECT_EQ(looks, 1);
    auto* action = find<QAction>("lookAgainAction");
    EXPECT_EQ(action->shortcut(), QKeySequence(Qt::Key_F5));
    EXPECT_TRUE(view.actions().contains(action));
    model.setCounting(true);
    EXPECT_EQ(find<QLabel>("countingText")->text(), "Counting…");
}

TEST_F(ApplicationsViewTest, PlacesThatCouldNotBeLookedIntoAndFaultsAreTold) {
    catalogue.add("owl", "wings = 2\n");
    show({"ibis"});
    SurveyNews news;
    news.sizes.push_back(SmallCatalogue::counted("ibis", {{}, {}, {}}));
    news.sizes[0].second.unseen = {"/a: Permission denied", "/b: Permission denied"};
    model.take(news);
    auto* unseen = find<QLabel>("unseenText");
    EXPECT_TRUE(unseen->isVisible());
    EXPECT_EQ(unseen->text(), "2 places could not be looked into: /a: Permission denied");
    EXPECT_EQ(unseen->toolTip(), "/a: Permission denied\n/b: Permission denied");
    auto* faults = find<QLabel>("faultsText");
    EXPECT_TRUE(faults->isVisible());
    EXPECT_TRUE(faults->toolTip().contains("owl.toml:")) << faults->toolTip().toStdString();
}

TEST_F(ApplicationsViewTest, EverythingHasANameForAssistiveTechnology) {
    show({"ibis"});
    tree->expandAll();
    auto* interface = QAccessible::queryAccessibleInterface(tree);
    EXPECT_EQ(interface->text(QAccessible::Name), "Applications on this computer");
    // The cells of a tree follow those of the header.
    QStringList names;
    for (int i = 0; i < interface->childCount(); ++i) {
        auto* cell = interface->child(i);
        names << cell->text(QAccessible::Name);
        if (names.last() != "Cookies") continue;
        EXPECT_EQ(cell->text(QAccessible::Description), "Every site asks you to log in again.");
        EXPECT_TRUE(cell->state().checkable);
        EXPECT_FALSE(cell->state().checked);
    }
    for (const char* name : {"Ibis", "Cache", "recommended", "nothing", "not chosen"}) {
        EXPECT_TRUE(names.contains(name)) << name;
    }
    for (const QPushButton* button : view.findChildren<QPushButton*>()) {
        EXPECT_FALSE(button->text().isEmpty());
        EXPECT_FALSE(button->accessibleDescription().isEmpty());
    }
}

TEST_F(ApplicationsViewTest, TwoViewsShareAModel) {
    ApplicationsView other(model, [] {});
    show({"ibis"});
    auto* others = other.findChild<QTreeView*>("todayTree");
    EXPECT_EQ(others->model()->rowCount(), 1);
    others->setCurrentIndex(model.index(0, 0));
    QTest::keyClick(others, Qt::Key_Space);
    EXPECT_EQ(model.index(0, 0).data(Qt::CheckStateRole).toInt(), Qt::PartiallyChecked);
    EXPECT_FALSE(find<QWidget>("offerBox")->isVisible());
}

}  // namespace
}  // namespace dorvanel::test
