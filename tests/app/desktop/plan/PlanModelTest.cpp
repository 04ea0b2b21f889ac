// SPDX-License-Identifier: MIT
#include "app/desktop/plan/PlanModel.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QTreeView>
#include <QWidget>
#include <string>

namespace dorvanel::test {
namespace {

using Action = PlanItem::Action;
using desktop::PlanModel;
using desktop::PlanTree;
using desktop::ShownPlan;

Plan samplePlan() {
    Plan plan;
    plan.items = {
        {.path = "/home/a/.lynx/cache",
         .application = "lynx",
         .trace = "cache",
         .files = 12,
         .folders = 2,
         .bytes = 2048},
        {.path = "/home/a/.lynx/places.db",
         .action = Action::clean,
         .application = "lynx",
         .trace = "history",
         .rows = 3},
        {.path = "/home/a/Library/Caches/Safari", .application = "Safari", .files = 1, .bytes = 6},
        {.path = "/home/a/Letters/one", .files = 1, .bytes = 10},
        {.path = "/home/a/Letters/two", .files = 1, .bytes = 20},
        {.path = "/home/a/.local/share/recently-used.xbel",
         .action = Action::mention,
         .entries = 4}};
    plan.items[3].notes = {
        {.kind = PlanNote::Kind::link, .path = "/home/a/Letters/one", .target = "/home/a/real"},
        {.kind = PlanNote::Kind::open, .path = "/home/a/Letters/one", .detail = "cat (7)"}};
    plan.skipped = {{.application = "opera", .reason = PlanSkip::Reason::running},
                    {.path = "/home/a/mnt", .reason = PlanSkip::Reason::mount}};
    return plan;
}

class PlanModelTest : public ::testing::Test {
  protected:
    void show(Plan plan) { showIn(model, std::move(plan)); }
    static void showIn(PlanModel& model, Plan plan) {
        ShownPlan shown{std::make_shared<const Plan>(std::move(plan)),
                        {{"lynx", "Lynx"}, {"opera", "Opera"}},
                        "/home/a"};
        PlanTree tree(shown, {});
        model.show(std::move(shown), std::move(tree));
    }
    QString text(const QModelIndex& index, int column = PlanModel::nameColumn) {
        return index.siblingAtColumn(column).data().toString();
    }
    /// Everything below, a line a row, deeper rows further in.
    QString all(const QModelIndex& parent = {}, int depth = 0) {
        QString lines;
        for (int row = 0; row < model.rowCount(parent); ++row) {
            const QModelIndex index = model.index(row, 0, parent);
            lines += QString(depth, u' ') + text(index) + u'|' +
                     text(index, PlanModel::filesColumn) + u'|' +
                     text(index, PlanModel::sizeColumn) + u'\n' + all(index, depth + 1);
        }
        return lines;
    }

    PlanModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(PlanModelTest, ItemsStandByApplicationAndKindAndFilesByFolder) {
    show(samplePlan());
    EXPECT_EQ(all().toStdString(),
              "Lynx|12 files|2.00 KiB\n"
              " Cache|12 files|2.00 KiB\n"
              "  ~/.lynx/cache|12 files|2.00 KiB\n"
              " History||\n"
              "  ~/.lynx/places.db||3 rows\n"
              "Safari|1 file|6 bytes\n"
              " ~/Library/Caches|1 file|6 bytes\n"
              "  Safari|1 file|6 bytes\n"
              "Files and folders|2 files|30 bytes\n"
              " ~/Letters|2 files|30 bytes\n"
              "  one|1 file|10 bytes\n"
              "   A link: “~/real”, where it leads, would be overwritten too.||\n"
              "   Another program has it open: cat (7).||\n"
              "  two|1 file|20 bytes\n"
              "Remembered by the desktop||\n"
              " ~/.local/share||\n"
              "  recently-used.xbel||4 mentions\n"
              "Passed over||\n"
              " Opera: It is running. Quit it to have this shredded.||\n"
              " ~/mnt: Another file system is mounted there||\n");
}

TEST_F(PlanModelTest, TheFilterLeavesWhatHoldsTheTextWhateverItsCase) {
    show(samplePlan());
    model.setFilter("LETTERS");
    EXPECT_EQ(model.rowCount(), 1);
    EXPECT_EQ(model.rowCount(model.index(0, 0, model.index(0, 0))), 2);
    model.setFilter("lynx");
    EXPECT_EQ(text(model.index(0, 0)), "Lynx");
    model.setFilter("opera");
    EXPECT_EQ(text(model.index(0, 0)), "Passed over");
    model.setFilter("no such thing");
    EXPECT_EQ(model.rowCount(), 0);
    model.setFilter("");
    EXPECT_EQ(model.rowCount(), 5);
}

TEST_F(PlanModelTest, AFilterWithOtherLettersThanEnglishOnesDoesNotMindCaseEither) {
    Plan plan;
    plan.items = {{.path = "/x/Übung"}, {.path = "/x/other"}, {.path = "/x/\xFF"}};
    show(plan);
    model.setFilter("ÜBUNG");
    ASSERT_EQ(model.rowCount(), 1);
    EXPECT_EQ(text(model.index(0, 0, model.index(0, 0, model.index(0, 0)))), "Übung");
}

TEST_F(PlanModelTest, AWholePathIsInTheToolTipOfItsRow) {
    show(samplePlan());
    const QModelIndex folder = model.index(0, 0, model.index(2, 0));
    const QModelIndex item = model.index(0, 0, folder);
    EXPECT_EQ(item.data(Qt::ToolTipRole).toString(), "/home/a/Letters/one");
    EXPECT_FALSE(item.data(Qt::AccessibleDescriptionRole).toString().isEmpty())
        << "that there are notes is no matter of an icon alone";
    EXPECT_TRUE(folder.data(Qt::AccessibleDescriptionRole).toString().isEmpty());
}

TEST_F(PlanModelTest, AHundredThousandItemsMakeNoWidgetAndAreFiltered) {
    Plan plan;
    for (int i = 0; i < 100'000; ++i) {
        plan.items.push_back({.path = "/t/files/" + std::to_string(i), .files = 1, .bytes = 1});
    }
    PlanModel many;  // which no tester goes through row by row
    QTreeView view;
    view.setModel(&many);
    view.setUniformRowHeights(true);
    view.show();
    const qsizetype before = view.findChildren<QWidget*>().size();
    showIn(many, std::move(plan));
    view.expandAll();
    QCoreApplication::processEvents();
    EXPECT_EQ(view.findChildren<QWidget*>().size(), before);
    const QModelIndex folder = many.index(0, 0, many.index(0, 0));
    EXPECT_EQ(many.rowCount(folder), 100'000);
    EXPECT_TRUE(many.isLong(folder));
    EXPECT_EQ(text(folder, PlanModel::filesColumn), "100000 files");
    many.setFilter("99999");
    EXPECT_EQ(many.rowCount(many.index(0, 0, many.index(0, 0))), 1);
}

}  // namespace
}  // namespace dorvanel::test
