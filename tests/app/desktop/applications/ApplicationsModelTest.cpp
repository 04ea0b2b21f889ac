// SPDX-License-Identifier: MIT
#include "app/desktop/applications/ApplicationsModel.h"

#include <gmock/gmock.h>

#include <QAbstractItemModelTester>
#include <QTreeView>

#include "SmallCatalogue.h"
#include "prefs/PropertyListDefaults.h"
#include "support/FakeUserDefaults.h"

namespace dorvanel::test {
namespace {

using desktop::ApplicationsModel;
using desktop::Runs;
using desktop::SurveyNews;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

class ApplicationsModelTest : public ::testing::Test {
  protected:
    ApplicationsModelTest() { model.setCounting(true); }

    QModelIndex ibis(int column = 0) { return model.index(0, column); }
    QModelIndex kind(int row, int column = 0) {
        return model.index(row, column, model.index(0, 0));
    }
    static QString text(const QModelIndex& index) { return index.data().toString(); }
    static Qt::CheckState box(const QModelIndex& index) {
        return static_cast<Qt::CheckState>(index.data(Qt::CheckStateRole).toInt());
    }
    bool click(const QModelIndex& index) {
        const auto value = box(index) == Qt::Checked ? Qt::Unchecked : Qt::Checked;
        return model.setData(index, value, Qt::CheckStateRole);
    }
    /// All of Ibis: 1.5 MiB of cache, rows of history, no cookies.
    SurveyNews countedIbis() {
        SurveyNews news;
        news.sizes.push_back(
            SmallCatalogue::counted("ibis", {{.files = 3, .bytes = 1572864}, {.rows = 12}, {}}));
        return news;
    }
    static SurveyNews over() {
        SurveyNews news;
        news.isOver = true;
        return news;
    }

    SmallCatalogue catalogue;
    FakeUserDefaults defaults;
    TraceChoice choice{defaults};
    QStringList failures;
    ApplicationsModel model{{.defaults = defaults,
                             .tellFailure = [this](const QString& message, const QString& details) {
                                 failures << message << details;
                             }}};
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(ApplicationsModelTest, AnApplicationStandsOverTheKindsOfItsTracesWithWhatThereIs) {
    model.take(catalogue.found({"ibis"}));
    ASSERT_EQ(model.rowCount(), 1);
    EXPECT_EQ(text(ibis()), "Ibis");
    ASSERT_EQ(model.rowCount(ibis()), 3);
    EXPECT_EQ(text(kind(0)), "Cache");
    EXPECT_EQ(text(kind(0, 1)), "counting…");
    EXPECT_EQ(text(kind(0, 2)), "recommended");
    EXPECT_EQ(text(kind(2, 2)), "");
    model.take(countedIbis());
    EXPECT_EQ(text(ibis(1)), "3 files, 1.5 MiB, 12 entries");
    EXPECT_EQ(text(kind(0, 1)), "3 files, 1.5 MiB");
    EXPECT_EQ(text(kind(1, 1)), "12 entries");
    EXPECT_EQ(text(kind(2, 1)), "nothing");
    EXPECT_EQ(kind(2).data(Qt::ToolTipRole), "Every site asks you to log in again.");
    EXPECT_EQ(kind(2).data(Qt::AccessibleDescriptionRole), kind(2).data(Qt::ToolTipRole));
}

TEST_F(ApplicationsModelTest, ACountThatIsEndedBeforeItsTimeSaysThatNothingIsKnown) {
    model.take(catalogue.found({"ibis"}));
    model.setCounting(false);
    EXPECT_EQ(text(ibis(1)), "not counted");
}

TEST_F(ApplicationsModelTest, TheBoxOfAnApplicationChoosesWhatIsRecommendedAndThenDropsAll) {
    model.take(catalogue.found({"ibis"}));
    EXPECT_EQ(box(ibis()), Qt::Unchecked);
    EXPECT_TRUE(click(ibis()));
    EXPECT_THAT(choice.chosen(), ElementsAre(Pair("ibis", ElementsAre("cache", "history"))));
    EXPECT_EQ(box(ibis()), Qt::PartiallyChecked);
    EXPECT_EQ(box(kind(0)), Qt::Checked);
    EXPECT_EQ(box(kind(2)), Qt::Unchecked);
    EXPECT_TRUE(click(ibis()));
    EXPECT_THAT(choice.chosen(), IsEmpty());
    EXPECT_EQ(box(ibis()), Qt::Unchecked);
}

TEST_F(ApplicationsModelTest, TheBoxOfAKindChoosesAndDropsItAndIsStoredAtOnce) {
    model.take(catalogue.found({"ibis"}));
    for (const int row : {2, 0, 1}) EXPECT_TRUE(click(kind(row)));
    EXPECT_EQ(box(ibis()), Qt::Checked);
    EXPECT_EQ(defaults.calls.back(), "synchronize");
    EXPECT_TRUE(click(kind(0)));
    EXPECT_THAT(choice.chosen(), ElementsAre(Pair("ibis", ElementsAre("cookies", "history"))));
    EXPECT_EQ(box(ibis()), Qt::PartiallyChecked);
    EXPECT_TRUE(click(ibis()));
    EXPECT_THAT(choice.chosen(), IsEmpty()) << "a part that is chosen is dropped, not completed";
}

TEST_F(ApplicationsModelTest, AnApplicationOfWhichNothingIsRecommendedIsChosenByItsKindsOnly) {
    model.take(catalogue.found({"lynx"}));
    EXPECT_FALSE(model.flags(ibis()) & Qt::ItemIsUserCheckable);
    EXPECT_FALSE(click(ibis()));
    EXPECT_TRUE(click(kind(0)));
    EXPECT_TRUE(model.flags(ibis()) & Qt::ItemIsUserCheckable);
    EXPECT_TRUE(click(ibis()));
    EXPECT_THAT(choice.chosen(), IsEmpty());
}

TEST_F(ApplicationsModelTest, AChoiceThatCannotBeStoredIsToldAndTheBoxGoesBack) {
    ASSERT_TRUE(choice.select("ibis", {"cookies"}));
    model.readChoice();
    model.take(catalogue.found({"ibis"}));
    defaults.cannotStore = true;
    EXPECT_FALSE(click(kind(0)));
    EXPECT_EQ(box(kind(0)), Qt::Unchecked);
    EXPECT_EQ(box(kind(2)), Qt::Checked);
    EXPECT_FALSE(click(ibis()));
    EXPECT_EQ(box(kind(2)), Qt::Checked);
    ASSERT_EQ(failures.size(), 4);
    EXPECT_EQ(failures[0], "The choice of traces could not be saved.");
    EXPECT_TRUE(failures[1].contains("/home/prefs.plist"));
    // What comes next stores nothing of it.
    defaults.cannotStore = false;
    EXPECT_TRUE(click(kind(1)));
    EXPECT_THAT(choice.chosen(), ElementsAre(Pair("ibis", ElementsAre("cookies", "history"))));
}

TEST_F(ApplicationsModelTest, WhatATerminalHasChosenMeanwhileIsShownAndStays) {
    const TemporaryFolder folder;
    const std::string path = folder / "prefs.plist";
    const auto fail = [](const Error& error) { FAIL() << error.message(); };
    const auto ours = openUserDefaults(path, fail);
    const auto terminals = openUserDefaults(path, fail);
    ApplicationsModel shown({.defaults = *ours, .tellFailure = {}});
    shown.take(catalogue.found({"ibis"}));
    ASSERT_TRUE(TraceChoice(*terminals).select("lynx", {"junk"}));
    ASSERT_TRUE(
        shown.setData(shown.index(0, 0, shown.index(0, 0)), Qt::Checked, Qt::CheckStateRole));
    EXPECT_THAT(TraceChoice(*openUserDefaults(path, fail)).chosen(),
                ElementsAre(Pair("ibis", ElementsAre("cache")), Pair("lynx", ElementsAre("junk"))));
    ASSERT_TRUE(terminals->synchronize());
    ASSERT_TRUE(TraceChoice(*terminals).select("ibis", {"cookies"}));
    shown.readChoice();
    EXPECT_EQ(box(shown.index(2, 0, shown.index(0, 0))), Qt::Checked);
}

TEST_F(ApplicationsModelTest, AnApplicationThatIsChosenAndNotFoundIsShown) {
    model.take(catalogue.found({"ibis"}));
    EXPECT_EQ(model.rowCount(), 1);
    ASSERT_TRUE(choice.select("lynx", {"junk"}));
    EXPECT_TRUE(model.readChoice());
    ASSERT_EQ(model.rowCount(), 2);
    EXPECT_EQ(text(model.index(1, 0)), "Lynx");
    EXPECT_EQ(text(model.index(1, 2)), "not found");
    // Its row is still there when it has been dropped by a slip, until the next look.
    EXPECT_TRUE(click(model.index(1, 0)));
    EXPECT_EQ(model.rowCount(), 2);
    model.take(catalogue.found({"ibis"}));
    EXPECT_EQ(model.rowCount(), 1);
}

TEST_F(ApplicationsModelTest, StatesAreWords) {
    model.take(catalogue.found({"ibis"}));
    const auto runs = [this](Runs state) {
        SurveyNews news;
        news.runs["ibis"] = state;
        model.take(news);
        return text(ibis(2));
    };
    EXPECT_EQ(text(ibis(2)), "not chosen");
    EXPECT_EQ(runs(Runs::yes), "running, not chosen");
    EXPECT_EQ(runs(Runs::unknown), "unknown if running, not chosen");
    EXPECT_TRUE(click(ibis()));
    EXPECT_EQ(text(ibis(2)), "unknown if running, not watched");
    EXPECT_EQ(runs(Runs::no), "not watched");
    EXPECT_EQ(runs(Runs::yes), "running, not watched");
    model.setWatching(true);
    EXPECT_EQ(text(ibis(2)), "running, watched");
    EXPECT_EQ(runs(Runs::no), "watched");
}

TEST_F(ApplicationsModelTest, WhatIsOutOfSightIsNeverNothing) {
    model.take(catalogue.found({"ibis"}));
    SurveyNews news = countedIbis();
    for (TraceSize& size : news.sizes[0].second.traces) size.isWhole = false;
    news.sizes[0].second.unseen = {"/home/x/.ibis/cookies: Permission denied"};
    model.take(news);
    EXPECT_EQ(text(kind(0, 1)), "at least 3 files, 1.5 MiB");
    EXPECT_EQ(text(kind(2, 1)), "unknown");
    EXPECT_EQ(text(ibis(1)), "at least 3 files, 1.5 MiB, 12 entries");
    EXPECT_TRUE(ibis().data(Qt::ToolTipRole).toString().contains("cookies: Permission denied"));
    EXPECT_EQ(model.unseen(), QStringList("/home/x/.ibis/cookies: Permission denied"));
    // What runs has its files open: that is no news.
    SurveyNews runs;
    runs.runs["ibis"] = Runs::yes;
    model.take(runs);
    EXPECT_EQ(model.unseen(), QStringList());
}

TEST_F(ApplicationsModelTest, TheOfferNamesWhatWasFoundAndTakingItChoosesWhatIsRecommended) {
    model.take(catalogue.found({"ibis", "lynx"}));
    model.take(countedIbis());
    SurveyNews lynx;
    lynx.sizes.push_back(SmallCatalogue::counted("lynx", {{.files = 1, .bytes = 5}}));
    model.take(lynx);
    EXPECT_EQ(model.offer(), "") << "not before all has been counted";
    model.take(over());
    EXPECT_EQ(model.offer(), "Ibis has left 1.5 MiB here.");
    model.chooseRecommended();
    EXPECT_THAT(choice.chosen(), ElementsAre(Pair("ibis", ElementsAre("cache", "history"))));
    EXPECT_EQ(model.offer(), "");
}

TEST_F(ApplicationsModelTest, TheOfferAgreesWithHowManyThereAre) {
    catalogue.add("owl",
                  "name = \"Owl\"\nkind = \"browser\"\nicon = \"owl\"\n"
                  "processes = [\"owl\"]\n" +
                      SmallCatalogue::install("owl") + SmallCatalogue::trace("cache", true));
    model.take(catalogue.found({"ibis", "owl"}));
    model.take(countedIbis());
    SurveyNews owl = over();
    owl.sizes.push_back(SmallCatalogue::counted("owl", {{.files = 1, .bytes = 524288}}));
    model.take(owl);
    EXPECT_EQ(model.offer(), "Ibis and Owl have left 2.0 MiB here.");
    EXPECT_EQ(desktop::listOfNames({"A", "B", "C", "D", "E"}), "A, B, C and 2 others");
}

TEST_F(ApplicationsModelTest, LookingAgainKeepsWhatIsSelectedAndWhatIsOpen) {
    model.take(catalogue.found({"lynx"}));
    QTreeView tree;
    tree.setModel(&model);
    tree.expand(model.index(0, 0));
    tree.setCurrentIndex(model.index(0, 0, model.index(0, 0)));
    model.take(catalogue.found({"ibis", "lynx"}));  // comes before it
    ASSERT_EQ(model.rowCount(), 2);
    EXPECT_TRUE(tree.isExpanded(model.index(1, 0)));
    EXPECT_EQ(tree.currentIndex(), model.index(0, 0, model.index(1, 0)));
    EXPECT_EQ(tree.currentIndex().data(), "Junk mails");
    model.take(catalogue.found({"lynx"}));
    EXPECT_TRUE(tree.isExpanded(model.index(0, 0)));
    EXPECT_EQ(tree.currentIndex(), model.index(0, 0, model.index(0, 0)));
}

TEST_F(ApplicationsModelTest, AmountsStayUntilTheNewOnesAreKnown) {
    model.take(catalogue.found({"ibis"}));
    SurveyNews counted = countedIbis();
    counted.isOver = true;
    model.take(counted);
    model.setCounting(true);
    model.take(catalogue.found({"ibis"}));
    EXPECT_EQ(text(kind(0, 1)), "3 files, 1.5 MiB");
}

TEST_F(ApplicationsModelTest, FaultsOfDescriptionsAreToldWithTheFileAndTheReason) {
    catalogue.add("owl", "name = \"Owl\"\nwings = 2\n");
    ASSERT_TRUE(choice.select("rook", {"cache"}));
    model.readChoice();
    model.take(catalogue.found({"ibis"}));
    const QStringList faults = model.faults();
    ASSERT_GE(faults.size(), 2);
    EXPECT_TRUE(faults.first().contains("owl.toml:"));
    EXPECT_EQ(faults.last(), "rook: is chosen, but nothing describes it");
}

}  // namespace
}  // namespace dorvanel::test
